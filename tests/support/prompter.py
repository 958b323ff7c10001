"""Stands in for the desktop's program that asks for a keyring's password.

Usage: prompter.py refuse|silent MARK

Writes one line when it is ready, and makes the file MARK when it is asked.
"""

import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

PROMPTER = "org.gnome.keyring.internal.Prompter"
CALLBACK = "org.gnome.keyring.internal.Prompter.Callback"

manner, mark = sys.argv[1:]


class Prompter(dbus.service.Object):
    def __init__(self, bus):
        self.bus = bus
        super().__init__(bus, "/org/gnome/keyring/Prompter")

    def call(self, *arguments):
        # The keyring wants the answer to its own call first.
        GLib.idle_add(self.call_now, *arguments)

    def call_now(self, owner, path, method, signature, *arguments):
        self.bus.call_async(owner, path, CALLBACK, method, signature, arguments, None, None)
        return False

    @dbus.service.method(PROMPTER, "o", "", sender_keyword="sender")
    def BeginPrompting(self, callback, sender):
        nothing = dbus.Dictionary(signature="sv")
        self.call(sender, callback, "PromptReady", "sa{sv}s", "", nothing, "")

    @dbus.service.method(PROMPTER, "osa{sv}s", "", sender_keyword="sender")
    def PerformPrompt(self, callback, kind, properties, exchange, sender):
        open(mark, "w").close()
        if manner == "refuse":
            nothing = dbus.Dictionary(signature="sv")
            self.call(sender, callback, "PromptReady", "sa{sv}s", "no", nothing, "")

    @dbus.service.method(PROMPTER, "o", "", sender_keyword="sender")
    def StopPrompting(self, callback, sender):
        self.call(sender, callback, "PromptDone", "")


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
session = dbus.SessionBus()
name = dbus.service.BusName("org.gnome.keyring.SystemPrompter", session)
prompter = Prompter(session)
print("ready", flush=True)
GLib.MainLoop().run()
