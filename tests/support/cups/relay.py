"""Relays between a client and its print server. Each disturbs the traffic in one way, such as a silence, a cut connection, a refusal, a
delay or other bytes, or only records it."""

import base64
import queue
import random
import re
import socket
import threading
import time

from cups_daemon import HOST
from fake_server import UNAUTHORIZED

SILENT, GONE, BUSY = "silent", "gone", "busy"
REFUSAL = b"HTTP/1.1 503 Service Unavailable\r\nContent-Length: 0\r\nConnection: close\r\n\r\n"
UPGRADE = b"HTTP/1.1 426 Upgrade Required\r\nConnection: Upgrade\r\nUpgrade: TLS/1.2,HTTP/1.1\r\nContent-Length: 0\r\n\r\n"
PIECE = 65536
NEW_JOB = b"job-name"  # in the request that makes a job
END_OF_REQUEST_LINE = b" HTTP/1.1\r\n"


def number_of(request):
    """The name of the job that the request makes, as a number; None if it makes no job or the name is no number."""
    if (start := request.find(NEW_JOB)) < 0:
        return None
    start += len(NEW_JOB)
    length = int.from_bytes(request[start : start + 2], "big")
    name = request[start + 2 : start + 2 + length]
    return int(name) if name.isdigit() else None


class Relay:
    """Passes on the requests before number `last`. From that one on it is silent (SILENT) or closes the connection and its port (GONE); or
    it refuses that one alone (BUSY). Runs for the duration of a `with` statement."""

    def __init__(self, server, last, trouble):
        self._server, self._last, self._trouble = server, last, trouble
        self._listener = socket.create_server((HOST, 0))
        self._open = []
        self._requests = 0
        self.address = "{}:{}".format(*self._listener.getsockname())
        self._thread = threading.Thread(target=self._accept)

    def __enter__(self):
        self._thread.start()
        return self

    def __exit__(self, *_):
        self._end(self._listener)
        for one in self._open:
            self._end(one)
        self._thread.join()

    @staticmethod
    def _end(one):
        try:
            one.shutdown(socket.SHUT_RDWR)
        except OSError:
            pass  # the connection is closed
        one.close()

    def _accept(self):
        carriers = []
        try:
            while True:
                client, _ = self._listener.accept()
                server = self._connect()
                self._open += [client, server]
                for one in (client, server):
                    one.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)  # adds no delay
                for carry in (self._requests_from, self._answers_to):
                    carriers.append(threading.Thread(target=carry, args=(client, server)))
                    carriers[-1].start()
        except OSError:
            pass  # the listener is closed
        for carrier in carriers:
            carrier.join()

    def _connect(self):
        return socket.create_connection(self._server)

    def _requests_from(self, client, server):
        try:
            while piece := client.recv(PIECE):
                self._on_request(piece)
                self._requests += piece.count(END_OF_REQUEST_LINE)
                if self._requests < self._last or (self._trouble == BUSY and self._requests > self._last):
                    server.sendall(piece)
                elif self._trouble == BUSY and END_OF_REQUEST_LINE in piece:
                    client.sendall(REFUSAL)
                elif self._trouble == GONE:
                    self._end(self._listener)
                    self._end(client)
        except OSError:
            pass  # the connection is gone
        self._end(server)

    def _pass_on_while(self, may_pass, client, server):
        """Passes on the client's pieces until one may not pass, then closes the connection."""
        try:
            while (piece := client.recv(PIECE)) and may_pass(piece):
                server.sendall(piece)
        except OSError:
            pass  # the connection is gone
        self._end(client)
        self._end(server)

    def _on_request(self, piece):
        """Called before a piece of a request is passed on."""

    def _answers_to(self, client, server):
        try:
            while piece := server.recv(PIECE):
                client.sendall(piece)
        except OSError:
            pass  # the connection is gone


class Overhearing(Relay):
    """Passes everything on and records the client's bytes."""

    def __init__(self, server):
        super().__init__(server, float("inf"), None)
        self.heard = b""

    def _on_request(self, piece):
        self.heard += piece


class Distant(Relay):
    """Delays everything by `seconds`. `asked` lists the first lines of the client's requests. `bytes` counts the bytes in both directions,
    and `round_trips` how often the client sends: first, and after each answer."""

    def __init__(self, server, seconds=0):
        super().__init__(server, float("inf"), None)
        self._seconds = seconds
        self.asked, self.bytes, self.round_trips = [], 0, 0
        self._answered = set()  # the connections on which the server spoke last

    def _requests_from(self, client, server):
        def note(piece):
            self.asked += re.findall(rb"^[A-Z]+ \S+(?= HTTP/1\.1\r$)", piece, re.MULTILINE)
            self.round_trips += client in self._answered
            self._answered.discard(client)

        self._answered.add(client)
        self._carry_later(client, server, note)

    def _answers_to(self, client, server):
        self._carry_later(server, client, lambda _: self._answered.add(client))

    def _carry_later(self, source, target, note):
        under_way = queue.SimpleQueue()
        deliverer = threading.Thread(target=self._deliver, args=(under_way, target))
        deliverer.start()
        try:
            while piece := source.recv(PIECE):
                self.bytes += len(piece)
                note(piece)
                under_way.put((time.monotonic() + self._seconds, piece))
        except OSError:
            pass  # the connection is gone
        under_way.put((0, b""))
        deliverer.join()

    def _deliver(self, under_way, target):
        try:
            while True:
                arrival, piece = under_way.get()
                if not piece:
                    break
                time.sleep(max(0, arrival - time.monotonic()))
                target.sendall(piece)
        except OSError:
            pass  # the connection is gone
        self._end(target)


