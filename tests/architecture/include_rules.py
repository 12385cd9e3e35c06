"""Checks who includes whom: `include_rules.py SOURCE-FOLDER`.

The rules are those that docs/architecture.md draws: the arrows of the library, and the table of the simulator's folders.
"""

import re
import sys
from pathlib import Path

FREESTANDING = {"cstddef", "cstdint", "type_traits", "concepts", "limits", "bit"}

SOURCES = {".cpp", ".hpp", ".S"}

ARROW = re.compile(r"^(\w+) +→ +(?:(\w+)|\{ (\w+(?:, \w+)*) \})", re.MULTILINE)
ROOM = re.compile(r"^\| `(/?\w+)/` \|", re.MULTILINE)
INCLUDE = re.compile(r'\s*#\s*(?:include|import)\s*([<"])([^>"]+)[>"]')
CONDITION = re.compile(r"\s*#\s*(?:if|ifdef|ifndef|elif|else|endif)\b")


def part_of(document, heading):
    return document.split(f"\n## {heading}\n")[1].split("\n## ")[0]


def library_rules(document):
    """What each folder of the library, and platform, may include besides itself."""
    arrows = {"platform": set()}
    for folder, one, several in ARROW.findall(part_of(document, "Who may include whom")):
        arrows.setdefault(folder, {"platform"}).update(several.split(", ") if several else [one])
    for folder in set().union(*arrows.values()):
        arrows.setdefault(folder, {"platform"})
    return arrows


def simulator_rules(document):
    """The same for each folder of the table: those that it names before it. A name that begins with / is not the simulator's."""
    rooms = [room[1:] if room.startswith("/") else f"simulator/{room}" for room in ROOM.findall(part_of(document, "The simulator"))]
    return {room: {"platform", *rooms[:storey]} for storey, room in enumerate(rooms)}


def folder_of(path):
    """The folder that the rules know: of the simulator, one of its rooms."""
    steps = Path(path).parts
    return "/".join(steps[: 2 if steps[0] == "simulator" else 1])


def include_fault(folder, allowed, bracket, path):
    if bracket == '"':
        return None if folder_of(path) in allowed | {folder} else f"is not for {folder}/"
    if folder.startswith(("simulator/", "tools")) or path in FREESTANDING:
        return None
    return "is no free-standing header"


def faults_in(source, folder, allowed):
    for number, line in enumerate(source.read_text().splitlines(), 1):
        include = INCLUDE.match(line)
        if include:
            fault = include_fault(folder, allowed, *include.groups())
            if fault:
                yield number, f"{include.group(2)} {fault}"
        elif folder != "platform" and CONDITION.match(line):
            yield number, "the source is the same everywhere: what is for one processor is a file of its own"


def main():
    root = Path(sys.argv[1])
    document = (root / "docs/architecture.md").read_text()
    rules = library_rules(document) | simulator_rules(document)
    failures = 0

    rooms = {f"simulator/{folder.name}" for folder in (root / "simulator").iterdir() if folder.is_dir()}
    for folder in sorted(rooms ^ {folder for folder in rules if folder.startswith("simulator/")}):
        failures += 1
        print(f"{folder}: is not both a folder and in the table of docs/architecture.md")

    count = 0
    for folder, allowed in rules.items():
        for source in sorted(path for path in (root / folder).rglob("*") if path.suffix in SOURCES):
            count += 1
            for number, fault in faults_in(source, folder, allowed):
                failures += 1
                print(f"{source.relative_to(root)}:{number}: {fault}")
    print(f"{len(rules)} folders, {count} files, {failures} faults")
    sys.exit(0 if count > 0 and failures == 0 else 1)


main()
