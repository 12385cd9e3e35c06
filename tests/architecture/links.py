"""Checks that what the documents show and link to is in the repository: `links.py SOURCE-FOLDER`.

A picture or a link must name a file, or a folder that holds files, that every visitor gets, and a `#place` a heading of it.
"""

import re
import subprocess
import sys
from pathlib import Path

LINK = re.compile(r'\]\(([^)\s]+)[^)]*\)|\b(?:src|href)="([^"]*)"|^\[[^\]]+\]:\s*(\S+)', re.MULTILINE)
ELSEWHERE = re.compile(r"[a-z][a-z0-9+.-]*:|//")
CODE = re.compile(r"^(```|~~~).*?^\1|`[^`\n]+`", re.MULTILINE | re.DOTALL)
HEADING = re.compile(r"^#+\s+(.*?)\s*#*$", re.MULTILINE)
ANCHOR = re.compile(r'\b(?:id|name)="([^"]*)"')


def blanked(match):
    """As many empty lines, so that what follows keeps its line's number."""
    return "\n" * match.group().count("\n")


def places_in(text):
    """The names by which links reach the headings of a document, and the anchors that it sets itself."""
    places = set(ANCHOR.findall(text))
    headings = re.sub(r"^(```|~~~).*?^\1", blanked, text, flags=re.MULTILINE | re.DOTALL)
    for heading in HEADING.findall(headings):
        words = re.sub(r"\[([^\]]*)\]\([^)]*\)|<[^>]*>", r"\1", heading)
        name = re.sub(r"[^\w\- ]", "", words.lower()).replace(" ", "-")
        taken = sum(1 for place in places if re.fullmatch(re.escape(name) + r"(-\d+)?", place))
        places.add(f"{name}-{taken}" if taken else name)
    return places


def shipped_files(root):
    """By their names from the root: what a clone has; without a repository, what lies there."""
    if not (root / ".git").exists():
        return {str(file.relative_to(root)) for file in root.rglob("*") if file.is_file()}
    listing = subprocess.run(["git", "-C", root, "ls-files", "-z"], check=True, stdout=subprocess.PIPE, text=True)
    return set(listing.stdout.split("\0")) - {""}


def fault(root, document, link, shipped):
    if ELSEWHERE.match(link):
        return None
    path, _, place = link.partition("#")
    target = document
    if path:
        target = (root / path.lstrip("/") if path.startswith("/") else document.parent / path).resolve()
    if not target.is_relative_to(root):
        return "leads out of the repository"
    name = str(target.relative_to(root))
    if target != root and name not in shipped and not any(file.startswith(name + "/") for file in shipped):
        return "is in no clone of the repository"
    if place and place not in places_in(target.read_text()):
        return "names no heading"
    return None


def main():
    root = Path(sys.argv[1]).resolve()
    shipped = shipped_files(root)
    count = 0
    failures = 0
    for name in sorted(file for file in shipped if file.endswith(".md")):
        document = root / name
        text = CODE.sub(blanked, document.read_text())
        for match in LINK.finditer(text):
            link = next(group for group in match.groups() if group is not None)
            count += 1
            problem = fault(root, document, link, shipped)
            if problem:
                failures += 1
                print(f"{name}:{text.count(chr(10), 0, match.start()) + 1}: {link} {problem}")
    print(f"{count} links and pictures, {failures} faults")
    sys.exit(0 if count > 0 and failures == 0 else 1)


main()
