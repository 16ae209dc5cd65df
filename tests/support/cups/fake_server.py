"""A print server with the answers that a test chooses; its other answers are those of a server that keeps each job as it was sent."""

import base64
import http.server
import socket
import socketserver
import ssl
import struct
import threading

import ipp
from cups_daemon import HOST

PPD = "ppd"
PRINTER = (
    (ipp.NAME, "printer-name", "Morva"),
    (ipp.BOOLEAN, "printer-is-accepting-jobs", 1),
    (ipp.ENUM, "printer-state", 3),
    (ipp.TEXT, "printer-state-message", "ready"),
)
JOB = ((ipp.INTEGER, "job-id", 1), (ipp.ENUM, "job-state", ipp.COMPLETED), (ipp.KEYWORD, "job-state-reasons", "job-completed-successfully"))


def answer(content, *fields):
    """A complete HTTP response."""
    return head(f"Content-Length: {len(content)}", *fields) + content


def head(*fields):
    return "\r\n".join(("HTTP/1.1 200 OK", *fields, "", "")).encode()


def chunk(content):
    return f"{len(content):x}\r\n".encode() + content + b"\r\n"


def described(tag, attributes, changes=()):
    """An IPP response with a group of these attributes; `changes` replace those of the same name."""
    changed = {name for _, name, *_ in changes}
    kept = [attribute for attribute in attributes if attribute[1] not in changed]
    return answer(ipp.beginning(0) + ipp.group(tag, [*kept, *changes]) + bytes([ipp.END]))


UNAUTHORIZED = b'HTTP/1.1 401 Unauthorized\r\nWWW-Authenticate: Basic realm="CUPS"\r\nContent-Length: 0\r\n\r\n'


class Serving:
    """Serves for the duration of a `with` statement."""

    def __init__(self, server):
        self._server, self.ended = server, threading.Event()
        self.place = server.server_address
        self.address = "{}:{}".format(*self.place)

    def __enter__(self):
        self._thread = threading.Thread(target=self._server.serve_forever, args=(0.02,))
        self._thread.start()
        return self

    def __exit__(self, *_):
        self.ended.set()
        self._server.shutdown()
        self._server.server_close()
        self._thread.join()


class TlsWithoutEnd(Serving):
    """A server whose TLS handshake never ends: it sends nothing, or a byte now and then."""

    def __init__(self, is_silent):
        tls = self

        class Handler(socketserver.BaseRequestHandler):
            def handle(self):
                if not is_silent:
                    self.request.sendall(b"\x16\x03\x03\x40\x00")  # the head of a handshake record of 16 KB
                try:
                    while not tls.ended.wait(0.1):
                        self.request.sendall(b"" if is_silent else b"\x02")
                except OSError:
                    pass  # the client has gone

        super().__init__(socketserver.ThreadingTCPServer((HOST, 0), Handler))


class FakeServer(Serving):
    """Serves on a free port. `odd` maps an IPP operation, or PPD, to a function that returns the pieces of bytes to send instead of the
    usual answer; then the connection is closed. `logins` maps operations to the "user:password" that they need. With `keys`, the files of
    a certificate and its key, connections are encrypted from the start."""

    def __init__(self, ppd=b"", odd=None, logins=None, keys=None):
        self._ppd, self._odd, self._logins = ppd, odd or {}, logins or {}
        self.tried = []  # the logins that clients sent, each once
        self.job, self._documents = b"", 0  # the attributes in the last request for a new job, to the end of the message
        self.asked, self._open = [], []
        fake = self

        class Handler(http.server.BaseHTTPRequestHandler):
            protocol_version = "HTTP/1.1"

            def setup(self):
                super().setup()
                fake._open.append(self.request)

            def do_POST(self):
                message = fake._body(self)
                fake._serve(self, struct.unpack_from(">H", message, 2)[0], message)

            def do_GET(self):
                fake._serve(self, PPD, b"")

            def log_message(self, *_):
                pass

        server = http.server.ThreadingHTTPServer((HOST, 0), Handler)
        server.daemon_threads = False
        if keys:
            context = ssl.SSLContext(ssl.PROTOCOL_TLS_SERVER)
            context.load_cert_chain(*keys)
            context.num_tickets = 0  # libcups would wait for more after a ticket
            server.socket = context.wrap_socket(server.socket, server_side=True, do_handshake_on_connect=False)
        super().__init__(server)

    def __exit__(self, *_):
        self.ended.set()
        for client in self._open:
            try:
                client.shutdown(socket.SHUT_RDWR)
            except OSError:
                pass  # the client has gone
        super().__exit__()

    @staticmethod
    def _body(handler):
        if "Content-Length" in handler.headers:
            return handler.rfile.read(int(handler.headers["Content-Length"]))
        body = b""
        while length := int(handler.rfile.readline(), 16):
            body += handler.rfile.read(length)
            handler.rfile.readline()
        handler.rfile.readline()
        return body

    def _serve(self, handler, what, message):
        if what in self._logins and not self._takes(handler, self._logins[what]):
            handler.wfile.write(UNAUTHORIZED)
            return
        self.asked.append(what)
        if what == ipp.CREATE_JOB:
            self.job = ipp.attributes_of(message, ipp.JOB_GROUP)
        handler.close_connection = what in self._odd
        try:
            for piece in self._odd[what]() if what in self._odd else [self._usual(what, message)]:
                handler.wfile.write(piece)
        except OSError:
            handler.close_connection = True  # the client has gone

    def _takes(self, handler, wanted):
        scheme, _, login = handler.headers.get("Authorization", "").partition(" ")
        login = base64.b64decode(login).decode() if scheme == "Basic" else None
        if login is not None and login not in self.tried:
            self.tried.append(login)
        return login == wanted

    def _usual(self, what, message):
        if what == PPD:
            return answer(self._ppd, "Content-Type: application/vnd.cups-ppd")
        self._documents += what == ipp.SEND_DOCUMENT
        if what in (ipp.CREATE_JOB, ipp.SEND_DOCUMENT):
            return described(ipp.JOB_GROUP, JOB)
        if what == ipp.GET_JOB:
            documents = (ipp.INTEGER, "number-of-documents", self._documents)
            return answer(ipp.beginning(0) + ipp.group(ipp.JOB_GROUP, [*JOB, documents]) + self.job)
        return described(ipp.PRINTER_GROUP, PRINTER)
