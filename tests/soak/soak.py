#!/usr/bin/env python3
"""A phone that goes on for weeks, in minutes: says what it has in use at the beginning and at the end, and what was lost.

usage: soak.py SPRINGBOARD NOTIFYPOST BUILD-FOLDER PHONE-TREE [--commands N] [--relaunches N] [--posts N] [--posters N]

Without an option: 100000 commands, 1000 relaunches, 10000 posts by 12 posters. Ends with status 1 when memory, objects
or descriptors grow, a post was neither delivered nor reported, or a relaunch took longer than ten seconds.
"""
import argparse
import concurrent.futures
import json
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

# What is made at some time and kept: pages of the allocator, texts in caches.
MOST_GROWTH_KIB = 2048
MOST_GROWTH_OBJECTS = 50
MEASURES = 40

ROUND = [
    "clock 2014-03-05T08:{minute:02}:00", "weather {number} 26", "notify com.apple.MobileSMS Ana \"Message {number}\"",
    "notify --person Mira com.apple.mobilemail Mira \"Letter {number}\"", "notify org.solvane.ferry Ferry", "card pass.{number} Ferry",
    "alert Battery \"{number}% left\"", "layout", "tap notificationIconView", "show controller._listItems.count", "swipe widgetView left",
    "tap calendarIconView", "send widgetView.cal goOneMonthForward", "tap calendarIconView", "modify 0 Ana \"Again {number}\"",
    "remove 0", "screen off", "screen on", "let label send UILabel alloc", "let label send label initWithFrame: 0,0,200,40",
    "send label setText: \"Text {number}\"", "add label 60,300", "tree label", "send label removeFromSuperview",
    "log", "clear", "show headlineLabel.text",
]
SELDOM = {7: ["lock"], 11: ["name Name{number}", "post loadSolvaneS"], 13: ["screenshot {folder}/picture.png"], 17: ["teardown", "lock"]}


class Springboard:
    def __init__(self, program, root, build, folder):
        self.census = folder / "census"
        environment = os.environ | {"LD_PRELOAD": str(build / "tests/object_census.so"), "OBJECT_CENSUS": str(self.census)}
        self.process = subprocess.Popen(
            [program, "--root", root, "--load", build / "tests/counting_library.dylib", "--script", "-"], stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, text=True, env=environment)

    def type(self, lines):
        self.process.stdin.write("".join(line + "\n" for line in lines))
        self.process.stdin.flush()

    def ask(self, line):
        """The answer to a command that prints one line; what was printed before it is passed over."""
        self.type([line, "show NSObject"])
        answer = None
        while (printed := self.process.stdout.readline()) != '"NSObject"\n':
            if not printed:
                sys.exit("FAILED: springboard has ended")
            answer = printed
        return json.loads(answer)

    def in_use(self):
        """Kibibytes, objects, descriptors."""
        self.ask("system")
        self.census.unlink(missing_ok=True)
        self.process.send_signal(signal.SIGUSR1)
        deadline = time.monotonic() + 60
        while not self.census.exists() and time.monotonic() < deadline:
            time.sleep(0.01)
        folder = pathlib.Path(f"/proc/{self.process.pid}")
        status = dict(line.split(":", 1) for line in (folder / "status").read_text().splitlines())
        return int(status["VmRSS"].split()[0]), int(self.census.read_text()), len(list((folder / "fd").iterdir()))

    def end(self):
        self.process.stdin.close()
        return self.process.wait(120)


def told(what, first, last):
    print(f"{what}: {first[0]} KiB, {first[1]} objects, {first[2]} descriptors before; "
          f"{last[0]} KiB, {last[1]} objects, {last[2]} descriptors after", flush=True)
    return last[0] <= first[0] + MOST_GROWTH_KIB and last[1] <= first[1] + MOST_GROWTH_OBJECTS and last[2] <= first[2]


def commands(springboard, count, folder):
    springboard.type(["lock"])
    done = number = 0
    # Pictures come and go, so that what is in use goes up and down: the most of the first half, and of the second.
    halves = [(0, 0, 0), (0, 0, 0)]
    measured = 0
    while done < count:
        number += 1
        lines = [line for period, more in SELDOM.items() if number % (5 * period) == 0 for line in more] + ROUND
        lines = [line.format(number=number % 1000, minute=number % 60, folder=folder) for line in lines]
        springboard.ask("\n".join([*lines, "system"]))
        done += len(lines)
        if done >= (measured + 1) * count // MEASURES:
            measured += 1
            springboard.ask("\n".join(["lock", "system"]))
            half = 0 if measured <= MEASURES // 2 else 1
            halves[half] = tuple(map(max, halves[half], springboard.in_use()))
    return told(f"{done} commands, the most of each half", *halves)


def relaunches(springboard, count):
    longest = 0.0
    first = None
    for i in range(count):
        begun = time.monotonic()
        springboard.type(["post RespringSV"])
        springboard.ask("show morningString")
        longest = max(longest, time.monotonic() - begun)
        if i + 1 == max(1, count // 10):
            first = springboard.in_use()
    print(f"{count} relaunches: the longest took {longest:.1f} s", flush=True)
    return told(f"{count} relaunches", first, springboard.in_use()) and longest < 10


def posts(springboard, program, root, count, posters):
    def post(_):
        done = subprocess.run([program, "--root", root, "org.solvane.soak"], capture_output=True, text=True, timeout=120)
        return done.returncode == 0 and not done.stderr

    springboard.ask("log")
    first = springboard.in_use()
    with concurrent.futures.ThreadPoolExecutor(posters) as pool:
        outcomes = list(pool.map(post, range(count)))
    delivered = sum(line.endswith("org.solvane.soak") for line in springboard.ask("log"))
    said = sum(outcomes)
    print(f"{count} posts by {posters} posters: {delivered} delivered, {count - said} reported as not", flush=True)
    return told(f"{count} posts", first, springboard.in_use()) and delivered == said


def main():
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("paths", nargs=4, type=lambda word: pathlib.Path(word).resolve())
    for option, count in (("commands", 100_000), ("relaunches", 1000), ("posts", 10_000), ("posters", 12)):
        parser.add_argument(f"--{option}", type=int, default=count)
    chosen = parser.parse_args()
    springboard_program, notifypost, build, tree = chosen.paths
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        root = folder / "root"
        shutil.copytree(tree, root)
        springboard = Springboard(springboard_program, root, build, folder)
        held = [not chosen.commands or commands(springboard, chosen.commands, folder),
                not chosen.posts or posts(springboard, notifypost, root, chosen.posts, chosen.posters),
                not chosen.relaunches or relaunches(springboard, chosen.relaunches)]
        ended = springboard.end()
    print("all flat, nothing lost" if all(held) and ended == 0 else f"FAILED: {held}, status {ended}")
    sys.exit(not all(held) or ended != 0)


main()
