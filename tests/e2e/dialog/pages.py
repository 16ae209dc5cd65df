"""Makes PDF documents: pages with bars of one colour, in millimetres from the upper left corner."""

from pdf_file import of_objects

POINTS = 72 / 25.4
A4 = (210, 297)
RED = "0.9 0.1 0.1"


def bar(left, top, width, height):
    return (left, top, width, height)


def pdf(*pages, size=A4, sizes=(), trailer=""):
    """A document of these pages, each a list of bars. `sizes` are the sizes of the first pages, `size` is that of the others."""
    objects = ["<</Type/Catalog/Pages 2 0 R>>", None]
    kids = []
    for bars, (width, height) in zip(pages, [*sizes, *[size] * (len(pages) - len(sizes))], strict=True):
        content = f"{RED} rg " + " ".join(
            f"{left * POINTS} {(height - top - high) * POINTS} {wide * POINTS} {high * POINTS} re f" for left, top, wide, high in bars
        )
        objects.append(f"<</Length {len(content)}>>stream\n{content}\nendstream")
        box = f"[0 0 {width * POINTS} {height * POINTS}]"
        objects.append(f"<</Type/Page/Parent 2 0 R/MediaBox{box}/Contents {len(objects)} 0 R>>")
        kids.append(f"{len(objects)} 0 R")
    objects[1] = f"<</Type/Pages/Kids[{' '.join(kids)}]/Count {len(kids)}>>"
    return of_objects(objects, trailer)


def locked():
    """A document that needs a password."""
    identity = f"<{'A' * 32}>"
    objects = [
        "<</Type/Catalog/Pages 2 0 R>>",
        "<</Type/Pages/Kids[3 0 R]/Count 1>>",
        "<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 842]>>",
        f"<</Filter/Standard/V 1/R 2/P -4/O<{'1' * 64}>/U<{'2' * 64}>>>",
    ]
    return of_objects(objects, f"/Encrypt 4 0 R/ID[{identity}{identity}]")


def slow_to_render():
    """A document whose page takes far too long to render."""
    content = "0 0 m 595 842 9 9 300 5 c S " * 400_000
    page = "<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 842]/Contents 4 0 R>>"
    stream = f"<</Length {len(content)}>>stream\n[0.001] 0 d {content}\nendstream"
    return of_objects(["<</Type/Catalog/Pages 2 0 R>>", "<</Type/Pages/Kids[3 0 R]/Count 1>>", page, stream])
