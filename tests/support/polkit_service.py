"""A polkit authority that writes down what it is asked, one JSON object a line.

    polkit_service.py MANNER FILE

MANNER: granting, refusing (the person, when asked, does that), retained (who asks has logged in
already), forbidding (whatever the person does), agentless (nobody can ask the person), unknown (an
error for every action, and it lists none), failing (the same error, though it lists them), hanging (the person is asked and never answers), leaving (it ends while the
person is being asked), mute (nothing is ever answered)
"""

import json
import os
import sys

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

NAME = "org.freedesktop.PolicyKit1"
MANNER, FILE = sys.argv[1:]


def note(**values):
    with open(FILE, "a", encoding="utf-8") as file:
        file.write(json.dumps(values) + "\n")


class Authority(dbus.service.Object):
    @dbus.service.method(NAME + ".Authority", in_signature="(sa{sv})sa{ss}us",
                         out_signature="(bba{ss})", sender_keyword="sender",
                         async_callbacks=("answer", "fail"))
    def CheckAuthorization(self, subject, action, details, flags, cancellation, answer, fail,
                           sender):
        asks = bool(flags & 1)
        note(kind=subject[0], itself=subject[1].get("name") == sender, action=action,
             details=len(details), asks=asks)
        if asks:
            bus.watch_name_owner(sender, lambda owner: owner or note(left=True))
        if MANNER in ("unknown", "failing"):
            fail(dbus.DBusException("Action is not registered", name=NAME + ".Error.Failed"))
        elif MANNER in ("forbidding", "retained"):
            answer((MANNER == "retained", False, {}))
        elif MANNER == "mute" or (MANNER == "hanging" and asks):
            pass
        elif not asks or MANNER == "agentless":
            answer((False, True, {}))
        elif MANNER == "leaving":
            os._exit(0)
        else:
            answer((MANNER == "granting", False, {}))

    @dbus.service.method(NAME + ".Authority", in_signature="s", out_signature="a(ssssssuuua{ss})")
    def EnumerateActions(self, locale):
        known = [] if MANNER == "unknown" else ["org.example.other", "it.vellomar.key.copy"]
        return dbus.Array([(action, "", "", "", "", "", dbus.UInt32(0), dbus.UInt32(0),
                            dbus.UInt32(0), dbus.Dictionary({}, signature="ss"))
                           for action in known], signature="(ssssssuuua{ss})")


DBusGMainLoop(set_as_default=True)
bus = dbus.SystemBus()
authority = Authority(bus, "/org/freedesktop/PolicyKit1/Authority")
owned = dbus.service.BusName(NAME, bus)
GLib.MainLoop().run()
