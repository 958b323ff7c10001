"""Takes connections on loopback and never says a word on them.

    mute_server.py PORT
"""

import socket
import sys

listener = socket.create_server(("127.0.0.1", int(sys.argv[1])), backlog=64)
held = []
while True:
    held.append(listener.accept())
