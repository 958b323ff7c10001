"""A tray of the StatusNotifierItem kind on the session bus. It says what its only item shows, one
JSON object a line, when the item comes and when it changes; each line that it is given is a method
of the item to call, as a click does.

    tray_host.py
"""

import json
import sys

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

WATCHER = "org.kde.StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
PROPERTIES = "org.freedesktop.DBus.Properties"


class Watcher(dbus.service.Object):
    item = None

    # Qt reads only properties that are declared here.
    @dbus.service.method(dbus.INTROSPECTABLE_IFACE, out_signature="s",
                         path_keyword="path", connection_keyword="connection")
    def Introspect(self, path, connection):
        text = dbus.service.Object.Introspect(self, path, connection)
        opening = f'<interface name="{WATCHER}">'
        return text.replace(opening, opening + '<property name="IsStatusNotifierHostRegistered" '
                            'type="b" access="read"/>')

    @dbus.service.method(PROPERTIES, in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return {"IsStatusNotifierHostRegistered": True, "ProtocolVersion": 0,
                "RegisteredStatusNotifierItems": dbus.Array([], signature="s")}[name]

    @dbus.service.method(PROPERTIES, in_signature="s", out_signature="a{sv}")
    def GetAll(self, interface):
        return {"IsStatusNotifierHostRegistered": True, "ProtocolVersion": 0}

    @dbus.service.method(WATCHER, in_signature="s")
    def RegisterStatusNotifierItem(self, service):
        self.item = bus.get_object(service, "/StatusNotifierItem", introspect=False)
        self.item.connect_to_signal("NewIcon", self.tell, dbus_interface=ITEM)
        GLib.idle_add(self.tell)

    @dbus.service.signal(WATCHER, signature="")
    def StatusNotifierHostRegistered(self):
        pass

    def tell(self):
        self.item.GetAll(ITEM, dbus_interface=PROPERTIES, reply_handler=self.say,
                         error_handler=lambda error: print(error, file=sys.stderr))

    def say(self, values):
        pictures = [(int(width), int(height), bytes(dots).hex())
                    for width, height, dots in values.get("IconPixmap", [])]
        print(json.dumps({"title": values.get("Title"), "tip": values["ToolTip"][2],
                          "pictures": pictures}), flush=True)

    def click(self, stream, condition):
        method = stream.readline().strip()
        if not method:
            return False
        self.item.get_dbus_method(method, ITEM)(10, 20, reply_handler=lambda *_: None,
                                                error_handler=lambda _: None)
        return True


DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()
watcher = Watcher(bus, "/StatusNotifierWatcher")
owned = dbus.service.BusName(WATCHER, bus)
GLib.io_add_watch(sys.stdin, GLib.IO_IN | GLib.IO_HUP, watcher.click)
watcher.StatusNotifierHostRegistered()
GLib.MainLoop().run()
