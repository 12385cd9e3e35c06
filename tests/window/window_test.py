#!/usr/bin/env python3
"""Opens the lock screen's window on a display of its own, works it with mouse and keys, and looks at the pixels.

usage: window_test.py SPRINGBOARD PHONE-TREE
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

from display import PATIENCE, Display, wait

# The strip of help stands below the phone's screen.
PICTURE_POINTS = (320, 568 + 26)


class WindowOfThePhone:
    def __init__(self, display):
        self.display = display
        self.wait("the window opens", lambda: self.bounds() is not None)
        self.frame = self.bounds()

    def bounds(self):
        """What is not the bare, black display."""
        pixel, width, height = self.display.pixels()
        columns = [x for x in range(0, width) if pixel(x, height // 2)]
        rows = [y for y in range(0, height) if columns and pixel(columns[len(columns) // 2], y)]
        return (columns[0], rows[0], columns[-1] + 1, rows[-1] + 1) if rows else None

    def place(self, x, y):
        left, top, right, bottom = self.frame
        return (round(left + (right - left) * x / PICTURE_POINTS[0]), round(top + (bottom - top) * y / PICTURE_POINTS[1]))

    def colour(self, x, y):
        return self.display.pixels()[0](*self.place(x, y))

    def brightness(self, x, y):
        value = self.colour(x, y)
        return (value >> 16) + (value >> 8 & 0xFF) + (value & 0xFF)

    def look(self):
        """Enough of the picture to see whether it has changed."""
        pixel = self.display.pixels()[0]
        return [pixel(*self.place(x, y)) for x in range(4, 320, 8) for y in range(4, 568, 8)]

    def press(self, key):
        self.display.input("mousemove", *map(str, self.place(160, 300)), "key", key)

    def click(self, x, y):
        self.display.input("mousemove", *map(str, self.place(x, y)), "click", "1")

    def click_at(self, x, y, *times):
        self.display.click_at(*self.place(x, y), times)

    def drag(self, start, end):
        self.display.input("mousemove", *map(str, self.place(*start)), "mousedown", "1",
                           "mousemove", *map(str, self.place(*end)))

    def let_go(self):
        self.display.input("mouseup", "1")

    def wait(self, what, holds):
        wait(what, holds)
        print("ok:", what, flush=True)

    def has_answered(self, look):
        """Whether it looks like that when it has answered all that has been sent so far: it takes the keys after that."""
        self.press("h")
        wait("H shows the sheet of help", lambda: self.brightness(285, 300) < 120 and self.look() != look)
        self.press("h")
        wait("H takes the sheet of help away", lambda: self.look() == look)
        return True


def work(window, folder):
    before = window.look()
    window.press("t")
    window.wait("T goes on by three hours, and the clock stands still", lambda: window.look() != before)

    sky = window.colour(160, 147)
    window.press("n")
    window.wait("N brings a notification's icon into the strip", lambda: window.colour(160, 147) != sky)
    with_icon = window.look()

    window.press("h")
    window.wait("H shows the sheet of help", lambda: window.brightness(285, 300) < 120 and window.look() != with_icon)
    window.press("h")
    window.wait("H takes it away", lambda: window.look() == with_icon)

    calendar = (38, 103)
    pane = window.brightness(160, 200)
    window.click(*calendar)
    window.wait("a click on the calendar opens its pane", lambda: window.brightness(160, 140) < pane)
    with_pane = window.look()

    # What is a double click hangs on when the clicks were made, not on when they arrive.
    time = window.display.now() + 1000
    window.click_at(*calendar, time, time + 60)
    window.wait("a double click closes it", lambda: window.look() == with_icon)
    time += 1000
    window.click_at(*calendar, time)
    window.wait("a click opens it again", lambda: window.look() == with_pane)
    time += 1000
    window.click_at(*calendar, time, time + 1000)
    window.wait("two clicks that arrive together and were made a second apart leave it open",
                lambda: window.has_answered(with_pane))
    time += 2000
    window.click_at(*calendar, time)
    window.has_answered(with_pane)
    window.click_at(*calendar, time + 60)
    window.wait("a double click that arrives slowly closes it", lambda: window.look() == with_icon)

    window.click(282, 103)
    window.wait("a click on the bell opens the list", lambda: window.look() != with_icon)
    with_list = window.look()
    window.drag((160, 300), (160, 420))
    window.wait("a finger draws the list down", lambda: window.look() != with_list)
    window.let_go()
    window.wait("the list comes back by itself when it is let go", lambda: window.look() == with_list)

    window.press("p")
    window.wait("P leaves a picture", (folder / "lockscreen-1.png").exists)

    window.press("s")
    window.wait("S switches the screen off", lambda: window.brightness(160, 40) == 0 and window.brightness(160, 250) == 0)


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    springboard, tree = (pathlib.Path(word).resolve() for word in sys.argv[1:])
    tree = pathlib.Path(os.environ.get("SOLVANE_PHONE_TREE", tree))
    system = ["--system", os.environ["SOLVANE_SYSTEM"]] if "SOLVANE_SYSTEM" in os.environ else []
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        shutil.copytree(tree, folder / "root")
        display = Display(folder)
        environment = os.environ | {"DISPLAY": display.name, "SDL_VIDEODRIVER": "x11", "SDL_RENDER_DRIVER": "software"}
        phone = subprocess.Popen([springboard, *system, "--root", folder / "root"], cwd=folder, env=environment)
        try:
            window = WindowOfThePhone(display)
            work(window, folder)
            display.input("key", "q")
            if phone.wait(PATIENCE) != 0:
                sys.exit("FAILED: Q closes the window with status 0")
            print("ok: Q closes the window")
        finally:
            phone.kill()
            display.close()


main()
