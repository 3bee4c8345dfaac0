"""Services of a desktop that the session itself lacks: desktop_services.py notifications, or: appearance light|dark.

Runs inside the session, with Debian's own Python. Says its name on the bus, then what was asked of it, in lines.
"""

import json
import sys

from gi.repository import Gio, GLib

NOTIFICATIONS = """<node><interface name="org.freedesktop.Notifications">
<method name="Notify"><arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
<arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
<arg type="a{sv}" direction="in"/><arg type="i" direction="in"/><arg type="u" direction="out"/></method>
<method name="GetCapabilities"><arg type="as" direction="out"/></method>
</interface></node>"""

APPEARANCE = """<node><interface name="org.freedesktop.portal.Settings">
<method name="Read"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
</interface></node>"""

SCHEMES = {"dark": 1, "light": 2}


def show_notification(method, parameters):
    if method == "GetCapabilities":
        return GLib.Variant("(as)", (["body"],))
    program, _, _, summary, body, *_ = parameters.unpack()
    print(json.dumps({"program": program, "summary": summary, "body": body}), flush=True)
    return GLib.Variant("(u)", (1,))


def read_appearance(_method, parameters):
    if parameters.unpack() != ("org.freedesktop.appearance", "color-scheme"):
        return None
    return GLib.Variant("(v)", (GLib.Variant("v", GLib.Variant("u", SCHEMES[sys.argv[2]])),))


SERVICES = {
    "notifications": ("org.freedesktop.Notifications", "/org/freedesktop/Notifications", NOTIFICATIONS,
                      show_notification),
    "appearance": ("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop", APPEARANCE, read_appearance),
}


def main():
    name, path, interface, answer = SERVICES[sys.argv[1]]

    def call(_bus, _sender, _path, _interface, method, parameters, invocation):
        reply = answer(method, parameters)
        if reply:
            invocation.return_value(reply)
        else:
            invocation.return_dbus_error(name + ".Error.NotFound", "nothing is known of it")

    print(name, flush=True)
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    bus.register_object(path, Gio.DBusNodeInfo.new_for_xml(interface).interfaces[0], call, None, None)
    Gio.bus_own_name_on_connection(bus, name, Gio.BusNameOwnerFlags.NONE, None, None)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
