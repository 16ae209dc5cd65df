#!/usr/bin/python3 -Es
"""A test's surroundings, the same on every machine: surroundings.py [VARIABLE=VALUE ...] COMMAND [ARGUMENT ...]

The command gets a fresh home folder, one font, GTK's default theme and the variables below. Of the caller's environment it gets only
the sanitizers' options, the mutant (tests/mutants) and the seed of random tests. TANDEM_TRIM_FONT="Cantarell 11" chooses another font
of those below.
"""

import contextlib
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile

PATH = "/usr/bin:/bin:/usr/sbin:/sbin"
FONT = "DejaVu Sans 10"
_DEJAVU = ("truetype/dejavu/DejaVuSans.ttf", "truetype/dejavu/DejaVuSans-Bold.ttf")
# The files of each family. DejaVu Sans has the letters that the other families lack.
FONTS = {
    "DejaVu Sans": _DEJAVU,
    "Cantarell": ("opentype/cantarell/Cantarell-Regular.otf", "opentype/cantarell/Cantarell-Bold.otf", *_DEJAVU),
    "Noto Sans": ("truetype/noto/NotoSans-Regular.ttf", "truetype/noto/NotoSans-Bold.ttf", *_DEJAVU),
}
FONT_SETTINGS = """\
<?xml version="1.0"?>
<!DOCTYPE fontconfig SYSTEM "urn:fontconfig:fonts.dtd">
<fontconfig>
  <dir>{folder}/fonts</dir>
  <cachedir>{folder}/cache</cachedir>
  <match target="pattern"><edit name="family" mode="append" binding="strong"><string>{family}</string></edit></match>
  <match target="font">
    <edit name="antialias"><bool>true</bool></edit>
    <edit name="hintstyle"><const>hintslight</const></edit>
    <edit name="rgba"><const>none</const></edit>
  </match>
</fontconfig>
"""
GTK_SETTINGS = """\
[Settings]
gtk-theme-name=Default
gtk-icon-theme-name=Adwaita
gtk-cursor-theme-name=Adwaita
gtk-font-name={font}
gtk-application-prefer-dark-theme=false
gtk-enable-animations=true
gtk-print-backends=cups,file
"""
# Programs draw the same on every machine and use no module or service that only some machines have.
CONSTANTS = {
    "PATH": PATH,
    "LANG": "C.UTF-8",
    "TZ": "UTC",
    "XDG_DATA_DIRS": "/usr/share",
    "GDK_BACKEND": "x11",
    "GDK_DEBUG": "gl-disable",
    "GSK_RENDERER": "cairo",
    "GSETTINGS_BACKEND": "memory",
    "GIO_MODULE_DIR": "/nonexistent",
    "DBUS_SYSTEM_BUS_ADDRESS": "unix:path=/nonexistent",
}
# The variables that a test passes on to every program, and those by which a program finds the test's screen.
SHARED = (*CONSTANTS, "FONTCONFIG_FILE", "XDG_CONFIG_DIRS")
SCREEN = ("DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "XDG_RUNTIME_DIR")
SANITIZERS = ("ASAN_", "UBSAN_", "LSAN_", "TSAN_")
MUTANTS = ("TANDEM_TRIM_MUTANT",)
SEED = "TANDEM_TRIM_SEED"
SERVICES_LOG = "TANDEM_TRIM_SERVICES_LOG"  # the file for the output of other projects' services

BUILD = pathlib.Path(os.environ.get("TANDEM_TRIM_BUILD", pathlib.Path(__file__).parents[2] / "build/release")).resolve()
# The variables of the languages and locales that the program is tried in.
LANGUAGES = {
    "english": {},
    "c": {"LANG": "C"},
    "comma": {"LC_ALL": "de_DE.UTF-8", "LOCPATH": str(BUILD / "tests/locales")},  # a decimal comma, in a locale that the build makes
    "arabic": {"LANGUAGE": "ar"},
}


def of_this_test(names):
    """This process's variables of these names, with the sanitizers' options and the mutant."""
    return {name: value for name, value in os.environ.items() if name in names or name.startswith(SANITIZERS + MUTANTS)}


def fonts(folder, font=FONT, more=""):
    """Writes settings that give programs only this font ("family points") and DejaVu Sans into a new folder, with `more` lines of GTK's
    settings. Returns the variables by which programs find them."""
    family, points = re.fullmatch(r"(.+) (\d+)", font).groups()
    (folder / "fonts").mkdir(parents=True)
    for file in FONTS[family]:
        source = pathlib.Path("/usr/share/fonts", file)
        if not source.exists():
            raise FileNotFoundError(f"{source}: packaging/install-dependencies.sh names the package")
        (folder / "fonts" / source.name).symlink_to(source)
    (folder / "fonts.conf").write_text(FONT_SETTINGS.format(folder=folder, family=family))
    (folder / "gtk-4.0").mkdir()
    (folder / "gtk-4.0/settings.ini").write_text(GTK_SETTINGS.format(font=f"{family} {points}") + more)
    return {"FONTCONFIG_FILE": str(folder / "fonts.conf"), "XDG_CONFIG_DIRS": str(folder)}


@contextlib.contextmanager
def own(given):
    """The whole environment of a test, with the variables given on the command line and a home folder that is removed afterwards."""
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(128 + signal.SIGTERM))
    # A shell makes its background jobs ignore SIGINT, and their children inherit that.
    signal.signal(signal.SIGINT, signal.default_int_handler)
    os.umask(0o022)
    # Not in the caller's TMPDIR: print servers that drop root's rights must reach it, and a socket's path must be short.
    with tempfile.TemporaryDirectory(prefix="tandem-trim-test-", dir="/tmp") as folder:
        os.chmod(folder, 0o755)
        home, run, temporary = (pathlib.Path(folder, name) for name in ("home", "run", "tmp"))
        home.mkdir()
        run.mkdir(mode=0o700)
        temporary.mkdir()
        temporary.chmod(0o1777)
        folders = {"HOME": home, "CUPS_SERVERROOT": home, "XDG_RUNTIME_DIR": run, "TMPDIR": temporary, "TEMP": temporary}
        support = pathlib.Path(__file__).resolve().parent
        python = {"PYTHONPATH": f"{support}:{support / 'cups'}", "PYTHONDONTWRITEBYTECODE": "1"}
        folders |= {SERVICES_LOG: pathlib.Path(folder, "services.log")}
        environment = of_this_test((SEED,)) | CONSTANTS | {name: str(path) for name, path in folders.items()} | python | given
        yield environment | fonts(pathlib.Path(folder, "settings"), given.get("TANDEM_TRIM_FONT", FONT))


def read_arguments():
    """The command line as (variables, command)."""
    words = sys.argv[1:]
    count = next((index for index, word in enumerate(words) if "=" not in word), len(words))
    if count == len(words):
        sys.exit(f"usage: {sys.argv[0]} [VARIABLE=VALUE ...] COMMAND [ARGUMENT ...]")
    return dict(word.split("=", 1) for word in words[:count]), words[count:]


def services_log(environment=os.environ):
    """Opens the file for the output of a session bus and of the services that it starts; run() prints it if the command fails."""
    return open(environment[SERVICES_LOG], "ab")


def run(command, environment):
    """Runs the command and returns its exit status as a shell does."""
    status = subprocess.run(command, env=environment, check=False).returncode
    log = pathlib.Path(environment[SERVICES_LOG])
    if status != 0 and log.exists():
        print(f"The services said:\n{log.read_text(errors='replace')}", file=sys.stderr)
    if status >= 0:
        return status
    print(f"{command[0]} was ended by {signal.Signals(-status).name}", file=sys.stderr)
    return 128 - status


def main():
    given, command = read_arguments()
    with own(given) as environment:
        return run(command, environment)


if __name__ == "__main__":
    sys.exit(main())
