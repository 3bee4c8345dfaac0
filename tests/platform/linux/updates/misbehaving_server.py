#!/usr/bin/env python3
"""Serves the same paths over HTTP and, with each given pair of certificate and key, over HTTPS, on ports of the system's
choice. Prints the ports in one line when it is ready; ends when its standard input does."""

import http.server
import socket
import ssl
import sys
import threading

FEED = b"""<?xml version="1.0" encoding="utf-8"?>
<rss version="2.0" xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle">
  <channel>
    <title>Releases</title>
    <item>
      <title>1.10</title>
      <link>https://example.org/releases/1.10</link>
      <sparkle:version>512</sparkle:version>
      <sparkle:shortVersionString>1.10</sparkle:shortVersionString>
      <enclosure url="https://example.org/thermopix-1.10.tar.xz" sparkle:os="linux" length="1" type="application/x-xz"/>
    </item>
  </channel>
</rss>
"""

BOMB = b"""<?xml version="1.0"?>
<!DOCTYPE rss [<!ENTITY a "aaaaaaaaaa">""" + b"".join(
    b'<!ENTITY %c "%s">' % (98 + i, b"&%c;" % (97 + i) * 10) for i in range(9)
) + b"""]>
<rss version="2.0"><channel><item><link>&j;</link></item></channel></rss>
"""

EXTERNAL = b"""<?xml version="1.0"?>
<!DOCTYPE rss [<!ENTITY passwords SYSTEM "file:///etc/passwd">]>
<rss version="2.0"><channel><item><link>&passwords;</link></item></channel></rss>
"""

FUTURE = FEED.replace(
    b"<enclosure", b"<sparkle:minimumSystemVersion>99.1</sparkle:minimumSystemVersion><enclosure"
)

DOCUMENTS = {
    "/for-a-newer-system": ("application/rss+xml", FUTURE),
    "/feed": ("application/rss+xml", FEED),
    "/feed-as-html": ("text/html", FEED),
    "/garbage": ("application/rss+xml", bytes(range(256)) * 16),
    "/cut-short": ("application/rss+xml", FEED[:300]),
    "/empty": ("application/rss+xml", b""),
    "/html": ("text/html", b"<!DOCTYPE html><html><body>Sign in to the network</body></html>"),
    "/json": ("application/json", b'{"version": "9.9"}'),
    "/bomb": ("application/rss+xml", BOMB),
    "/external": ("application/rss+xml", EXTERNAL),
}


class Handler(http.server.BaseHTTPRequestHandler):
    protocol_version = "HTTP/1.1"
    close_connection = True

    def log_message(self, *_):
        pass

    def answer(self, status, headers=(), body=b"", length=None):
        self.send_response(status)
        for name, value in headers:
            self.send_header(name, value)
        self.send_header("Content-Length", str(len(body) if length is None else length))
        self.send_header("Connection", "close")
        self.end_headers()
        self.wfile.write(body)

    def stream(self, piece, pause):
        """Sends a body without an end, until the client hangs up."""
        self.send_response(200)
        self.end_headers()
        while True:
            self.wfile.write(piece)
            if pause:
                self.wfile.flush()
                threading.Event().wait(pause)

    def do_GET(self):
        try:
            self.misbehave()
        except OSError:
            pass  # the client has hung up

    def misbehave(self):
        path, _, argument = self.path.partition("?")
        if path in DOCUMENTS:
            kind, body = DOCUMENTS[path]
            self.answer(200, [("Content-Type", kind)], body)
        elif path == "/status":
            self.answer(int(argument), body=FEED)
        elif path == "/to":
            self.answer(302, [("Location", argument)])
        elif path == "/loop":
            self.answer(301, [("Location", "/loop")])
        elif path == "/hops":
            left = int(argument)
            self.answer(307, [("Location", f"/hops?{left - 1}" if left > 1 else "/feed")])
        elif path == "/endless":
            self.stream(b" " * 65536, None)
        elif path == "/drip":
            self.stream(b" ", 0.01)
        elif path == "/declared":
            self.answer(200, body=FEED, length=1 << 40)
        elif path == "/truncated":
            self.answer(200, body=FEED, length=len(FEED) + 1)
        elif path == "/headers":
            self.wfile.write(b"HTTP/1.1 200 OK\r\n")
            while True:
                self.wfile.write(b"X-More: " + b"x" * 1000 + b"\r\n")
        elif path == "/nonsense":
            self.wfile.write(b"220 mail.example.org ready\r\n")
        elif path == "/silence":
            self.rfile.read(1)  # until the client hangs up
        elif path == "/hang-up":
            self.connection.shutdown(socket.SHUT_RDWR)
        else:
            self.answer(404)


class Server(http.server.ThreadingHTTPServer):
    daemon_threads = True

    def handle_error(self, *_):
        pass  # handshakes that the client refuses are what is tested


def serve(context):
    server = Server(("127.0.0.1", 0), Handler)
    if context:
        server.socket = context.wrap_socket(server.socket, server_side=True, do_handshake_on_connect=False)
    threading.Thread(target=server.serve_forever, daemon=True).start()
    return server.server_port


def contexts(files):
    yield None
    for certificate, key in zip(files[::2], files[1::2]):
        context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
        context.load_cert_chain(certificate, key)
        yield context


print(*[serve(context) for context in contexts(sys.argv[1:])], flush=True)
sys.stdin.read()
