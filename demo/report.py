"""The document in the pictures of the dialog: a report of twelve pages, with a tab at the edge of the first one."""

from pdf_file import of_objects

POINTS = 72 / 25.4
WIDTH, HEIGHT = 210, 297  # millimetres
PAGES = 12
SENTENCES = (
    "The paper came from two mills this year, and both kept their dates.",
    "Fewer sheets were spoiled than in any year before, which is the work of those who set the margins.",
    "What is trimmed is measured again on every hundredth sheet, on all four sides, and written down.",
    "The long edge leads on most machines; the short one where the binding wants it so.",
)


def text(left, top, size, words):
    return f"BT /F {size} Tf {left * POINTS:.1f} {(HEIGHT - top) * POINTS:.1f} Td ({words}) Tj ET"


def bar(left, top, width, height, colour):
    return f"{colour} rg {left * POINTS:.1f} {(HEIGHT - top - height) * POINTS:.1f} {width * POINTS:.1f} {height * POINTS:.1f} re f 0 g"


def page(number):
    parts = [text(30, 40, 26, "Annual Report"), text(30, 50, 12, f"Paper, presses and people - page {number}")]
    parts += [text(30, 66 + 6 * line, 10, SENTENCES[line % len(SENTENCES)]) for line in range(12)]
    parts += [bar(34 + 24 * index, 220 - height, 16, height, "0.2 0.45 0.7") for index, height in enumerate((28, 36, 33, 47, 58, 66))]
    parts += [bar(30, 220, 152, 0.6, "0 0 0")]
    parts += [text(30, 238 + 6 * line, 10, SENTENCES[(line + 1) % len(SENTENCES)]) for line in range(5)]
    if number == 1:
        parts.append(bar(2, 60, 8, 30, "0.8 0.2 0.2"))
    return "\n".join(parts)


def report():
    """The document as the bytes of a PDF file."""
    objects = ["<</Type/Catalog/Pages 2 0 R>>", None, "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>"]
    kids = []
    for number in range(1, PAGES + 1):
        content = page(number)
        objects.append(f"<</Length {len(content)}>>stream\n{content}\nendstream")
        box = f"[0 0 {WIDTH * POINTS:.2f} {HEIGHT * POINTS:.2f}]"
        objects.append(f"<</Type/Page/Parent 2 0 R/MediaBox{box}/Contents {len(objects)} 0 R/Resources<</Font<</F 3 0 R>>>>>>")
        kids.append(f"{len(objects)} 0 R")
    objects[1] = f"<</Type/Pages/Kids[{' '.join(kids)}]/Count {PAGES}>>"
    return of_objects(objects)
