"""Asks the user to log in, for one process, on the real polkit.

    polkit_agent.py MANNER PROCESS USER

MANNER: granting (the person logs in), refusing (they can't), cancelling (they don't want to), dying
(the dialog crashes). Writes one line when it is in place, and then the message of each dialog.
"""

import os
import sys

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

NAME = "org.freedesktop.PolicyKit1"
PATH = "/agent"
MANNER, PROCESS, USER = sys.argv[1:]


def started(process):
    with open(f"/proc/{process}/stat", encoding="utf-8") as file:
        return int(file.read().rpartition(")")[2].split()[19])


class Agent(dbus.service.Object):
    @dbus.service.method(NAME + ".AuthenticationAgent", in_signature="sssa{ss}sa(sa{sv})",
                         async_callbacks=("done", "fail"))
    def BeginAuthentication(self, action, message, icon, details, cookie, identities, done, fail):
        print(message, flush=True)
        if MANNER == "cancelling":
            fail(dbus.DBusException("dismissed", name=NAME + ".Error.Cancelled"))
        elif MANNER == "dying":
            os._exit(0)
        else:
            if MANNER == "granting":
                # What root's helper reports once the password was right.
                authority.AuthenticationAgentResponse2(dbus.UInt32(0), cookie, identities[0])
            done()

    @dbus.service.method(NAME + ".AuthenticationAgent", in_signature="s")
    def CancelAuthentication(self, cookie):
        pass


DBusGMainLoop(set_as_default=True)
bus = dbus.SystemBus()
authority = dbus.Interface(bus.get_object(NAME, "/org/freedesktop/PolicyKit1/Authority"),
                           NAME + ".Authority")
agent = Agent(bus, PATH)
subject = {"pid": dbus.UInt32(int(PROCESS)), "start-time": dbus.UInt64(started(PROCESS)),
           "uid": dbus.Int32(int(USER))}
authority.RegisterAuthenticationAgent(("unix-process", subject), "it_IT.UTF-8", PATH)
print("in place", flush=True)
GLib.MainLoop().run()
