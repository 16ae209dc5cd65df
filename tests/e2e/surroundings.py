"""The languages and locales that the tests run the program under."""

import functools
import pathlib
import subprocess
import tempfile

_COMMA_LOCALE = "de_DE.UTF-8"  # a comma before the decimals


@functools.cache
def _locales():
    """A folder with the comma locale, which the system need not have; removed when the process ends."""
    folder = tempfile.TemporaryDirectory(prefix="locales-")
    pathlib.Path(folder.name).chmod(0o755)
    target = pathlib.Path(folder.name) / _COMMA_LOCALE
    subprocess.run(["localedef", "-i", "de_DE", "-f", "UTF-8", target], check=True)
    return folder


_SURROUNDINGS = {
    "english": lambda: {},
    "c": lambda: {"LANG": "C"},
    "comma": lambda: {"LC_ALL": _COMMA_LOCALE, "LOCPATH": _locales().name},
    "arabic": lambda: {"LANGUAGE": "ar"},
}


def variables(name):
    """The environment variables of the surroundings of this name."""
    return _SURROUNDINGS[name]()