class Altered(Relay):
    """Replaces bytes in the server's answers by as many others."""

    def __init__(self, server, old, new):
        super().__init__(server, float("inf"), None)
        self._old, self._new = old, new

    def _answers_to(self, client, server):
        try:
            while piece := server.recv(PIECE):
                client.sendall(piece.replace(self._old, self._new))
        except OSError:
            pass  # the connection is gone


class WantsEncryption(Relay):
    """Answers requests with 426 until the connection's client asks for encryption, then passes everything on."""

    def __init__(self, server):
        super().__init__(server, float("inf"), None)
        self.turned_away = 0

    def _requests_from(self, client, server):
        try:
            piece = client.recv(PIECE)
            while piece and not piece.startswith(b"OPTIONS "):
                if END_OF_REQUEST_LINE in piece:
                    self.turned_away += 1
                    client.sendall(UPGRADE)
                piece = client.recv(PIECE)
            while piece:
                server.sendall(piece)
                piece = client.recv(PIECE)
        except OSError:
            pass  # the connection is gone
        self._end(server)


class Usurped(Relay):
    """Cuts the connection at the client's piece number `last`. Later connections reach another server."""

    def __init__(self, server, other, last):
        super().__init__(server, last, None)
        self._other = other
        self.is_cut = False

    def _requests_from(self, client, server):
        self._pass_on_while(self._may_pass, client, server)

    def _may_pass(self, _piece):
        self._requests += 1
        if self._requests != self._last:
            return True
        self._server = self._other
        self.is_cut = True
        return False


class Rerouted(Relay):
    """Passes everything on. The client's connections after the first `number` reach another server."""

    def __init__(self, server, other, number):
        super().__init__(server, float("inf"), None)
        self._other, self._left = other, number
        self.is_rerouted = False

    def _connect(self):
        self.is_rerouted = self._left == 0
        if self.is_rerouted:
            return socket.create_connection(self._other)
        self._left -= 1
        return super()._connect()


class WantsLogin(Relay):
    """Refuses to make a job without this "user:password". `tried` lists the wrong logins, each once."""

    def __init__(self, server, login):
        super().__init__(server, float("inf"), None)
        self._login, self.tried = login, []

    def _requests_from(self, client, server):
        login = None

        def may_pass(piece):
            nonlocal login
            if sent := re.search(rb"Authorization: Basic (\S+)", piece):
                login = base64.b64decode(sent[1]).decode()
            if NEW_JOB not in piece or login == self._login:
                return True
            self.tried += [login] if login and login not in self.tried else []
            client.sendall(UNAUTHORIZED)
            return False

        self._pass_on_while(may_pass, client, server)


