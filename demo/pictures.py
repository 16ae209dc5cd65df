#!/usr/bin/python3
"""Takes the pictures of the print dialog in docs/: in several languages, dark, with a warning. It needs no screen."""

import argparse
import os
import pathlib
import subprocess
import sys

PROJECT = pathlib.Path(__file__).resolve().parents[1]
SAMPLES = PROJECT / "resources/sample"
ON_OWN_SCREEN = PROJECT / "tests/support/on_own_screen.py"
PAGE = "Tandem Trim"
SET = ("MVTandemTrim=On", "MVImageDirectionPriority=ShortEdgeFeed", "MVPrintPosition=Left", "MVTopMargin=12", "MVBottomMargin=8",
       "MVLeftMargin=3", "MVRightMargin=20")

# Each picture's name, the options that the dialog opens with and the variables of its surroundings.
PICTURES = (
    ("dialog", SET, {}),
    ("dialog-german", SET, {"LANGUAGE": "de"}),
    ("dialog-arabic", SET, {"LANGUAGE": "ar"}),
    ("dialog-dark", SET, {"GTK_THEME": "Default:dark"}),
    ("dialog-warning", (*SET, "MVPrintPosition=Diagonal", "MVLeftMargin=18"), {}),
)

sys.path[:0] = [str(PROJECT / "tests/support/cups"), str(PROJECT / "tests/support")]
import surroundings  # noqa: E402
from private_cups import PrivateCups  # noqa: E402


def take(cups, build, name, options, variables):
    from dialog_case import PrintDialog

    program = [build / "host/tandem-trim", "-d", "Morva", "--plugin", build / "TandemTrim.bundle"]
    environment = cups.environment() | surroundings.of_this_test(surroundings.SCREEN) | variables
    dialog = PrintDialog([*program, "-o", " ".join(options), SAMPLES / "sample.pdf"], environment)
    try:
        dialog.page(PAGE)
        dialog.middle(dialog.find("image", "mm"))
        dialog.save_picture(PROJECT / f"docs/{name}.png")
    finally:
        dialog.close()


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=pathlib.Path, default=PROJECT / "build/release", help="the build folder")
    parser.add_argument("--on-screen", action="store_true", help="take them on the screen that is there")
    arguments = parser.parse_args()
    build = arguments.build.resolve()
    if not arguments.on_screen:
        return subprocess.run([ON_OWN_SCREEN, sys.executable, __file__, "--build", build, "--on-screen"], check=False).returncode
    os.environ["TANDEM_TRIM_BUILD"] = str(build)
    with PrivateCups() as cups:
        cups.add_queue("Morva", SAMPLES / "MorvaTandemKV2.ppd")
        for picture in PICTURES:
            take(cups, build, *picture)
    return 0


if __name__ == "__main__":
    sys.exit(main())
