"""Reads what the recording filter wrote about its jobs."""

import dataclasses
import json
import pathlib


@dataclasses.dataclass(frozen=True)
class Record:
    """A document as the printer's filter received it."""

    job: int
    queue: str
    user: str
    title: str
    copies: int
    options: dict  # keyword to value, in the filter's order; switches are "true" or "false"
    sha256: str
    size: int
    document: str  # the path of a copy; the copy is empty for a document of more than a megabyte


def parse_options(text):
    """Parses the options that CUPS passes to a filter: blanks separate them, a backslash escapes the next character."""
    words, word, characters = [], "", iter(text.strip(" "))
    for character in characters:
        if character == " ":
            words.append(word)
            word = ""
        else:
            word += next(characters, "") if character == "\\" else character
    words.append(word)

    options = {}
    for word in filter(None, words):
        keyword, equals, value = word.partition("=")
        if equals:
            options[keyword] = value
        elif keyword.startswith("no"):
            options[keyword[2:]] = "false"
        else:
            options[keyword] = "true"
    return options


def read_records(folder):
    """All records in the folder, by job and then in the order in which the documents arrived."""
    records = []
    for path in sorted(pathlib.Path(folder).glob("*.json")):
        fields = json.loads(path.read_text(encoding="ascii"))
        # Bytes that are not UTF-8 are lone surrogates, as in sys.argv.
        fields["options"] = parse_options(fields["options"])
        records.append(Record(**fields))
    return records
