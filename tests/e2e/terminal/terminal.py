"""A terminal and its user: what a program shows there, and which keys are typed."""

import os
import signal
import subprocess
import termios

import patience

INTERRUPT = b"\x03"


class Terminal:
    """Runs a command as the foreground job of its own terminal, for the duration of a `with` statement."""

    def __init__(self, command, environment):
        self._user, seen_by_program = os.openpty()
        os.set_blocking(self._user, False)
        self._shown = b""
        pipes = dict.fromkeys(("stdin", "stdout", "stderr"), seen_by_program)
        self._program = subprocess.Popen(["setsid", "--ctty", *command], env=environment, start_new_session=False, **pipes)
        os.close(seen_by_program)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        if self._program.poll() is None:
            self._program.send_signal(signal.SIGKILL)
            self._program.wait()
        os.close(self._user)

    def shown(self):
        """All that the terminal has shown so far."""
        try:
            while piece := os.read(self._user, 4096):
                self._shown += piece
        except OSError:
            pass  # there is no more output yet, or the program has ended
        return self._shown.decode(errors="replace").replace("\r\n", "\n")

    def wait_for(self, words, times=1):
        patience.until(lambda: self.shown().count(words) >= times, f"{words!r} at the terminal")

    def type(self, keys):
        os.write(self._user, keys)

    def echoes(self):
        """Whether the terminal shows what is typed."""
        return bool(termios.tcgetattr(self._user)[3] & termios.ECHO)

    def end(self):
        """Waits for the program's end and returns its exit status."""
        patience.until(lambda: (self.shown(), self._program.poll())[1] is not None, "the program's end")
        return self._program.returncode
