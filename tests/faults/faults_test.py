#!/usr/bin/env python3
"""Takes from a phone what it stands on, one thing at a time: it works, or says what is wrong and ends cleanly.

usage: faults_test.py root|calls SPRINGBOARD SETTINGS-TOOL FAILING-CALLS PHONE-TREE [--all]

  root    each file and folder of the phone's tree in turn is missing, empty, unreadable, of the other kind,
          a pipe, a link to itself
  calls   the n-th allocation, open, read, write, rename, mmap fails (support/failing_calls.cpp)
  --all   tries everything instead of a sample; of the allocations, two thousand
"""
import concurrent.futures
import os
import pathlib
import plistlib
import shutil
import subprocess
import sys
import tempfile

MOST_SECONDS = 120
PREFERENCES = "User/Library/Preferences/org.solvane.Solvane.plist"
SCRIPT = """clock 2014-03-05T08:30:00
lock
notify com.apple.MobileSMS Ana "Are you coming?"
screenshot {folder}/before.png
name Ana
post loadSolvaneS
post RespringSV
show morningString
screenshot {folder}/after.png
"""
NOBODY = 65534


class Phone:
    """A phone's tree of its own, and what a run on it gave."""

    def __init__(self, tree, folder):
        self.folder = pathlib.Path(folder)
        self.folder.chmod(0o755)
        self.root = self.folder / "root"
        shutil.copytree(tree, self.root)
        (self.root / PREFERENCES).write_bytes(plistlib.dumps({"Kept": 7}, fmt=plistlib.FMT_BINARY))
        self.script = self.folder / "script.txt"
        self.script.write_text(SCRIPT.format(folder=self.folder))

    def run(self, words, **more):
        """Gives a complaint; none when the program worked, or said what is wrong and ended cleanly."""
        try:
            done = subprocess.run(words, capture_output=True, timeout=MOST_SECONDS, cwd=self.folder, **more)
        except subprocess.TimeoutExpired:
            return f"it did not end within {MOST_SECONDS} seconds"
        said = done.stderr.decode(errors="replace").strip()
        if done.returncode < 0:
            return f"ended by signal {-done.returncode}: {said}"
        if done.returncode not in (0, 1, 2) or "AddressSanitizer" in said or "runtime error:" in said:
            return f"ended with status {done.returncode}: {said}"
        if done.returncode != 0 and not said:
            return f"ended with status {done.returncode} without a word"
        return None


def halved(phone):
    """What was half written; none if nothing was."""
    for picture in phone.folder.glob("*.png"):
        if not picture.read_bytes().endswith(b"IEND\xaeB`\x82"):
            return f"{picture.name} is half a picture"
    try:
        settings = plistlib.loads((phone.root / PREFERENCES).read_bytes())
    except (OSError, ValueError) as problem:
        return f"the settings are damaged: {problem}"
    if settings not in ({"Kept": 7}, {"Kept": 7, "Name": "Ana"}):
        return f"the settings are neither the old ones nor the new ones: {settings}"
    return None


def spoil_by_removing(path):
    shutil.rmtree(path) if path.is_dir() else path.unlink()


def spoil_by_emptying(path):
    if path.is_dir():
        shutil.rmtree(path)
        path.mkdir()
    else:
        path.write_bytes(b"")


def spoil_by_forbidding(path):
    path.chmod(0)


def spoil_by_swapping(path):
    was_folder = path.is_dir()
    spoil_by_removing(path)
    path.write_bytes(b"") if was_folder else path.mkdir()


def spoil_by_piping(path):
    spoil_by_removing(path)
    os.mkfifo(path)


def spoil_by_looping(path):
    spoil_by_removing(path)
    path.symlink_to(path.name)


SPOILERS = {
    "missing": spoil_by_removing, "empty": spoil_by_emptying, "unreadable": spoil_by_forbidding, "of the other kind": spoil_by_swapping,
    "a pipe": spoil_by_piping, "a link to itself": spoil_by_looping,
}


def as_nobody(words, folder):
    """Nothing is unreadable to root: the options that have somebody else run the program; none when that is not possible."""
    if os.geteuid() != 0:
        return {}
    who = {"user": NOBODY, "group": NOBODY, "extra_groups": []}
    try:
        tried = subprocess.run([*words, "--version"], capture_output=True, cwd=folder, timeout=MOST_SECONDS, **who)
    except OSError:
        return None
    return who if tried.returncode == 0 else None


