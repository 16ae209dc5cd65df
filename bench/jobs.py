"""The rows of the program at a terminal: the summary, a job, a far server, many printers, and a large document."""

import contextlib
import shutil
import subprocess

from measuring import MICROSECONDS, PROJECT, Bench
from private_cups import PrivateCups
from relay import Distant
from row import Row, row_of_minima, row_of_pairs

SAMPLE = PROJECT / "resources/sample"
PPD = SAMPLE / "MorvaTandemKV2.ppd"
DOCUMENT = SAMPLE / "sample.pdf"
SETTINGS = {
    "Valid": ("MVTandemTrim", "On"),
    "Direction": ("MVImageDirectionPriority", "ShortEdgeFeed"),
    "Position": ("MVPrintPosition", "Left"),
    "Top": ("MVTopMargin", "12"),
    "Bottom": ("MVBottomMargin", "20"),
    "Left": ("MVLeftMargin", "0"),
    "Right": ("MVRightMargin", "7"),
}
PAIRS = 31
FEW_PAIRS = 11  # of programs that take a good part of a second
LARGE_PAIRS = 7
ONE_WAY = 0.02  # seconds to a server far away; an answer takes as long
SAVED = "x-note=1"
LARGE = 1 << 30
MANY = (300, 3000)


def commands(bench, queue, document=DOCUMENT):
    """The same job by the program and by lp."""
    at_panel = [word for name, (_, value) in SETTINGS.items() for word in ("--set", f"{name}={value}")]
    by_hand = [word for keyword, value in SETTINGS.values() for word in ("-o", f"{keyword}={value}")]
    return (bench.program_itself, "-d", queue, *at_panel, document), ("lp", "-d", queue, *by_hand, document)


def usages(bench, own, peer, count, before=lambda: None):
    """Runs both in turn, so that other load of the machine affects both, and returns their usages in pairs."""

    def usage(command):
        before()
        return bench.usage(*command)

    return [(usage(own), usage(peer)) for _ in range(count)]


def clock_row(what, beside, pairs, *goals):
    times = [(own.seconds * MICROSECONDS, peer.seconds * MICROSECONDS) for own, peer in pairs]
    return row_of_pairs(f"{what}: microseconds", beside, times, *goals)


def processor_row(what, beside, pairs, *goals):
    times = [(own.processor * MICROSECONDS, peer.processor * MICROSECONDS) for own, peer in pairs]
    return row_of_minima(f"{what}: microseconds of the processor", beside, times, *goals)


def summary_rows(bench, files):
    floor = bench.program("four_attributes")
    for size, known in ((2, 1.7), (80, 1.6), (640, 1.4)):
        pairs = usages(bench, (bench.program_itself, "--ppd", files[size], "--summary"), (floor, files[size]), PAIRS)
        what, beside = f"tandem-trim --ppd --summary, {size} KB", "C program"
        yield processor_row(what, beside, pairs, 1.15, None, known)
        yield clock_row(what, beside, pairs, 1.15, None, known)


def job_rows(bench, cups, queues):
    for size, known in ((2, 1.6), (80, 1.6), (640, 2.0)):
        pairs = usages(bench, *commands(bench, queues[size]), PAIRS, cups.wait_for_jobs)
        yield clock_row(f"job end to end, {size} KB", "lp", pairs, 1.2, None, known)


def over_relay(bench, cups, command):
    """Runs the command over a relay, and returns the relay, which has counted the requests, round trips and bytes."""
    with Distant(cups.address, ONE_WAY) as relay:
        bench.run(command, LD_BIND_NOW="", CUPS_SERVER=relay.address)
    return relay


def far_rows(bench):
    """A job on a server that is far away, beside lp."""
    with PrivateCups() as cups:
        bench = Bench(bench.build, cups.environment())
        cups.add_queue("Morva", PPD)
        own, peer = commands(bench, "Morva")
        for what in ("job", "job with saved options"):
            counts = [over_relay(bench, cups, command) for command in (own, peer)]
            yield Row(f"{what}: requests", *of_both(counts, lambda relay: len(relay.asked)), 1.0)
            yield Row(f"{what}: round trips", *of_both(counts, lambda relay: relay.round_trips), 1.0)
            subprocess.run(["lpoptions", "-p", "Morva", "-o", SAVED], env=cups.environment(), check=True)
        with Distant(cups.address, ONE_WAY) as relay:
            far = Bench(bench.build, cups.environment() | {"CUPS_SERVER": relay.address})
            pairs = usages(far, own, peer, FEW_PAIRS, cups.wait_for_jobs)
        yield clock_row(f"job over {ONE_WAY * 1000:.0f} ms each way", "lp", pairs, 1.0, None, 1.05)


def of_both(counts, number):
    own, peer = map(number, counts)
    return own, "lp", peer


def many_rows(bench):
    """The summary for one printer on a server with many, beside a server that has no other."""
    with PrivateCups() as alone, PrivateCups() as crowded:
        for cups in (alone, crowded):
            cups.add_queue("Morva", PPD)
        benches = [Bench(bench.build, cups.environment()) for cups in (crowded, alone)]
        command = bench.program_itself, "-d", "Morva", "--summary"
        printers = 1
        for count in MANY:
            for number in range(printers, count):
                crowded.add_queue(f"Printer{number}")
            printers = count
            what, beside = f"-d NAME --summary with {count:,} printers", "with one"
            relays = [over_relay(*both, command) for both in zip(benches, (crowded, alone))]
            for counted, number in (("requests", lambda relay: len(relay.asked)), ("bytes", lambda relay: relay.bytes)):
                own, peer = map(number, relays)
                yield Row(f"{what}: {counted}", own, beside, peer, 1.0)
            pairs = [tuple(each.usage(*command) for each in benches) for _ in range(PAIRS)]
            # The server itself looks through all its printers now and then.
            yield processor_row(what, beside, pairs, 1.1)
            yield clock_row(what, beside, pairs, 1.1)


def large_rows(bench):
    """A document of a gigabyte. Each job is cancelled before the next one is sent."""
    with PrivateCups() as cups:
        bench = Bench(bench.build, cups.environment())
        cups.add_queue("Morva", PPD, enabled=False)

        def purge():
            subprocess.run(["cancel", "-a", "-x", "Morva"], env=cups.environment(), check=True)

        with large_document(cups.folder) as document:
            small, _ = commands(bench, "Morva")
            pairs = usages(bench, *commands(bench, "Morva", document), LARGE_PAIRS, purge)
            purge()
            least = min(bench.usage(*small).peak for _ in range(LARGE_PAIRS))
        what = "job with a document of 1 GB"
        yield Row(f"{what}: KB of memory at most", min(own.peak for own, _ in pairs), "with one of 17 KB", least, 1.05)
        yield clock_row(what, "lp", pairs, 1.0)


@contextlib.contextmanager
def large_document(folder):
    document = folder / "large.pdf"
    shutil.copyfile(DOCUMENT, document)
    with open(document, "ab") as file:
        file.truncate(LARGE)  # a sparse file, which takes no space on the disk
    yield document
    document.unlink()
