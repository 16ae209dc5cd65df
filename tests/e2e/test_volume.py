"""Many jobs with random settings, for each way to send them without a screen."""

import concurrent.futures
import json
import re
import subprocess
import unittest

from terminal_case import BUILD, PROGRAM, REQUEST, SAMPLE, TerminalCase
from volume_case import PLANNER, SEVERAL, ManyJobs

DIALOGS = BUILD / "tests/e2e/tandemtrim_dialog_jobs"


class OneProcess(ManyJobs):
    """One process reads the planned jobs and writes a line with each job's number."""

    def sends(self, jobs, environment):
        plan = "".join(json.dumps({"title": job.title, "printer": job.printer, "options": job.options}) + "\n" for job in jobs)
        sent = subprocess.run(self.command, input=plan, env=environment, capture_output=True, text=True, check=False)
        self.assertEqual(sent.returncode, 0, sent.stderr)
        answers = [json.loads(line) for line in sent.stdout.splitlines()]
        self.assertEqual(len(answers), len(jobs))
        confirmed = {answer["title"]: answer["job"] for answer in answers if answer["job"] is not None}
        return confirmed, dict(re.findall(r"^(\d+): (.*)", sent.stderr, re.MULTILINE))


class OneConnectionTest(OneProcess, TerminalCase):
    command = (PLANNER, "send", SAMPLE)


@unittest.skipUnless(DIALOGS.exists(), "without GTK")
class DialogsTest(OneProcess, TerminalCase):
    jobs = 200
    broken_jobs = 40
    command = (DIALOGS, SAMPLE, str(SEVERAL))


class TerminalProgramTest(ManyJobs, TerminalCase):
    jobs = 60
    broken_jobs = 20

    def sends(self, jobs, environment):
        def prints(job):
            command = [PROGRAM, "-d", job.printer, "-t", job.title, *job.arguments, SAMPLE]
            return subprocess.run(command, env=environment, stdin=subprocess.DEVNULL, capture_output=True, text=True, check=False)

        with concurrent.futures.ThreadPoolExecutor(SEVERAL) as pool:
            results = {job.title: result for job, result in zip(jobs, pool.map(prints, jobs))}
        confirmed = {title: self.number(result) for title, result in results.items() if result.returncode == 0}
        return confirmed, {title: result.stderr for title, result in results.items() if result.returncode == 1}

    def number(self, result):
        """Returns the number of a job whose options are all confirmed."""
        said = re.match(REQUEST + r"job (\d+) on \w+: (\d+) of \2 options confirmed\n", result.stdout)
        self.assertIsNotNone(said, result)
        return int(said[1])


if __name__ == "__main__":
    unittest.main()
