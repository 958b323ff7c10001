"""A notification service on the session bus that writes down what it is asked, one JSON object a
line.

    notification_service.py MANNER FILE

MANNER: markup (bodies are markup), plain (they aren't), refusing (every Notify is an error),
silent (no Notify is ever answered), mute (nothing is ever answered)

As a shell that knows programs by their desktop entries does, it withdraws the notifications of such
a program when the process leaves the bus; "gone" tells which.
"""

import json
import sys

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

NAME = "org.freedesktop.Notifications"
MANNER, FILE = sys.argv[1:]


def note(method, **values):
    with open(FILE, "a", encoding="utf-8") as file:
        file.write(json.dumps({"method": method, **values}) + "\n")


entries = {}  # what each sender is known by


def owner_changed(name, old, new):
    if new == "" and name in entries:
        note("gone", withdrawn=[entry for entry in entries.pop(name) if entry])


class Service(dbus.service.Object):
    @dbus.service.method(NAME, in_signature="", out_signature="as",
                         async_callbacks=("answer", "fail"))
    def GetCapabilities(self, answer, fail):
        note("GetCapabilities")
        if MANNER != "mute":
            answer(["body", "actions"] + (["body-markup"] if MANNER == "markup" else []))

    @dbus.service.method(NAME, in_signature="", out_signature="ssss",
                         async_callbacks=("answer", "fail"))
    def GetServerInformation(self, answer, fail):
        note("GetServerInformation")
        if MANNER != "mute":
            answer("recorder", "tests", "1", "1.2")

    @dbus.service.method(NAME, in_signature="susssasa{sv}i", out_signature="u",
                         async_callbacks=("answer", "fail"), sender_keyword="sender")
    def Notify(self, application, replaces, icon, title, body, actions, hints, timeout, answer,
               fail, sender=None):
        entries.setdefault(sender, []).append(str(hints.get("desktop-entry", "")))
        note("Notify", application=application, replaces=replaces, icon=icon, title=title,
             body=body, actions=actions, timeout=timeout,
             hints={name: bool(value) if isinstance(value, dbus.Boolean) else value
                    for name, value in hints.items()})
        if MANNER == "refusing":
            fail(dbus.DBusException("not now", name="org.freedesktop.DBus.Error.AccessDenied"))
        elif MANNER not in ("silent", "mute"):
            answer(1)


DBusGMainLoop(set_as_default=True)
bus = dbus.SessionBus()
service = Service(bus, "/org/freedesktop/Notifications")
bus.add_signal_receiver(owner_changed, "NameOwnerChanged", "org.freedesktop.DBus")
owned = dbus.service.BusName(NAME, bus)
GLib.MainLoop().run()
