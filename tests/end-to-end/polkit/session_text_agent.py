"""The text agent of polkit, registered for a login session as a desktop's agent is, on the terminal
that this process controls: session_text_agent.py SESSION DESCRIPTOR. "registered" is written to the
descriptor then, which is closed."""

import os
import sys

import gi

gi.require_version("Polkit", "1.0")
gi.require_version("PolkitAgent", "1.0")
from gi.repository import GLib, Polkit, PolkitAgent  # noqa: E402

session, descriptor = sys.argv[1:]
listener = PolkitAgent.TextListener.new(None)
listener.register(PolkitAgent.RegisterFlags.NONE, Polkit.UnixSession.new(session),
                  "/org/freedesktop/PolicyKit1/AuthenticationAgent", None)
with os.fdopen(int(descriptor), "w") as told:
    told.write("registered")
GLib.MainLoop().run()
