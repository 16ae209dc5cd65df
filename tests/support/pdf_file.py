"""PDF files, written by hand."""


def of_objects(objects, trailer=""):
    """A document of these objects, the first of which is its catalogue."""
    text = "%PDF-1.5\n"
    places = ["0000000000 65535 f \n"]
    for number, content in enumerate(objects, 1):
        places.append(f"{len(text):010} 00000 n \n")
        text += f"{number} 0 obj\n{content}\nendobj\n"
    table = f"xref\n0 {len(places)}\n{''.join(places)}trailer\n<</Size {len(places)}/Root 1 0 R{trailer}>>\n"
    return f"{text}{table}startxref\n{len(text)}\n%%EOF\n".encode()
