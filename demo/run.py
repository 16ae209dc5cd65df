#!/usr/bin/python3
"""Prints the sample document on a sample printer from the print dialog and shows what reached the printer's filter.

With a screen, you use the dialog. Without one it opens on a virtual screen, where this program uses it through accessibility as a user
would, and saves a picture of the panel. Then an unmodified editor prints there with the same dialog, through the desktop portal. The
print server is a private CUPS; it and its files are removed at the end.
"""

import argparse
import os
import pathlib
import subprocess
import sys
import tempfile

PROJECT = pathlib.Path(__file__).resolve().parents[1]
SAMPLES = PROJECT / "resources/sample"
PRINTER = "Morva"
ON_OWN_SCREEN = PROJECT / "tests/support/on_own_screen.py"

# The panel's control, its option, and the value that the demonstration sets.
SETTINGS = (
    ("Valid", "MVTandemTrim", "On"),
    ("Direction", "MVImageDirectionPriority", "ShortEdgeFeed"),
    ("Position", "MVPrintPosition", "Left"),
    ("Top", "MVTopMargin", "12"),
    ("Bottom", "MVBottomMargin", "8"),
    ("Left", "MVLeftMargin", "3"),
    ("Right", "MVRightMargin", "20"),
)

sys.path[:0] = [str(PROJECT / folder) for folder in ("tests/e2e/portal", "tests/support/cups", "tests/support")]
import surroundings  # noqa: E402
from private_cups import PrivateCups  # noqa: E402


def has_screen():
    return any(os.environ.get(name) for name in ("WAYLAND_DISPLAY", "DISPLAY"))


def command(build, document=SAMPLES / "sample.pdf"):
    return [build / "host/tandem-trim", "-d", PRINTER, "--plugin", build / "TandemTrim.bundle", document]


def let_user_print(cups, build):
    """Leaves the dialog to the user, and returns whether a job was sent."""
    print("Set what you like on the page Tandem Trim, then print.", flush=True)
    own = {name: value for name, value in os.environ.items() if name != "XDG_STATE_HOME"}
    return subprocess.run(command(build), env=own | cups.environment(), check=False).returncode == 0


def set_panel(dialog):
    """Sets the panel to SETTINGS."""
    dialog.page("Tandem Trim")
    dialog.check("Use Tandem Trim")
    dialog.choose("Image Direction", 1)
    dialog.choose("Print Position", 0)
    for side, _, text in SETTINGS[3:]:
        dialog.type(f"{side} Margin", text)


def print_by_dialog(cups, build, picture):
    """Drives the dialog as a user would, and returns whether a job was sent."""
    from dialog_case import PrintDialog

    dialog = PrintDialog(command(build), cups.environment() | surroundings.of_this_test(surroundings.SCREEN))
    try:
        set_panel(dialog)
        dialog.save_picture(picture)
        print(f"A picture of the panel: {picture}")
        dialog.press("Print")
        status, out, errors = dialog.ends()
    finally:
        dialog.close()
    print(out.strip() if status == 0 else out + errors)
    return status == 0


def print_from_editor(cups):
    """Prints from another project's editor, by the editor's keyboard shortcut."""
    from dialog_case import until
    from portal_case import EDITORS, PortalSession, ShownDialog

    toolkit = "GTK 4"
    print(f"\n{EDITORS[toolkit][0][0]} prints through the desktop portal, after Control-P.", flush=True)
    with tempfile.TemporaryDirectory() as folder:
        # Otherwise the dialog would begin with the previous job's settings.
        environment = cups.environment() | surroundings.of_this_test(surroundings.SCREEN) | {"XDG_STATE_HOME": folder}
        with PortalSession(pathlib.Path(folder), environment) as session:
            editor = session.editor(toolkit, "A text that an editor prints.\n")
            try:
                editor.press_print()
                dialog = ShownDialog()
                dialog.select_printer(PRINTER)
                dialog.wait_for_tab("Tandem Trim")
                set_panel(dialog)
                dialog.press("Print")
                until(lambda: len(cups.records()) == 2, "the editor's job")
            finally:
                editor.close()


def show(received, expected):
    """Shows the received options of the panel, beside the values that were set if `expected`; returns whether they agree."""
    print("\nThe printer's filter received:\n")
    row = "  {:<9}  {:<25}  {:<14}  {}".format
    print(row("Setting", "Option", "Received", "").rstrip())
    for control, keyword, value in SETTINGS:
        value_received = received.get(keyword, "(nothing)")
        verdict = "" if not expected else "as set" if value_received == value else f"DIFFERENT: {value} was set"
        print(row(control, keyword, value_received, verdict).rstrip())
    return not expected or all(received.get(keyword) == value for _, keyword, value in SETTINGS)


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--build", type=pathlib.Path, default=PROJECT / "build/release", help="the build folder")
    parser.add_argument("--drive", action="store_true", help="drive the dialog on the current screen")
    arguments = parser.parse_args()
    build = arguments.build.resolve()
    if not arguments.drive and not has_screen():
        command = [ON_OWN_SCREEN, f"TANDEM_TRIM_BUILD={build}", sys.executable, __file__, "--build", build, "--drive"]
        return subprocess.run(command, check=False).returncode
    with PrivateCups() as cups:
        cups.add_queue(PRINTER, SAMPLES / "MorvaTandemKV2.ppd")
        if arguments.drive:
            sent = print_by_dialog(cups, build, build / "pictures/dialog.png")
        else:
            sent = let_user_print(cups, build)
        if not sent:
            return 1
        cups.wait_for_jobs()
        if not cups.records():
            print("Nothing was printed.")
            return 0
        agrees = show(cups.records()[0].options, expected=arguments.drive)
        if arguments.drive:
            print_from_editor(cups)
            cups.wait_for_jobs()
            agrees = show(cups.records()[1].options, expected=True) and agrees
    return 0 if agrees else 1


if __name__ == "__main__":
    sys.exit(main())
