"""The configuration file as text."""


def network_text(name="Intranet", *, vpn="false", start="", start_arguments="", stop="",
                 stop_arguments="", monitoring="false", address="", more=""):
    """A whole configuration file as the tool writes it; `more` stands behind the first network."""
    return f"""<?xml version="1.0" encoding="UTF-8"?>
<plist version="1.0">
<dict>
\t<key>Company1</key>
\t<dict>
\t\t<key>Monitoring</key>
\t\t<dict>
\t\t\t<key>Activated</key>
\t\t\t<string>{monitoring}</string>
\t\t\t<key>Address</key>
\t\t\t<string>{address}</string>
\t\t\t<key>Type</key>
\t\t\t<string>IP</string>
\t\t</dict>
\t\t<key>Name</key>
\t\t<string>{name}</string>
\t\t<key>PublicVPN</key>
\t\t<dict>
\t\t\t<key>Activated</key>
\t\t\t<string>{vpn}</string>
\t\t\t<key>StartArguments</key>
\t\t\t<string>{start_arguments}</string>
\t\t\t<key>StartCommandLine</key>
\t\t\t<string>{start}</string>
\t\t\t<key>StopArguments</key>
\t\t\t<string>{stop_arguments}</string>
\t\t\t<key>StopCommandLine</key>
\t\t\t<string>{stop}</string>
\t\t</dict>
\t</dict>
{more}</dict>
</plist>"""
