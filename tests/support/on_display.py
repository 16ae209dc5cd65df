#!/usr/bin/env python3
"""Runs a command on an X display of its own, with a home folder of its own: on_display.py XVFB COMMAND..."""

import os
import subprocess
import sys
import tempfile


def main():
    xvfb, *command = sys.argv[1:]
    reading, writing = os.pipe()
    server = subprocess.Popen(
        [xvfb, "-displayfd", str(writing), "-screen", "0", "1024x768x24", "-nolisten", "tcp"],
        pass_fds=[writing], stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(writing)
    try:
        # The server writes the number of the free display that it took, once it is ready.
        number = os.fdopen(reading).readline().strip()
        if not number:
            sys.exit(f"{xvfb} did not start")
        with tempfile.TemporaryDirectory(prefix="tandem-trim-display-") as home:
            surroundings = dict(os.environ, DISPLAY=f":{number}", HOME=home, TMPDIR=home)
            return subprocess.run(command, env=surroundings).returncode
    finally:
        server.terminate()
        server.wait()


if __name__ == "__main__":
    sys.exit(main())