def try_root(springboard, tree, name, state):
    with tempfile.TemporaryDirectory() as folder:
        phone = Phone(tree, folder)
        more = {}
        if state == "unreadable":
            for path in [phone.folder, *phone.folder.rglob("*")]:
                os.chown(path, NOBODY if os.geteuid() == 0 else os.geteuid(), -1)
            more = as_nobody(springboard, folder)
            if more is None:
                return f"{name} is {state}", None
        SPOILERS[state](phone.root / name)
        complaint = phone.run([*springboard, "--root", phone.root, "--script", phone.script], **more)
        if state == "unreadable":
            (phone.root / name).chmod(0o755)
        return f"{name} is {state}", complaint


def try_call(words, tree, failing_calls, kind, number, image):
    with tempfile.TemporaryDirectory() as folder:
        phone = Phone(tree, folder)
        failure = {"LD_PRELOAD": str(failing_calls), "FAILING_CALL": f"{kind}:{number}", "FAILING_IMAGE": str(image)}
        complaint = phone.run(words(phone), env=os.environ | failure)
        return f"{kind} {number} fails in process image {image} of {words(phone)[0].name}", complaint or halved(phone)


def calls_of(words, tree, failing_calls):
    """How many calls of each kind each process image makes."""
    with tempfile.TemporaryDirectory() as folder:
        phone = Phone(tree, folder)
        counts = phone.folder / "counts"
        count = {"LD_PRELOAD": str(failing_calls), "CALL_COUNTS": str(counts)}
        complaint = phone.run(words(phone), env=os.environ | count)
        if complaint:
            sys.exit(f"FAILED: nothing fails, and yet: {complaint}")
        pairs = [line.split() for line in counts.read_text().splitlines()]
    images = []
    for kind, number in pairs:
        if not images or kind in images[-1]:
            images.append({})
        images[-1][kind] = int(number)
    return images


def spread(most, count):
    """So many numbers from 1 to `most`, closer together at the beginning, where programs start."""
    if most <= count:
        return range(1, most + 1)
    return sorted({max(1, round(most ** (i / (count - 1)))) for i in range(count)} | {most * i // count for i in range(1, count + 1)})


def main():
    words = [word for word in sys.argv[1:] if word != "--all"]
    if len(words) != 5 or words[0] not in ("root", "calls"):
        sys.exit(__doc__)
    tries_all = "--all" in sys.argv
    springboard, settings, failing_calls, tree = (pathlib.Path(word).resolve() for word in words[1:])
    tree = pathlib.Path(os.environ.get("SOLVANE_PHONE_TREE", tree))
    system = ["--system", os.environ["SOLVANE_SYSTEM"]] if "SOLVANE_SYSTEM" in os.environ else []

    tasks = []
    if words[0] == "root":
        names = sorted(str(path.relative_to(tree)) for path in tree.rglob("*"))
        cases = [(name, state) for name in names for state in SPOILERS]
        # Seven is prime to the number of states, so that the sample has all of them.
        for name, state in cases if tries_all else cases[::7]:
            tasks.append((try_root, [springboard, *system], tree, name, state))
    else:
        def phone_words(phone):
            return [springboard, *system, "--root", phone.root, "--script", phone.script]

        def settings_words(phone):
            return [settings, "--root", phone.root, "name", "Ana"]

        for program in (phone_words, settings_words):
            for image, counts in enumerate(calls_of(program, tree, failing_calls), 1):
                for kind, number in counts.items():
                    most = 3 if not tries_all else 500 if kind == "allocation" else number
                    for n in spread(number, most):
                        tasks.append((try_call, program, tree, failing_calls, kind, n, image))

    failed = 0
    with concurrent.futures.ThreadPoolExecutor(max_workers=4 if tries_all else 2) as pool:
        for task in concurrent.futures.as_completed([pool.submit(*task) for task in tasks]):
            what, complaint = task.result()
            if complaint:
                failed += 1
                print(f"FAILED: {what}: {complaint}", flush=True)
    print(f"{len(tasks)} cases, {failed} failed")
    sys.exit(failed != 0 or not tasks)


main()
