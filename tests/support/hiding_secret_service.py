"""A Secret Service whose locked collection shows nothing of its items, as some
password managers' do.

Usage: hiding_secret_service.py default|no-default MANNER [VALUE]

There is one collection, locked, which is the default one or isn't. Asked to
unlock it, the service does so ("opens"), or does so when a file is there
("opens-when:FILE"), or lets its prompt be dismissed ("refuses"); or the collection
is unlocked by somebody else right after the first search ("opens-meanwhile"). It
holds one item,
"repository-key" of "it.vellomar.app", if a VALUE is given. Writes one line when
it is ready.
"""

import os
import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

NAME = "org.freedesktop.secrets"
SERVICE = "org.freedesktop.Secret.Service"
COLLECTION = "org.freedesktop.Secret.Collection"
ITEM = "org.freedesktop.Secret.Item"
PROMPT = "org.freedesktop.Secret.Prompt"
COLLECTION_PATH = "/org/freedesktop/secrets/collection/hidden"
ITEM_PATH = COLLECTION_PATH + "/1"
PROMPT_PATH = "/org/freedesktop/secrets/prompt/1"
NOTHING = dbus.ObjectPath("/")
ATTRIBUTES = {"service": "it.vellomar.app", "account": "repository-key"}

alias, manner = sys.argv[1:3]
value = sys.argv[3] if len(sys.argv) > 3 else None
state = {"locked": True}


def paths(*names):
    return dbus.Array(names, signature="o")


def is_visible():
    return value is not None and not state["locked"]


def secret(session):
    return (dbus.ObjectPath(session), dbus.ByteArray(b""),
            dbus.ByteArray(value.encode()), "text/plain")


class Properties(dbus.service.Object):
    def properties(self):
        return {}

    @dbus.service.method(dbus.PROPERTIES_IFACE, "ss", "v")
    def Get(self, interface, key):
        return self.properties()[key]

    @dbus.service.method(dbus.PROPERTIES_IFACE, "s", "a{sv}")
    def GetAll(self, interface):
        return self.properties()


class Service(Properties):
    def properties(self):
        return {"Collections": paths(COLLECTION_PATH)}

    @dbus.service.method(SERVICE, "sv", "vo")
    def OpenSession(self, algorithm, given):
        if algorithm != "plain":
            raise dbus.DBusException(
                "only plain", name="org.freedesktop.DBus.Error.NotSupported")
        return "", dbus.ObjectPath("/org/freedesktop/secrets/session/1")

    @dbus.service.method(SERVICE, "a{ss}", "aoao")
    def SearchItems(self, attributes):
        found = is_visible() and all(
            ATTRIBUTES.get(key) == text for key, text in attributes.items())
        if manner == "opens-meanwhile":
            state["locked"] = False
        return paths(*([ITEM_PATH] if found else [])), paths()

    @dbus.service.method(SERVICE, "s", "o")
    def ReadAlias(self, name):
        if name == "default" and alias == "default":
            return dbus.ObjectPath(COLLECTION_PATH)
        return NOTHING

    @dbus.service.method(SERVICE, "ao", "aoo")
    def Unlock(self, objects):
        if not objects:
            return paths(), NOTHING
        return paths(), dbus.ObjectPath(PROMPT_PATH)

    @dbus.service.method(SERVICE, "aoo", "a{o(oayays)}")
    def GetSecrets(self, items, session):
        return dbus.Dictionary({dbus.ObjectPath(ITEM_PATH): secret(session)},
                               signature="o(oayays)")


class Collection(Properties):
    def properties(self):
        return {
            "Items": paths(*([ITEM_PATH] if is_visible() else [])),
            "Label": "hidden",
            "Locked": state["locked"],
            "Created": dbus.UInt64(0),
            "Modified": dbus.UInt64(0),
        }


class Item(Properties):
    @dbus.service.method(ITEM, "o", "(oayays)")
    def GetSecret(self, session):
        return secret(session)

    def properties(self):
        return {
            "Attributes": dbus.Dictionary(ATTRIBUTES, signature="ss"),
            "Label": "hidden",
            "Locked": state["locked"],
            "Created": dbus.UInt64(0),
            "Modified": dbus.UInt64(0),
        }


class Prompt(dbus.service.Object):
    @dbus.service.method(PROMPT, "s", "")
    def Prompt(self, window):
        GLib.timeout_add(20, self.answer)

    @dbus.service.method(PROMPT, "", "")
    def Dismiss(self):
        self.Completed(True, paths())

    @dbus.service.signal(PROMPT, "bv")
    def Completed(self, dismissed, result):
        pass

    def answer(self):
        if manner.startswith("opens-when:"):
            if not os.path.exists(manner.partition(":")[2]):
                return True
        if manner.startswith("opens"):
            state["locked"] = False
            self.Completed(False, paths(COLLECTION_PATH))
        else:
            self.Completed(True, paths())
        return False


dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
session = dbus.SessionBus()
service = Service(session, "/org/freedesktop/secrets")
collection = Collection(session, COLLECTION_PATH)
item = Item(session, ITEM_PATH)
prompt = Prompt(session, PROMPT_PATH)
name = dbus.service.BusName(NAME, session)
print("ready", flush=True)
GLib.MainLoop().run()
