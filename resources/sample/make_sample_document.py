#!/usr/bin/python3
"""Writes the sample document, a PDF of a few A4 pages, to standard output:

    ./make_sample_document.py > sample.pdf

Each page has a frame along the edges of the sheet and a scale in millimetres on all four of them, so that
what the printer trimmed can be read off the paper. Every run writes the same bytes.
"""

import sys

PAGES = 3
WIDTH_MM, HEIGHT_MM = 210, 297
POINTS_PER_MM = 72 / 25.4
SCALE_MM = 50  # as far as the largest margin reaches
TITLE = "Tandem Trim Sample Document"
NOTE = "The scales show how many millimetres are missing at each edge."


def number(value):
    return f"{value:.2f}".rstrip("0").rstrip(".")


def text(x, y, size, words):
    return f"BT /F1 {size} Tf {number(x)} {number(y)} Td ({words}) Tj ET"


def line(x, y, to_x, to_y):
    return f"{number(x)} {number(y)} m {number(to_x)} {number(to_y)} l S"


def scales():
    """A scale inward from the middle of each edge: a tick each millimetre, the longest ones with a number."""
    operators = ["0.2 w"]
    edges = (  # where the edge's scale begins, the direction inward
        (WIDTH_MM / 2, HEIGHT_MM, 0, -1),
        (WIDTH_MM / 2, 0, 0, 1),
        (0, HEIGHT_MM / 2, 1, 0),
        (WIDTH_MM, HEIGHT_MM / 2, -1, 0),
    )
    for begin_x, begin_y, in_x, in_y in edges:
        for distance in range(SCALE_MM + 1):
            length = 6 if distance % 10 == 0 else 4 if distance % 5 == 0 else 2
            x, y = begin_x + distance * in_x, begin_y + distance * in_y
            operators.append(line(x, y, x + length * abs(in_y), y + length * abs(in_x)))
            if distance % 10 == 0 and distance > 0:
                beside_x = x + 7 * abs(in_y) - 1.5 * abs(in_x)
                beside_y = y + 7 * abs(in_x) - 0.8 * abs(in_y)
                operators.append(text(beside_x, beside_y, 3, distance))
    return operators


def page_content(page):
    operators = [
        f"{POINTS_PER_MM:.5f} 0 0 {POINTS_PER_MM:.5f} 0 0 cm",  # from here on a unit is a millimetre
        "0.5 w",
        f"0.25 0.25 {number(WIDTH_MM - 0.5)} {number(HEIGHT_MM - 0.5)} re S",
        *scales(),
        text(60, 200, 6, TITLE),
        text(60, 190, 4, f"Page {page} of {PAGES}"),
        text(60, 182, 3, NOTE),
    ]
    return "\n".join(operators).encode("ascii")


def objects():
    """The document's objects in the order of their numbers, which begin at 1."""
    first_page = 5
    kids = " ".join(f"{first_page + 2 * index} 0 R" for index in range(PAGES))
    media_box = f"[0 0 {number(WIDTH_MM * POINTS_PER_MM)} {number(HEIGHT_MM * POINTS_PER_MM)}]"
    yield b"<< /Type /Catalog /Pages 2 0 R >>"
    resources = "<< /Font << /F1 3 0 R >> >>"
    inherited = f"/MediaBox {media_box} /Resources {resources}"
    yield f"<< /Type /Pages /Kids [{kids}] /Count {PAGES} {inherited} >>".encode("ascii")
    yield b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>"
    yield f"<< /Title ({TITLE}) >>".encode("ascii")
    for index in range(PAGES):
        contents = first_page + 2 * index + 1
        yield f"<< /Type /Page /Parent 2 0 R /Contents {contents} 0 R >>".encode("ascii")
        content = page_content(index + 1)
        yield b"<< /Length %d >>\nstream\n%s\nendstream" % (len(content), content)


def document():
    # The second line marks the file as binary for programs that move it.
    written = bytearray(b"%PDF-1.4\n%\xe2\xe3\xcf\xd3\n")
    offsets = []
    for index, body in enumerate(objects(), start=1):
        offsets.append(len(written))
        written += b"%d 0 obj\n%s\nendobj\n" % (index, body)
    table_at = len(written)
    size = len(offsets) + 1
    written += b"xref\n0 %d\n0000000000 65535 f \n" % size
    written += b"".join(b"%010d 00000 n \n" % offset for offset in offsets)
    written += b"trailer\n<< /Size %d /Root 1 0 R /Info 4 0 R >>\nstartxref\n%d\n%%%%EOF\n" % (size, table_at)
    return bytes(written)


if __name__ == "__main__":
    sys.stdout.buffer.write(document())
