#!/usr/bin/env python3
"""Plays the tour, and changes the settings with the tool for people.

usage: tools_test.py SPRINGBOARD SETTINGS-TOOL PHONE-TREE
"""
import os
import pathlib
import plistlib
import re
import shutil
import struct
import subprocess
import sys
import tempfile


def check(what, holds):
    if not holds:
        sys.exit(f"FAILED: {what}")
    print("ok:", what)


def run(*words, **options):
    return subprocess.run(words, capture_output=True, text=True, timeout=300, **options)


def try_tour(springboard, tree, folder):
    shutil.copytree(tree, folder / "tour-root")
    played = run(*springboard, "--root", folder / "tour-root", "--tour", folder / "tour", env=os.environ | {"DISPLAY": ""})
    check("the tour ends well and says nothing", (played.returncode, played.stdout, played.stderr) == (0, "", ""))
    pictures = sorted((folder / "tour").glob("*.png"))
    check("it leaves ten pictures", len(pictures) == 10)
    sizes = {struct.unpack(">II", picture.read_bytes()[16:24]) for picture in pictures}
    check("each has the pixels of the screen", sizes == {(640, 1136)})
    check("no two are the same", len({picture.read_bytes() for picture in pictures}) == 10)
    page = (folder / "tour" / "index.html").read_text()
    shown = re.findall(r'<img src="([^"]+)"[^>]*><figcaption>([^<]+)<', page)
    check("its page shows them in order", [name for name, _ in shown] == [picture.name for picture in pictures])
    check("and has a line for each", len({line for _, line in shown}) == 10)


def try_settings(springboard, settings, tree, folder):
    root = folder / "root"
    shutil.copytree(tree, root)
    preferences = root / "User/Library/Preferences/org.solvane.Solvane.plist"

    def tool(*words, stdout=None):
        if stdout:
            with open(stdout, "w") as output:
                return subprocess.run([settings, "--root", root, *words], stdout=output, stderr=subprocess.PIPE, timeout=300)
        return run(settings, "--root", root, *words)

    check("without a name it shows Pal", tool("show").stdout.startswith("Pal"))
    preferences.write_bytes(plistlib.dumps({"Other": 7}, fmt=plistlib.FMT_XML))
    check("it takes a name", tool("name", "Ana Luísa").returncode == 0)
    check("the file has it, and what was there before", plistlib.loads(preferences.read_bytes()) == {"Name": "Ana Luísa", "Other": 7})
    check("nothing half written is left", [file.name for file in preferences.parent.iterdir()] == [preferences.name])
    check("it shows the name", tool("show").stdout == "Ana Luísa\n")

    script = "lock\nshow userName\nsleep 0\n"
    phone = subprocess.Popen([*springboard, "--root", root, "--script", "-"], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    phone.stdin.write(script)
    phone.stdin.flush()
    check("SpringBoard starts with it", phone.stdout.readline() == '"Ana Luísa"\n')
    tool("name", "Eve")
    phone.stdin.write("clock 2014-03-05T08:30:00\nshow userName\nshow dateStatusString()\n")
    phone.stdin.flush()
    check("a new name reaches a running SpringBoard", phone.stdout.readline() == '"Eve"\n')
    check("but not its greetings", phone.stdout.readline() == '"Good morning, Ana Luísa."\n')
    tool("name", "Eve", "--respring")
    phone.stdin.write("show dateStatusString()\nquit\n")
    phone.stdin.flush()
    check("unless it is relaunched", phone.stdout.readline() == '"Good morning, Eve."\n')
    check("which ends well", phone.wait(60) == 0)
    check("it says that nobody is there to relaunch", "no SpringBoard runs" in tool("relaunch").stderr)

    check("it forgets the name", tool("forget").returncode == 0 and plistlib.loads(preferences.read_bytes()) == {"Other": 7})
    (preferences.parent / f"{preferences.name}.4000000").write_bytes(b"half of a list")
    preferences.write_bytes(b"{Name=" + 100_000 * b"(")
    damaged = preferences.read_bytes()
    kept = pathlib.Path(f"{preferences}.damaged-1")
    check("preferences that no phone can read are none", tool("show").stdout.startswith("Pal"))
    replaced = tool("name", "Ana")
    check("and are replaced", replaced.returncode == 0 and plistlib.loads(preferences.read_bytes()) == {"Name": "Ana"})
    check("and kept beside", kept.read_bytes() == damaged and "damaged" in replaced.stderr and kept.name in replaced.stderr)
    check("with what a killed writer left", sorted(file.name for file in preferences.parent.iterdir()) == [preferences.name, kept.name])
    picture = folder / "page.png"
    check("it draws the page", tool("--screenshot", picture, "--screen", "375x667@2").returncode == 0
          and struct.unpack(">II", picture.read_bytes()[16:24]) == (750, 1334))
    wrong = tool("name", b"\xff\xfe")
    check("it refuses a name that is not UTF-8", wrong.returncode == 2 and "UTF-8" in wrong.stderr and "bug-gnustep" not in wrong.stderr)
    check("it says when it cannot print", tool("show", stdout="/dev/full").returncode == 1)
    cells = root / "Library/PreferenceBundles/Solvane.bundle/Solvane.plist"
    for page in (b"", None):
        shipped = cells.read_bytes()
        cells.unlink() if page is None else cells.write_bytes(page)
        lost = tool("show")
        check("it says what a page lacks", lost.returncode == 1 and "no cell Name" in lost.stderr)
        cells.write_bytes(shipped)
    code = cells.with_suffix("")
    shipped = code.read_bytes()
    code.unlink()
    lost = tool("show")
    check("it says that a page has no code", lost.returncode == 1 and "No such file or directory" in lost.stderr)
    code.write_bytes(shipped)
    shutil.rmtree(preferences.parent)
    preferences.parent.write_text("")
    unwritten = tool("name", "Ana")
    check("it says why a file cannot be written", unwritten.returncode == 1 and "Not a directory" in unwritten.stderr)
    for words in (["--root", root], ["--root", root, "name"], ["--root", root, "rename", "Ana"], ["name", "Ana"],
                  ["--root", folder / "nowhere", "show"], ["--root", root, "show", "--respring"],
                  ["--root", root, "--screenshot"], ["--root", root, "show", "--screen", "0x0"]):
        wrong = run(settings, *words)
        check(f"it refuses {len(words)} odd words and says how to use it", wrong.returncode == 2 and "usage:" in wrong.stderr)


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    springboard, settings, tree = (pathlib.Path(word).resolve() for word in sys.argv[1:])
    tree = pathlib.Path(os.environ.get("SOLVANE_PHONE_TREE", tree))
    system = ["--system", os.environ["SOLVANE_SYSTEM"]] if "SOLVANE_SYSTEM" in os.environ else []
    with tempfile.TemporaryDirectory() as name:
        try_tour([springboard, *system], tree, pathlib.Path(name))
        try_settings([springboard, *system], settings, tree, pathlib.Path(name))


main()
