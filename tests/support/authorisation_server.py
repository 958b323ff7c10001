"""Stands in for Google's sign-in: the page on which a user lets a program in, and the address at
which the program then fetches its token.

Usage: authorisation_server.py PORT grant|refuse|deny|empty|stall

grant   the person agrees and a token is given
refuse  the person says no
deny    the person agrees, but no token is given
empty   the person agrees, and the answer has no token in it
stall   the person agrees, and the answer never comes

Writes a line for each question, with percent signs for what isn't plain: "page CLIENT SCOPE" and
"token CLIENT SECRET".
"""

import base64
import http.server
import json
import sys
import threading
import urllib.parse

port, manner = int(sys.argv[1]), sys.argv[2]

TOKEN = {
    "access_token": "access-t0ken-of-the-person",
    "refresh_token": "refresh-t0ken-of-the-person",
    "token_type": "Bearer",
    "expires_in": 3600,
}
ANSWERS = {
    "grant": (200, TOKEN),
    "deny": (400, {"error": "invalid_grant", "error_description": "Bad request"}),
    "empty": (200, {"token_type": "Bearer"}),
}


def tell(*words):
    print(*(urllib.parse.quote(word, safe=":/") for word in words), flush=True)


class Service(http.server.BaseHTTPRequestHandler):
    def do_GET(self):
        asked = dict(urllib.parse.parse_qsl(urllib.parse.urlsplit(self.path).query))
        tell("page", asked["client_id"], asked["scope"])
        answer = {"state": asked["state"]}
        if manner == "refuse":
            answer["error"] = "access_denied"
        else:
            answer["code"] = "code-of-the-page"
        self.send_response(302)
        self.send_header("Location", asked["redirect_uri"] + "?" + urllib.parse.urlencode(answer))
        self.end_headers()

    def do_POST(self):
        form = dict(urllib.parse.parse_qsl(self.rfile.read(int(self.headers["Content-Length"])).decode()))
        basic = self.headers.get("Authorization", "")
        if basic:
            pair = base64.b64decode(basic.removeprefix("Basic ")).decode().split(":", 1)
            client, secret = (urllib.parse.unquote_plus(part) for part in pair)
        else:
            client, secret = form.get("client_id", ""), form.get("client_secret", "")
        tell("token", client, secret)
        if manner == "stall":
            threading.Event().wait()
        status, answer = ANSWERS[manner]
        self.send_response(status)
        self.send_header("Content-Type", "application/json")
        self.end_headers()
        self.wfile.write(json.dumps(answer).encode())

    def log_message(self, *_):
        pass


http.server.ThreadingHTTPServer.daemon_threads = True
http.server.ThreadingHTTPServer(("127.0.0.1", port), Service).serve_forever()
