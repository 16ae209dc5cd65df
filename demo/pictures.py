#!/usr/bin/python3
"""Takes the pictures of the print dialog in docs/, on the screen of `make pictures`: in several languages, dark, with a warning."""

import pathlib
import tempfile

from report import PAGES, report
from run import PRINTER, PROJECT, SAMPLES, SETTINGS, command

import surroundings
from dialog_case import PrintDialog
from private_cups import PrivateCups

SET = tuple(f"{keyword}={value}" for _, keyword, value in SETTINGS)

# Each picture's name, the options that the dialog opens with and the variables of its surroundings.
PICTURES = (
    ("dialog", SET, {}),
    ("dialog-german", SET, {"LANGUAGE": "de"}),
    ("dialog-arabic", SET, {"LANGUAGE": "ar"}),
    ("dialog-dark", SET, {"GTK_THEME": "Default:dark"}),
    ("dialog-page", (*SET, "MVTopMargin=10", "MVLeftMargin=5", "MVRightMargin=5"), {}),
    ("dialog-warning", (*SET, "MVPrintPosition=Diagonal", "MVLeftMargin=18"), {}),
)


def take(cups, document, name, options, variables):
    environment = cups.environment() | surroundings.of_this_test(surroundings.SCREEN) | variables
    dialog = PrintDialog([*command(surroundings.BUILD, document), "-o", " ".join(options)], environment)
    try:
        dialog.page("Tandem Trim")
        dialog.middle(dialog.find("image", "mm"))
        # The page is drawn before its number shows.
        dialog.find("label", f" {PAGES}")
        dialog.save_picture(PROJECT / f"docs/{name}.png")
    finally:
        dialog.close()


def main():
    with PrivateCups() as cups, tempfile.TemporaryDirectory() as folder:
        document = pathlib.Path(folder) / "report.pdf"
        document.write_bytes(report())
        cups.add_queue(PRINTER, SAMPLES / "MorvaTandemKV2.ppd")
        for picture in PICTURES:
            take(cups, document, *picture)


if __name__ == "__main__":
    main()
