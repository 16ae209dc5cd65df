"""Runs the tests of Python modules in the current folder and appends to FILE, for each test, its name, whether it passes, its seconds
and the places that its programs reach: one_by_one.py FILE MODULE ... TANDEM_TRIM_MUTANT_REACHED names the record of places."""
import json
import os
import pathlib
import sys
import time
import unittest


def places_reached(record):
    """Returns the numbers of the places in a record, and clears it."""
    with open(record, 'r+b') as file:
        reached = file.read()
        file.seek(0)
        file.write(bytes(len(reached)))
    return [number for number, byte in enumerate(reached) if byte]


class Record(unittest.TextTestResult):
    """Writes the line of each test. The places that a class's set-up reaches count for its first test."""

    def startTest(self, test):
        super().startTest(test)
        self.before = len(self.failures) + len(self.errors)
        self.begin = time.monotonic()

    def stopTest(self, test):
        super().stopTest(test)
        seconds = time.monotonic() - self.begin
        reached = places_reached(os.environ['TANDEM_TRIM_MUTANT_REACHED'])
        passes = len(self.failures) + len(self.errors) == self.before
        with pathlib.Path(sys.argv[1]).open('a') as file:
            file.write(json.dumps([test.id(), passes, seconds, reached]) + '\n')


if __name__ == '__main__':
    sys.path.insert(0, os.getcwd())
    tests = unittest.defaultTestLoader.loadTestsFromNames(sys.argv[2:])
    result = unittest.TextTestRunner(resultclass=Record).run(tests)
    sys.exit(not result.wasSuccessful())
