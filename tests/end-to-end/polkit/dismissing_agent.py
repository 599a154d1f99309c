"""Registers an authentication agent for a process and refuses every question as a user does who
closes the dialog: dismissing_agent.py PROCESS."""

import os
import sys

from gi.repository import Gio, GLib

PATH = "/org/example/Agent"
INTERFACE = """<node><interface name="org.freedesktop.PolicyKit1.AuthenticationAgent">
  <method name="BeginAuthentication">
    <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="s" direction="in"/>
    <arg type="a{ss}" direction="in"/><arg type="s" direction="in"/>
    <arg type="a(sa{sv})" direction="in"/>
  </method>
  <method name="CancelAuthentication"><arg type="s" direction="in"/></method>
</interface></node>"""


def dismiss(_connection, _sender, _path, _interface, _method, _arguments, invocation):
    invocation.return_dbus_error("org.freedesktop.PolicyKit1.Error.Cancelled", "dismissed")


def start_time(process):
    with open(f"/proc/{process}/stat", encoding="utf-8") as stat:
        return int(stat.read().rpartition(")")[2].split()[19])


def main(process):
    bus = Gio.bus_get_sync(Gio.BusType.SYSTEM)
    node = Gio.DBusNodeInfo.new_for_xml(INTERFACE)
    bus.register_object(PATH, node.interfaces[0], dismiss, None, None)
    subject = ("unix-process", {
        "pid": GLib.Variant("u", process), "start-time": GLib.Variant("t", start_time(process)),
        "uid": GLib.Variant("i", os.getuid())})
    bus.call_sync(
        "org.freedesktop.PolicyKit1", "/org/freedesktop/PolicyKit1/Authority",
        "org.freedesktop.PolicyKit1.Authority", "RegisterAuthenticationAgent",
        GLib.Variant("((sa{sv})ss)", (subject, "C.UTF-8", PATH)), None, 0, -1, None)
    print("registered", flush=True)
    GLib.MainLoop().run()


main(int(sys.argv[1]))
