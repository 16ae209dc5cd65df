"""What the tests of the print dialog have in common: the dialog on a screen, and a person who sees it by accessibility."""

import re
import subprocess
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402

import surroundings  # noqa: E402
from private_cups import PrivateCups  # noqa: E402
from terminal_case import PPD, PROGRAM, SAMPLE, TerminalCase  # noqa: E402

PATIENCE = 60  # seconds until what a person waits for counts as missing


def until(look, what):
    """What `look` gives as soon as it is true."""
    end = time.monotonic() + PATIENCE
    while True:
        try:
            found = look()
        except gi.repository.GLib.Error:  # what was looked at is gone
            found = None
        if found:
            return found
        if time.monotonic() > end:
            raise AssertionError(f"waited in vain for {what}")
        time.sleep(0.02)


def children(node):
    return [child for child in (node.get_child_at_index(i) for i in range(node.get_child_count())) if child]


def within(node):
    """The node and all below it that show."""
    yield node
    for child in children(node):
        yield from within(child)


def has(node, state):
    return node.get_state_set().contains(state)


def name_of(node):
    """Its name as it is meant: the toolkit gives the name of a button with a mnemonic as "_Print Print"."""
    name = (node.get_name() or "").replace("_", "")
    half = name[: len(name) // 2]
    return half if name == f"{half} {half}" else name


class PrintDialog:
    """A running dialog as a person uses it: everything is found by its role and its name."""

    def __init__(self, command, environment, content=b""):
        pipes = dict.fromkeys(("stdin", "stdout", "stderr"), subprocess.PIPE)
        self.process = subprocess.Popen(command, env=environment, text=True, **pipes)
        with self.process.stdin as pipe:
            pipe.buffer.write(content)
        self.process.stdin = None
        self.application = until(self._find, "the dialog")
        self.window = until(lambda: self.look("dialog", ""), "the dialog's window")

    def _find(self):
        if self.process.poll() is not None:
            raise AssertionError(f"the program ended: {self.process.communicate()}")
        for application in children(Atspi.get_desktop(0)):
            if application.get_process_id() == self.process.pid:
                return application
        return None

    def look(self, role, name):
        """The thing of this role and this name, else the first one whose name or description holds this text, or none."""
        nodes = [node for node in within(self.application) if node.get_role_name() == role]
        texts = [(name_of(node), node.get_description() or "") for node in nodes]
        for node, (own, _) in zip(nodes, texts):
            if own == name:
                return node
        for node, (own, description) in zip(nodes, texts):
            if name in own or name in description:
                return node
        return None

    def find(self, role, name):
        return until(lambda: self.look(role, name), f"{role} {name!r}")

    def page(self, title):
        """Goes to the page of this title."""

        def title_on_tab():
            tabs = self.look("page tab list", "")
            return tabs and next((node for node in within(tabs) if node.get_name() == title), None)

        self.click(until(title_on_tab, f"the page {title!r}"))

    def xdotool(self, *words):
        subprocess.run(["xdotool", *words], check=True, capture_output=True)

    def middle(self, node):
        """The middle of it on the screen, as xdotool takes it."""

        def place():
            extents = Atspi.Component.get_extents(node, Atspi.CoordType.WINDOW)
            middle = (extents.x + extents.width // 2, extents.y + extents.height // 2)
            return extents.width > 0 and [str(coordinate) for coordinate in middle]

        return until(place, "a place on the screen")

    def width(self):
        return Atspi.Component.get_extents(self.window, Atspi.CoordType.WINDOW).width

    def save_picture(self, path):
        """Saves what the dialog looks like as a PNG file."""
        path.parent.mkdir(parents=True, exist_ok=True)
        extents = Atspi.Component.get_extents(self.window, Atspi.CoordType.WINDOW)
        place = f"{extents.x},{extents.y},{extents.width},{extents.height}"
        subprocess.run(["scrot", "--autoselect", place, "--overwrite", path], check=True)

    def click(self, node):
        self.xdotool("mousemove", *self.middle(node), "click", "1")

    def press(self, name):
        """Presses the button of this name."""
        button = self.find("push button", name)
        until(lambda: has(button, Atspi.StateType.SENSITIVE), f"{name} to be ready")
        Atspi.Action.do_action(button, 0)

    def check(self, name):
        self.click(self.find("check box", name))

    def type(self, name, text):
        """Replaces what an entry holds."""
        entry = self.find("text", name)
        until(lambda: has(entry, Atspi.StateType.SENSITIVE), f"{name} to be live")
        Atspi.EditableText.set_text_contents(entry, text)

    def text(self, name):
        entry = self.find("text", name)
        return Atspi.Text.get_text(entry, 0, Atspi.Text.get_character_count(entry))

    def keys(self, *names):
        """Presses keys, by the names that X gives them."""
        self.xdotool("key", *names)

    def is_live(self, role, name):
        return has(self.find(role, name), Atspi.StateType.SENSITIVE)

    def wait_for_page(self, title):
        """Waits until the page of this title is in front."""

        def title_in_front():
            tabs = [node for node in within(self.application) if node.get_role_name() == "page tab"]
            return any(has(tab, Atspi.StateType.SELECTED) and title in map(name_of, within(tab)) for tab in tabs)

        until(title_in_front, f"the page {title!r} in front")

    def answer(self, title):
        """Presses the button of this title in the question that is asked, which is the youngest window."""

        def button():
            return next((node for node in within(children(self.application)[-1]) if name_of(node) == title), None)

        until(lambda: len(children(self.application)) > 1, "a question")
        Atspi.Action.do_action(until(button, f"the answer {title!r}"), 0)

    def shows(self, role, name):
        node = self.look(role, name)
        return node is not None and has(node, Atspi.StateType.VISIBLE)

    def is_checked(self, name):
        return has(self.find("check box", name), Atspi.StateType.CHECKED)

    def labels(self):
        """All texts that stand on what shows now."""
        return [node.get_name() for node in within(self.application) if node.get_role_name() == "label"]

    def says(self, words):
        """Waits until a text on the screen holds these words."""
        return until(lambda: next((label for label in self.labels() if words in label), None), f"the words {words!r}")

    def choose(self, name, index):
        self.choose_by_keys(name, "Home", *["Down"] * index)

    def choose_by_keys(self, name, *keys):
        """Opens the menu of this name and goes through it by these keys."""
        self.click(until(lambda: self.look("combo box", name) or self.look_behind(name, "combo box"), f"menu {name!r}"))
        self.keys(*keys, "Return")

    def look_behind(self, label, role):
        """The thing of this role right behind a label: the toolkit gives no names to what it makes for a PPD."""
        nodes = list(within(self.application))
        for place, node in enumerate(nodes):
            if node.get_role_name() == "label" and node.get_name() == f"{label}:":
                return next((later for later in nodes[place:] if later.get_role_name() == role), None)
        return None

    def spin(self, name, text):
        """Replaces what the box of a number holds, by the keyboard."""
        box = self.find("spin button", name)
        until(lambda: has(box, Atspi.StateType.SENSITIVE), f"{name} to be live")
        extents = Atspi.Component.get_extents(box, Atspi.CoordType.WINDOW)
        self.xdotool("mousemove", str(extents.x + 12), str(extents.y + extents.height // 2), "click", "1")
        self.keys("ctrl+a", *text, "Tab")

    def select_printer(self, name):
        row = until(lambda: self.look("label", name), f"the printer {name!r}")
        self.click(row)

    def ends(self):
        """Waits for the program's end and gives its exit status and what it said."""
        out, self.said = self.process.communicate(timeout=PATIENCE)
        return self.process.returncode, out, self.said

    def close(self):
        if self.process.poll() is None:
            self.process.terminate()
        self.process.communicate()


class DialogCase(TerminalCase):
    """Each test has a server of its own: some stop it."""

    @classmethod
    def setUpClass(cls):
        pass

    def setUp(self):
        self.cups = PrivateCups()
        self.addCleanup(self.cups.stop)
        self.cups.add_queue("Morva", PPD)

    def run_command(self, *command):
        subprocess.run(command, env=self.environment(), check=True, capture_output=True)

    def dialog(self, *arguments, documents=(SAMPLE,), content=b"", program=PROGRAM, **variables):
        environment = self.environment(**surroundings.of_this_test(surroundings.SCREEN)) | variables
        shown = PrintDialog([program, *arguments, *documents], environment, content)
        self.addCleanup(shown.close)
        return shown

    def memories(self, state):
        """The file in which the next dialog for Morva finds what the last one was set to."""
        host, port = self.cups.address
        return state / f"tandem-trim/Morva@{host}:{port}.conf"

    def printed(self, dialog, printer="Morva"):
        """The record of the job that the dialog sent."""
        status, out, said = dialog.ends()
        self.assertEqual(status, 0, out + said)
        confirmation = re.search(rf"job (\d+) on {printer}: (\d+) of \2 options confirmed", out)
        self.assertIsNotNone(confirmation, out + said)
        self.cups.wait_for_jobs()
        (record,) = [record for record in self.cups.records() if record.job == int(confirmation[1])]
        return record

    def panel(self, *arguments, **variables):
        dialog = self.dialog("-d", "Morva", *arguments, **variables)
        dialog.page("Tandem Trim")
        return dialog

    def live_panel(self, *arguments, **variables):
        dialog = self.panel(*arguments, **variables)
        dialog.check("Use Tandem Trim")
        return dialog

    def add_other(self, *changes):
        """Adds the printer Other, whose PPD differs from the sample by these (old, new) texts."""
        text = PPD.read_text()
        for old, new in changes:
            self.assertIn(old, text)
            text = text.replace(old, new)
        ppd = self.temporary_folder() / "other.ppd"
        ppd.write_text(text)
        self.cups.add_queue("Other", ppd)

    def freeze_at_other(self, dialog, words):
        """Freezes the server when Other is chosen, which the dialog has seen before and shows by these words."""
        for printer, shown in (("Other", words), ("Morva", "(0 to 20)")):
            dialog.select_printer(printer)
            dialog.says(shown)
        self.cups.freeze()
        self.addCleanup(self.cups.thaw)
        dialog.select_printer("Other")
        until(lambda: not dialog.look("label", "(0 to 20)"), "the panel of the first printer to go")

    def assert_nothing_was_sent(self):
        self.assertEqual(self.cups.jobs(), [])
        self.assertEqual(self.cups.records(), [])
