#!/usr/bin/python3
"""Writes the project's list of changes in the form of a Debian changelog.

    ./changelog.py CHANGELOG.md "MAINTAINER <ADDRESS>" > changelog
"""

import datetime
import email.utils
import pathlib
import re
import sys
import textwrap

WIDTH = 78

ENTRY = """\
tandem-trim ({version}) unstable; urgency=medium

{changes}

 -- {maintainer}  {date}
"""


def item(change):
    text = " ".join(change.split())
    return textwrap.fill(text, WIDTH, initial_indent="  * ", subsequent_indent="    ", break_on_hyphens=False)


def entry(section, maintainer):
    heading, *changes = re.split(r"\n+- ", section.strip())
    version, date = re.fullmatch(r"(\S+) \((.*)\)", heading).groups()
    return ENTRY.format(
        version=version,
        changes="\n".join(item(change) for change in changes),
        maintainer=maintainer,
        date=email.utils.format_datetime(datetime.datetime.fromisoformat(date).replace(tzinfo=datetime.timezone.utc)),
    )


def main():
    path, maintainer = sys.argv[1:]
    _, *sections = re.split(r"^## ", pathlib.Path(path).read_text(encoding="utf-8"), flags=re.MULTILINE)
    sys.stdout.reconfigure(encoding="utf-8")
    print("\n".join(entry(section, maintainer) for section in sections), end="")


if __name__ == "__main__":
    main()
