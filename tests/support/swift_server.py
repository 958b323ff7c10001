"""OpenStack Swift with its S3 face on loopback, all of it in this one process.

Arguments: the port, a folder for settings and data, and a JSON file with the secret of each user.
The access key of a user is "vellomar:" and their name.
"""

import json
import os
import socket
import sys

import eventlet
import eventlet.patcher

eventlet.patcher.monkey_patch(all=False, socket=True, select=True, thread=True)

from eventlet import wsgi
from swift.common import utils
from swift.common.ring import RingBuilder
from swift.common.wsgi import loadapp

PART_POWER = 2

PROXY = """[DEFAULT]
swift_dir = {folder}
log_statsd_host =
[pipeline:main]
pipeline = catch_errors cache s3api tempauth slo versioned_writes symlink proxy-server
[app:proxy-server]
use = egg:swift#proxy
account_autocreate = true
[filter:catch_errors]
use = egg:swift#catch_errors
[filter:cache]
use = egg:swift#memcache
memcache_servers = 127.0.0.1:1
[filter:s3api]
use = egg:swift#s3api
[filter:tempauth]
use = egg:swift#tempauth
[filter:slo]
use = egg:swift#slo
[filter:versioned_writes]
use = egg:swift#versioned_writes
allow_object_versioning = true
[filter:symlink]
use = egg:swift#symlink
"""

STORE = """[DEFAULT]
swift_dir = {folder}
devices = {folder}/devices
mount_check = false
disable_fallocate = true
[pipeline:main]
pipeline = {kind}-server
[app:{kind}-server]
use = egg:swift#{kind}
"""


class Silence:
    def write(self, text):
        pass


def listener(port):
    return eventlet.listen(("127.0.0.1", port), family=socket.AF_INET)


def write(path, text):
    with open(path, "w", encoding="utf-8") as file:
        file.write(text)
    return path


def serve(sock, settings):
    app = loadapp(settings)
    eventlet.spawn(wsgi.server, sock, app, Silence())
    return app


def add_users(app, secrets):
    """The settings can't hold a secret with blanks."""
    while not hasattr(app, "users"):
        app = app.app
    for user, secret in secrets.items():
        app.users["vellomar:" + user] = {
            "key": secret, "url": "$HOST/v1/AUTH_vellomar", "groups": [".admin"]}


def main():
    port, folder, secrets_file = sys.argv[1:]
    os.makedirs(folder + "/devices/disk", exist_ok=True)
    write(folder + "/swift.conf", "[swift-hash]\nswift_hash_path_suffix = test\n"
          "[storage-policy:0]\nname = gold\ndefault = yes\n")
    utils.set_swift_dir(folder)
    for kind in ("account", "container", "object"):
        sock = listener(0)
        ring = RingBuilder(PART_POWER, 1, 1)
        ring.add_dev({"id": 0, "region": 1, "zone": 1, "weight": 1.0, "ip": "127.0.0.1",
                      "port": sock.getsockname()[1], "device": "disk"})
        ring.rebalance()
        ring.get_ring().save(f"{folder}/{kind}.ring.gz")
        serve(sock, write(f"{folder}/{kind}.conf", STORE.format(folder=folder, kind=kind)))
    app = loadapp(write(folder + "/proxy.conf", PROXY.format(folder=folder)))
    with open(secrets_file, encoding="utf-8") as file:
        add_users(app, json.load(file))
    # The port opens when all is ready.
    wsgi.server(listener(int(port)), app, Silence())


main()
