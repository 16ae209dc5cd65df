"""The desktop's notifications about a job after its dialog has closed."""

import contextlib
import os
import unittest

import patience
from dialog_case import DialogCase
from notifications import MARKUP, Desktop, notifiers
from relay import NEW_JOB, Holdup
from terminal_case import BUILD, PPD, SAMPLE, each

NOTIFIER = BUILD / "host/tandem-trim-notifier"
SWITCH = "Notify after printing"
ICON = "com.morva.tandemtrim"  # the name of the desktop file, too
BY_THE_DESKTOP = -1  # the desktop decides how long it shows a notification
GET_JOB_ATTRIBUTES = b"\x02\x00\x00\x09"  # the first bytes of such a request
ODD_TITLE = '<b>50 %s</b> & "more"'
# Waits for a file with an exit status, and exits with it.
SLOW_FILTER = """#!/bin/sh
until [ -e "$TANDEM_TRIM_RECORDS/go" ]; do sleep 0.05; done
exit $(cat "$TANDEM_TRIM_RECORDS/go")
"""


class DialogNotificationsTest(DialogCase):
    def setUp(self):
        super().setUp()
        home = self.temporary_folder()
        self.around = {"XDG_STATE_HOME": str(home / "state"), "XDG_CONFIG_HOME": str(home / "config")}
        self.choices = home / "config/tandem-trim/dialog.conf"

    def desktop(self, *capabilities):
        return self.enterContext(Desktop(self.temporary_folder(), *capabilities))

    def add_slow_queue(self):
        """Adds the printer Slow, whose filter waits for end_filter()."""
        program = self.cups.folder / "programs/filter/slow"
        program.write_text(SLOW_FILTER)
        program.chmod(0o755)
        ppd = self.temporary_folder() / "slow.ppd"
        ppd.write_text(PPD.read_text().replace("0 morvatandem", "0 slow"))
        self.cups.add_queue("Slow", ppd)

    def end_filter(self, status):
        unfinished = self.cups.folder / "records/unfinished"
        unfinished.write_text(str(status))
        unfinished.rename(unfinished.with_name("go"))

    def notifiers(self, server=None):
        """The notifiers that use this print server, or else the test's own."""
        return notifiers(NOTIFIER, server or "{}:{}".format(*self.cups.address))

    def wait_for_no_notifier(self, server=None):
        patience.until(lambda: not self.notifiers(server), "the notifier's end")

    def ready(self, *arguments, **variables):
        """A dialog that can print."""
        dialog = self.dialog(*arguments, **self.around | variables)
        dialog.wait_for_tab("Tandem Trim")
        dialog.find_live("push button", "Print")
        return dialog

    def prints(self, *arguments, **variables):
        dialog = self.ready(*arguments, **variables)
        dialog.press("Print")
        status, out, said = dialog.ends()
        self.assertEqual(status, 0, said)
        self.assertIn("options confirmed", out)
        self.assertNotIn("notification", said)
        return dialog

    def test_a_notification_lists_the_confirmed_settings_in_the_panels_words(self):
        desktop = self.desktop()
        dialog = self.panel("-t", "Report", **self.around)
        dialog.change_panel()
        dialog.press("Print")
        self.printed(dialog)
        (shown,) = desktop.wait_for(1)
        self.assertEqual(shown["heading"], "Job 1 on Morva: all settings confirmed")
        title, settings = shown["body"].splitlines()
        self.assertEqual(title, "Report")
        self.assertEqual(
            settings.split(", "),
            ["Image Direction: Short-Edge Feed", "Print Position: Left", "Top Margin: 12", "Bottom Margin: 30", "Left Margin: 0", "Right Margin: 7"],
        )
        self.assertEqual((shown["actions"], shown["replaced"]), ([], 0))
        self.assertEqual((shown["application"], shown["icon"], shown["time"]), ("Tandem Trim", ICON, BY_THE_DESKTOP))
        self.assertEqual(shown["hints"], {"desktop-entry": ICON})
        self.wait_for_no_notifier()
        self.assertEqual(len(desktop.shown()), 1)

    def test_a_notification_names_lost_settings(self):
        desktop = self.desktop()
        dialog = self.ready("-d", "Morva", "-o", "job-media-sheets-completed=7")
        dialog.press("Print")
        dialog.says("has lost these settings")
        self.assertEqual(desktop.shown(), [])
        dialog.press("Close")
        dialog.ends()
        (shown,) = desktop.wait_for(1)
        self.assertEqual(shown["heading"], "Job 1 on Morva: settings lost")
        self.assertIn("job-media-sheets-completed (7", shown["body"])

    def test_a_cancelled_job_is_reported_in_place_of_its_first_notification(self):
        desktop = self.desktop()
        self.add_slow_queue()
        self.prints("-d", "Slow", "-t", "Report")
        (first,) = desktop.wait_for(1)
        self.assertNotEqual(self.notifiers(), [])
        self.run_command("cancel", "Slow-1")
        _, second = desktop.wait_for(2)
        self.assertEqual((second["heading"], second["body"]), ("Job 1 on Slow was cancelled", "Report"))
        self.assertEqual(second["replaced"], first["id"])
        self.wait_for_no_notifier()

    def test_a_job_whose_filter_fails_is_reported_in_place_of_its_first_notification(self):
        desktop = self.desktop()
        self.add_slow_queue()
        self.prints("-d", "Slow", "-t", "Report")
        desktop.wait_for(1)
        self.end_filter(1)
        first, second = desktop.wait_for(2)
        self.assertEqual((second["heading"], second["body"]), ("Job 1 on Slow failed", "Report"))
        self.assertEqual(second["replaced"], first["id"])
        self.wait_for_no_notifier()

    def test_no_process_is_left_behind_in_a_session_without_notifications(self):
        self.add_slow_queue()
        self.prints("-d", "Slow")
        self.wait_for_no_notifier()

    def test_the_program_does_not_wait_for_a_desktop_that_does_not_answer(self):
        desktop = self.desktop()
        desktop.freeze()
        self.prints("-d", "Morva")
        self.assertNotEqual(self.notifiers(), [], "the program waited for the desktop")
        self.wait_for_no_notifier()

    def test_markup_characters_in_a_title_are_shown_literally(self):
        for capabilities, shown_title in (((), ODD_TITLE), ((MARKUP,), "&lt;b&gt;50 %s&lt;/b&gt; &amp; &quot;more&quot;")):
            with self.subTest(capabilities), Desktop(self.temporary_folder(), *capabilities) as desktop:
                self.prints("-d", "Morva", "-t", ODD_TITLE)
                (shown,) = desktop.wait_for(1)
                self.assertEqual(shown["body"].splitlines()[0], shown_title)

    def test_notifications_are_in_the_users_language(self):
        desktop = self.desktop()
        dialog = self.dialog("-d", "Morva", LANGUAGE="de", **self.around)
        dialog.wait_for_tab("Tandem Trim")
        dialog.press("Drucken")
        dialog.ends()
        (shown,) = desktop.wait_for(1)
        self.assertEqual(shown["heading"], "Auftrag 1 auf Morva: alle Einstellungen bestätigt")

    def test_the_option_no_notification_applies_to_one_job_only(self):
        desktop = self.desktop()
        self.prints("-d", "Morva", "--no-notification")
        self.assertEqual((desktop.shown(), self.notifiers()), ([], []))
        self.assertFalse(self.choices.exists())
        self.prints("-d", "Morva")
        desktop.wait_for(1)

    def test_the_switch_is_remembered_for_all_printers_once_a_job_is_sent(self):
        desktop = self.desktop()
        self.add_other()
        dialog = self.panel(**self.around)
        self.assertTrue(dialog.is_checked(SWITCH))
        dialog.check(SWITCH)
        dialog.press("Cancel")
        dialog.ends()
        dialog = self.panel(**self.around)
        self.assertTrue(dialog.is_checked(SWITCH))
        dialog.check(SWITCH)
        dialog.press("Print")
        self.printed(dialog)
        self.prints("-d", "Other")
        self.assertEqual((desktop.shown(), self.notifiers()), ([], []))
        dialog = self.dialog("-d", "Other", **self.around)
        dialog.page("Tandem Trim")
        self.assertFalse(dialog.is_checked(SWITCH))
        dialog.check(SWITCH)
        dialog.press("Print")
        self.printed(dialog, "Other")
        desktop.wait_for(1)

    def test_the_switch_overrides_the_command_line(self):
        desktop = self.desktop()
        dialog = self.panel("--no-notification", **self.around)
        self.assertFalse(dialog.is_checked(SWITCH))
        dialog.check(SWITCH)
        dialog.press("Print")
        self.printed(dialog)
        desktop.wait_for(1)

    def test_notifications_are_shown_if_the_remembered_choice_is_damaged(self):
        desktop = self.desktop()
        self.choices.parent.mkdir(parents=True)
        for damaged in ("[Dialog]\nNotify=perhaps\n", "no file of keys"):
            self.choices.write_text(damaged)
            self.assertTrue(self.panel(**self.around).is_checked(SWITCH))
        self.choices.unlink()
        os.mkfifo(self.choices)
        self.prints("-d", "Morva")
        desktop.wait_for(1)

    def test_the_process_that_watches_the_job_has_its_own_session(self):
        desktop = self.desktop()
        self.add_slow_queue()
        self.prints("-d", "Slow")
        desktop.wait_for(1)
        (notifier,) = self.notifiers()
        self.assertEqual((os.getsid(notifier), os.readlink(f"/proc/{notifier}/cwd")), (notifier, "/"))
        self.end_filter(0)
        self.wait_for_no_notifier()
        self.assertEqual(len(desktop.shown()), 1)

    @contextlib.contextmanager
    def cancelled_during(self, request):
        """A dialog whose job the user cancels while the relay delays this request. Its notifier, if any, ends with the `with` statement."""
        with Holdup(self.cups.address, request) as holdup:
            dialog = self.ready("-d", "Morva", CUPS_SERVER=holdup.address)
            dialog.press("Print")
            patience.until(holdup.reached.is_set, "the request")
            dialog.press("Cancel")
            patience.until(lambda: not dialog.shows("push button", "Cancel"), "the dialog to go")
            holdup.release()
            yield dialog
            self.wait_for_no_notifier(holdup.address)

    def test_no_notification_is_shown_for_a_job_that_the_user_cancels_in_the_dialog(self):
        desktop = self.desktop()
        with self.cancelled_during(NEW_JOB) as dialog:
            _, out, said = dialog.ends()
        self.assertEqual(out, "")
        self.assertIn("cancelled", said)
        self.assertEqual(desktop.shown(), [])

    def test_a_notification_is_shown_for_a_job_that_the_user_cancels_too_late(self):
        desktop = self.desktop()
        with self.cancelled_during(GET_JOB_ATTRIBUTES) as dialog:
            self.printed(dialog)
            (shown,) = desktop.wait_for(1)
        self.assertEqual(shown["heading"], "Job 1 on Morva: all settings confirmed")

    def test_an_installed_program_shows_notifications(self):
        desktop = self.desktop()
        prefix = self.temporary_folder()
        prefix.chmod(0o755)
        self.run_command("cmake", "--install", BUILD, "--prefix", prefix)
        self.prints("-d", "Morva", program=prefix / "bin/tandem-trim", TANDEM_TRIM_PLUGIN_PATH="")
        desktop.wait_for(1)

    def test_a_notifier_that_others_could_change_is_not_started(self):
        desktop = self.desktop()
        prefix = self.temporary_folder()
        self.run_command("cmake", "--install", BUILD, "--prefix", prefix)
        (prefix / "libexec/tandem-trim-notifier").chmod(0o777)
        dialog = self.ready("-d", "Morva", program=prefix / "bin/tandem-trim", TANDEM_TRIM_PLUGIN_PATH="")
        dialog.press("Print")
        status, _, said = dialog.ends()
        self.assertEqual(status, 0)
        self.assertIn("no notification is shown", said)
        self.assertEqual(desktop.shown(), [])

    def test_a_job_printed_without_the_dialog_shows_no_notification(self):
        desktop = self.desktop()
        result = self.trim("-d", "Morva", *each("--set", ["Valid=On"]), SAMPLE, DBUS_SESSION_BUS_ADDRESS=os.environ["DBUS_SESSION_BUS_ADDRESS"])
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual((desktop.shown(), self.notifiers()), ([], []))


if __name__ == "__main__":
    unittest.main()
