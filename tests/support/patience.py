"""How long tests wait for what should happen. Nothing takes that long on the slowest machine, so that it is the same everywhere."""

import time

PATIENCE = 120  # seconds until what is waited for counts as missing
INTERVAL = 0.02  # seconds between two looks


def until(look, what):
    """What `look` gives as soon as that is true; TimeoutError that names `what` when it never is."""
    end = time.monotonic() + PATIENCE
    while not (found := look()):
        if time.monotonic() > end:
            raise TimeoutError(f"waited in vain for {what}")
        time.sleep(INTERVAL)
    return found
