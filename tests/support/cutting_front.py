"""Passes connections on to a server on loopback until so many bytes have gone to it; then it cuts
them all and takes no new ones.

    cutting_front.py PORT SERVER_PORT BYTES
"""

import os
import socket
import sys
import threading

port, server_port, remaining = (int(word) for word in sys.argv[1:])
lock = threading.Lock()


def counted(count):
    global remaining
    with lock:
        remaining -= count
        if remaining <= 0:
            print("cut", flush=True)
            os._exit(0)  # everything at once, as when a cable is drawn


def pass_on(source, target, count):
    try:
        while data := source.recv(65536):
            count(len(data))
            target.sendall(data)
        target.shutdown(socket.SHUT_WR)
    except OSError:
        source.close()
        target.close()


listener = socket.create_server(("127.0.0.1", port), backlog=64)
while True:
    client, _ = listener.accept()
    try:
        server = socket.create_connection(("127.0.0.1", server_port))
    except OSError:
        client.close()
        continue
    threading.Thread(target=pass_on, args=(client, server, counted), daemon=True).start()
    threading.Thread(target=pass_on, args=(server, client, lambda _: None), daemon=True).start()
