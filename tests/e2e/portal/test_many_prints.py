"""Many documents printed through the print backend: for each one a dialog, in which the user presses Print, then the document."""

import dataclasses
import itertools
import unittest

import patience
from dialog_case import title_of
from portal_client import DONE, PortalCase, Shown, texts
from screen_reader import SENSITIVE, Gone, Program
from volume_case import PRINTERS, SEVERAL, ManyJobs

PAGES_PER_SIDE = ("2", "4", "6", "9", "16")


class ManyPrintsTest(ManyJobs, PortalCase):
    jobs = 8
    broken_jobs = 8

    def planned(self, count):
        """All jobs of a printer have the panel's options of its first job, which the user has saved; pages per side differ."""
        jobs = super().planned(count)
        saved = {job.printer: job.options for job in reversed(jobs)}
        number_up = itertools.cycle(PAGES_PER_SIDE)
        return [dataclasses.replace(job, options=saved[job.printer] | {"number-up": next(number_up)}) for job in jobs]

    def sends(self, jobs, environment):
        for job in jobs[: len(PRINTERS)]:
            words = [word for keyword, value in job.options.items() for word in ("-o", f"{keyword}={value}")]
            self.run_command("lpoptions", "-p", job.printer, *words)
        self.start(CUPS_SERVER=environment["CUPS_SERVER"])
        confirmed = {}
        for first in range(0, len(jobs), SEVERAL):
            some = jobs[first : first + SEVERAL]
            tokens = {job.title: self.token(job) for job in some}
            calls = {title: self.client.print(token=token, title=title) for title, token in tokens.items()}
            patience.until(lambda: self.are_answered(calls), f"answers to {calls.keys()}")
            confirmed |= {title: None for title, call in calls.items() if call.answer()[0] == DONE}
        said = self.end_backend()
        return confirmed, {job.title: said for job in jobs if job.title not in confirmed}

    def token(self, job):
        """Opens the job's dialog, presses Print and returns the token."""
        call = self.client.prepare(title=job.title, settings=texts(printer=job.printer, number_up=job.options["number-up"]))
        dialog = Shown(self.process, job.title)
        dialog.wait_for_tab("Tandem Trim")
        dialog.press("Print")
        return self.results_of(call)[2]

    def are_answered(self, calls):
        """Whether all calls are answered. Closes messages, and the dialogs of refused jobs."""
        if all(call.is_answered() for call in calls.values()):
            return True
        try:
            self.close_messages(calls)
        except Gone:
            pass  # a window has closed by now
        return False

    def close_messages(self, titles):
        """Closes the messages or, if there are none, cancels the dialogs (of these titles) whose jobs were refused."""
        program = Program.of_process(self.process.pid)
        windows = program.windows()
        messages = [window for window in windows if window.name not in titles]
        for window in messages or windows:
            buttons = {title_of(node): node for node in window.all() if node.role == "push button" and node.has(SENSITIVE)}
            # A dialog without Print is sending its job.
            if window in messages and "Close" in buttons:
                program.press(buttons["Close"])
            elif window not in messages and "Print" in buttons:
                program.press(buttons["Cancel"])


if __name__ == "__main__":
    unittest.main()