class Slow(Relay):
    """Passes on `speed` bytes of the client's requests a second, and all after the first `slow` bytes of a connection at once. A small
    receive buffer keeps the system from accepting many more."""

    SHARE = 20  # pieces a second

    def __init__(self, server, speed, slow=float("inf")):
        super().__init__(server, float("inf"), None)
        self._speed, self._slow, self._ended = speed, slow, threading.Event()
        self._listener.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 4096)

    def __exit__(self, *_):
        self._ended.set()
        super().__exit__()

    def _requests_from(self, client, server):
        passed = 0
        try:
            while passed < self._slow and (piece := client.recv(self._speed // self.SHARE)):
                server.sendall(piece)
                passed += len(piece)
                self._ended.wait(1 / self.SHARE)
            client.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, PIECE)
        except OSError:
            pass  # the connection is gone
        super()._requests_from(client, server)


class Holdup(Relay):
    """Passes everything on, but requests with these words only after release(). `reached` is set when one arrives."""

    def __init__(self, server, words):
        super().__init__(server, float("inf"), None)
        self._words = words
        self.reached, self._released = threading.Event(), threading.Event()
        self.release = self._released.set

    def __exit__(self, *_):
        self.release()
        super().__exit__()

    def _on_request(self, piece):
        if self._words in piece:
            self.reached.set()
            self._released.wait()


class AtByte(Relay):
    """Calls _at_point() once `after` bytes have passed since the words `since` in a request, on that request's connection. Counts the bytes
    of the client's requests or, with `answers`, of the server's answers. `counted` is their number."""

    def __init__(self, server, after=float("inf"), answers=False, since=NEW_JOB):
        super().__init__(server, float("inf"), None)
        self._after, self._of_answers, self._since = after, answers, since
        self._client_of_job = None
        self.counted = 0

    def _requests_from(self, client, server):
        self._carry(client, client, server)

    def _answers_to(self, client, server):
        self._carry(client, server, client)

    def _carry(self, client, source, target):
        try:
            while piece := source.recv(PIECE):
                if self._client_of_job is None and source is client and (start := piece.find(self._since)) >= 0:
                    self._client_of_job = client
                    target.sendall(piece[:start])
                    piece = piece[start:]
                if client is self._client_of_job and self._of_answers == (source is not client):
                    piece = self._counts(piece, target)
                target.sendall(piece)
        except OSError:
            pass  # the connection is gone
        self._end(source)
        self._end(target)

    def _counts(self, piece, target):
        """Counts a piece. When it contains the point, passes on the bytes before the point, calls _at_point() and returns the rest."""
        left = self._after - self.counted
        self.counted += len(piece)
        if not 0 < left <= len(piece):
            return piece
        target.sendall(piece[:left])
        self._at_point()
        return piece[left:]


class Cut(AtByte):
    """Cuts the connection at the point, and no others."""

    def _at_point(self):
        self.counted = self._after
        raise ConnectionResetError


class OftenCut(Relay):
    """Cuts the connection of one in `one_in` jobs, at a random byte of its requests or, every other time, of their answers. The names of
    the jobs are numbers; these and the seed alone decide which connections are cut, and where. `cuts` counts the cuts."""

    FARTHEST = 8000  # bytes after the beginning of a small job

    def __init__(self, server, one_in, seed):
        super().__init__(server, float("inf"), None)
        self._one_in, self._seed = one_in, seed
        self._left = {}  # socket that bytes come from -> how many pass before the cut
        self._seen = set()  # the jobs so far; one that is sent again is not cut
        self.cuts = 0

    def _requests_from(self, client, server):
        self._carry(client, server, server)

    def _answers_to(self, client, server):
        self._carry(server, client, None)

    def _choose(self, piece, client, server):
        """Chooses where the connection is cut if the piece begins a job."""
        if (number := number_of(piece)) is None or number in self._seen:
            return
        self._seen.add(number)
        if number % self._one_in == self._seed % self._one_in:
            is_answers = number // self._one_in % 2
            self._left[server if is_answers else client] = random.Random(self._seed + number).randrange(self.FARTHEST)

    def _carry(self, source, target, server):
        try:
            while piece := source.recv(PIECE):
                if server:
                    self._choose(piece, source, server)
                if source in self._left:
                    self._left[source] -= len(piece)
                    if self._left[source] < 0:
                        target.sendall(piece[: self._left[source]])
                        self.cuts += 1
                        break
                target.sendall(piece)
        except OSError:
            pass  # the connection is gone
        self._left.pop(source, None)
        self._end(source)
        self._end(target)


class AlwaysCut(AtByte):
    """Cuts the connection at the point, and each later connection at the same point in it."""

    def _at_point(self):
        self._client_of_job, self.counted = None, 0
        raise ConnectionResetError


class Pause(AtByte):
    """Passes on nothing beyond the point until release(). `reached` is set at the point."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self.reached, self._released = threading.Event(), threading.Event()
        self.release = self._released.set

    def __exit__(self, *_):
        self.release()
        super().__exit__()

    def _at_point(self):
        self.reached.set()
        self._released.wait()


class Babbling(AtByte):
    """Begins an endless answer at the point, byte by byte. Other connections are untouched."""

    def __init__(self, *arguments):
        super().__init__(*arguments)
        self._ended = threading.Event()
        self._babbler = threading.Thread(target=self._babble)

    def __exit__(self, *_):
        self._ended.set()
        if self._babbler.is_alive():
            self._babbler.join()
        super().__exit__()

    def _at_point(self):
        self._client_of_job.sendall(b"H")
        self._babbler.start()

    def _babble(self):
        try:
            while not self._ended.wait(0.1):
                self._client_of_job.sendall(b"H")
        except OSError:
            pass  # the connection is gone


class Away(Cut):
    """Cuts the connection at the point and accepts no others for `seconds`."""

    def __init__(self, server, after, seconds):
        super().__init__(server, after)
        self._back = threading.Timer(seconds, self._listen_again)

    def __exit__(self, *_):
        self._back.cancel()
        if self._back.is_alive():
            self._back.join()
        super().__exit__()

    def _listen_again(self):
        self._listener = socket.create_server(self._place)
        self._returned = threading.Thread(target=self._accept, daemon=True)
        self._returned.start()

    def _at_point(self):
        self._place = self._listener.getsockname()
        self._end(self._listener)
        self._back.start()
        super()._at_point()
