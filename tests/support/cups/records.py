"""What the recording filter noted about the jobs that reached it."""

import dataclasses
import json
import pathlib


@dataclasses.dataclass(frozen=True)
class Record:
    """One document as the printer's filter received it."""

    job: int
    queue: str
    user: str
    title: str
    copies: int
    options: dict  # keyword to value in their order, switches as "true" and "false"
    sha256: str
    size: int
    document: str  # the file with what was received; empty for a document of more than a megabyte


def parse_options(text):
    """Reads the options that CUPS hands to a filter: blanks part them, a backslash takes the next character along."""
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
    """All records in the folder, by job and then in the order of the job's documents."""
    records = []
    for path in sorted(pathlib.Path(folder).glob("*.json")):
        fields = json.loads(path.read_text(encoding="ascii"))
        # Arguments that are no UTF-8 come as lone surrogates, as the system's own arguments do.
        fields["options"] = parse_options(fields["options"])
        records.append(Record(**fields))
    return records
