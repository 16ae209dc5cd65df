#!/usr/bin/python3
"""Takes the pictures of the print dialog in docs/, on the screen of `make pictures`.

pictures.py dialog-german takes only that picture.
"""

import pathlib
import re
import subprocess
import sys
import tempfile

from report import PAGES, report
from run import PRINTER, PROJECT, SAMPLES, SETTINGS, command

import surroundings
from dialog_case import PrintDialog
from private_cups import PrivateCups

SET = tuple(f"{keyword}={value}" for _, keyword, value in SETTINGS)
PRESET = "Booklet, 5 mm"


def wait_for_preset(dialog):
    dialog.middle(dialog.find("push button", f"Preset: {PRESET}"))


def change_margin(dialog):
    dialog.type("Top Margin", "9")
    dialog.middle(dialog.find("push button", f"Preset: {PRESET}, changed"))


# Each picture's name, the options that the dialog opens with, environment variables, and a function to call before it is taken.
PICTURES = (
    ("dialog", SET, {}),
    ("dialog-german", SET, {"LANGUAGE": "de"}),
    ("dialog-arabic", SET, {"LANGUAGE": "ar"}),
    ("dialog-dark", SET, {"GTK_THEME": "Default:dark"}),
    ("dialog-page", (*SET, "MVTopMargin=10", "MVLeftMargin=5", "MVRightMargin=5"), {}),
    ("dialog-warning", (*SET, "MVPrintPosition=Diagonal", "MVLeftMargin=18"), {}),
    ("dialog-preset", (), {}, wait_for_preset),
    ("dialog-preset-changed", (), {}, change_margin),
)


def save_preset(cups):
    """Saves the preset that some pictures start from."""
    words = [*command(surroundings.BUILD)[:-1], "-o", " ".join(SET), "--save-preset", PRESET]
    subprocess.run(words, env=cups.environment(), check=True, capture_output=True)


def title_of_the_panel(language):
    table = PROJECT / f"resources/{language}.lproj/Localizable.strings"
    return re.search('"TandemTrim" = "(.*)";', table.read_text("utf-8-sig"))[1]


def take(cups, document, name, options, variables, act=None):
    environment = cups.environment() | surroundings.of_this_test(surroundings.SCREEN) | variables
    words = ["-o", " ".join(options)] if options else ["--dialog", "--preset", PRESET]
    dialog = PrintDialog([*command(surroundings.BUILD, document), *words], environment)
    try:
        dialog.page(title_of_the_panel(variables.get("LANGUAGE", "en")))
        dialog.middle(dialog.find("image", "mm"))
        # Waits for the page's number, which appears after the page is drawn.
        dialog.find("label", f" {PAGES}")
        if act:
            act(dialog)
        dialog.save_picture(PROJECT / f"docs/{name}.png")
    finally:
        dialog.close()


def main():
    names = sys.argv[1:]
    chosen = [picture for picture in PICTURES if not names or picture[0] in names]
    if len(chosen) < len(names):
        sys.exit("the pictures are " + ", ".join(picture[0] for picture in PICTURES))
    with PrivateCups() as cups, tempfile.TemporaryDirectory() as folder:
        document = pathlib.Path(folder) / "report.pdf"
        document.write_bytes(report())
        cups.add_queue(PRINTER, SAMPLES / "MorvaTandemKV2.ppd")
        save_preset(cups)
        for picture in chosen:
            take(cups, document, *picture)


if __name__ == "__main__":
    main()
