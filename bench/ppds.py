"""PPD files of the sizes of real ones, for printers that know Tandem Trim: ppds.py FOLDER writes them all."""

import itertools
import pathlib
import re
import sys

SAMPLE = pathlib.Path(__file__).resolve().parents[1] / "resources/sample/MorvaTandemKV2.ppd"

# The contents of a PPD, by its size in kilobytes, beyond those of the sample: about as many of each as in PPDs of printers
# on the market. Translations fill the rest of the size.
PROFILES = {
    30: {"options": 6, "choices": 6, "sizes": 14, "constraints": 100},
    80: {"options": 16, "choices": 7, "sizes": 18, "constraints": 800},
    190: {"options": 38, "choices": 7, "sizes": 22, "constraints": 1800},
    640: {"options": 50, "choices": 8, "sizes": 80, "constraints": 5000},
}
SMALLEST = 2
OPTIONS_OF_A_GROUP = 12
LANGUAGES = ("de", "fr", "es", "it", "nl", "ja", "zh_CN", "zh_TW", "ko", "pt", "sv", "da", "no", "fi", "pl", "cs", "hu", "ru", "tr", "ar")


def smallest(sample):
    """The sample with the fewest choices that its options and limits need, and without comments and optional lines."""
    without = r"\*%|\*OrderDependency|\*(?:PageSize|PageRegion|ImageableArea|PaperDimension) (?!A4)"
    without += r"|\*MV\w+Margin (?!(?:0|5|20)/)|\*Font (?!Courier:)|\*(?:1284DeviceID|Throughput|TTRasterizer|Landscape)"
    return "".join(line for line in sample.splitlines(True) if line.strip() and not re.match(without, line))


def option_names(profile):
    return [f"Option{number:03}" for number in range(profile["options"])]


def option(name, choices, order):
    lines = [
        f"*OpenUI *{name}/{name} of the printer: PickOne",
        f"*OrderDependency: {order} AnySetup *{name}",
        f"*Default{name}: Choice0",
    ]
    lines += [f'*{name} Choice{number}/Choice {number}: "<</{name} {number}>>setpagedevice"' for number in range(choices)]
    return lines + [f"*CloseUI: *{name}", ""]


def groups(profile):
    lines = []
    names = option_names(profile)
    for number, start in enumerate(range(0, len(names), OPTIONS_OF_A_GROUP)):
        lines.append(f"*OpenGroup: Group{number}/Group {number}")
        for order, name in enumerate(names[start : start + OPTIONS_OF_A_GROUP], start + 100):
            lines += option(name, profile["choices"], order)
        lines += [f"*CloseGroup: Group{number}", ""]
    return lines


def sizes(keyword, profile):
    """Additional lines of one of the four keywords that list all paper sizes."""
    value = {
        "PageSize": "<</PageSize[{0} {1}]/ImagingBBox null>>setpagedevice",
        "PageRegion": "<</PageSize[{0} {1}]/ImagingBBox null>>setpagedevice",
        "ImageableArea": "12 12 {2} {3}",
        "PaperDimension": "{0} {1}",
    }[keyword]
    dimensions = [(300 + 7 * number, 420 + 9 * number) for number in range(profile["sizes"])]
    return [
        f'*{keyword} w{width}h{height}/Size {number}: "{value.format(width, height, width - 12, height - 12)}"'
        for number, (width, height) in enumerate(dimensions)
    ]


def constraints(profile):
    pairs = itertools.combinations(option_names(profile), 2)
    choices = itertools.cycle(range(1, profile["choices"]))
    lines = []
    for (one, other), choice in zip(itertools.cycle(list(pairs)), choices):
        if len(lines) >= profile["constraints"]:
            return lines
        lines += [f"*UIConstraints: *{one} Choice{choice} *{other} Choice{choice}"]
        lines += [f"*UIConstraints: *{other} Choice{choice} *{one} Choice{choice}"]


def translations(profile):
    """Lines with the choices in one language after the other."""
    for language in LANGUAGES:
        for name in option_names(profile):
            yield f'*{language}.Translation {name}/{name}, {language}: ""'
            for number in range(profile["choices"]):
                yield f'*{language}.{name} Choice{number}/Choice {number} of {name}, {language}: ""'


def enlarged(sample, kilobytes):
    profile = PROFILES[kilobytes]
    text = sample
    for keyword in ("PageSize", "PageRegion", "ImageableArea", "PaperDimension"):
        last = max(match.end() for match in re.finditer(rf"^\*{keyword} .*\n", text, re.MULTILINE))
        text = text[:last] + "".join(line + "\n" for line in sizes(keyword, profile)) + text[last:]
    text += "".join(line + "\n" for line in groups(profile) + constraints(profile))
    for line in translations(profile):
        if len(text) + len(line) >= kilobytes * 1024:
            break
        text += line + "\n"
    return text


def write_all(folder):
    """Writes the files into the folder and returns their paths by the size in kilobytes, the smallest first."""
    sample = SAMPLE.read_text(encoding="ascii")
    texts = {SMALLEST: smallest(sample)} | {kilobytes: enlarged(sample, kilobytes) for kilobytes in PROFILES}
    folder.mkdir(parents=True, exist_ok=True)
    paths = {}
    for kilobytes, text in texts.items():
        paths[kilobytes] = folder / f"{kilobytes}KB.ppd"
        paths[kilobytes].write_text(text, encoding="ascii")
    return paths


if __name__ == "__main__":
    for written in write_all(pathlib.Path(sys.argv[1])).values():
        print(written)
