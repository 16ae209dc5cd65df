"""How long tests wait for an event: one limit for all machines, long enough for the slowest."""

import time

PATIENCE = 120  # seconds until a test gives up
INTERVAL = 0.02  # seconds between two looks


def until(look, what):
    """Calls `look` until its result is true, and returns it. Raises a TimeoutError that names `what` if it never is."""
    end = time.monotonic() + PATIENCE
    while not (found := look()):
        if time.monotonic() > end:
            raise TimeoutError(f"timed out waiting for {what}")
        time.sleep(INTERVAL)
    return found
