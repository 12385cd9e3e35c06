#!/usr/bin/env python3
"""Opens the lock screen's window on a display of its own, works it with mouse and keys, and looks at the pixels.

usage: window_test.py SPRINGBOARD PHONE-TREE
"""
import os
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import time

DISPLAY_SIZE = (1000, 1300)
# The strip of help stands below the phone's screen.
PICTURE_POINTS = (320, 568 + 26)
PATIENCE = 30


class Display:
    """An X server whose picture lies in a file in the format of xwd."""

    def __init__(self, folder):
        self.file = folder / "Xvfb_screen0"
        reading, writing = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-noreset", "-displayfd", str(writing), "-screen", "0", "%dx%dx24" % DISPLAY_SIZE, "-fbdir", str(folder)],
            pass_fds=[writing], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writing)
        # To the end of the line: the server writes it in pieces, and dies of a pipe that is closed too early.
        with os.fdopen(reading) as line:
            self.name = ":" + line.readline().strip()
        # The server may take clients before it has laid out its picture.
        end = time.monotonic() + PATIENCE
        while not (self.file.exists() and self.file.stat().st_size >= 4 * DISPLAY_SIZE[0] * DISPLAY_SIZE[1]):
            if time.monotonic() > end:
                sys.exit("FAILED: the display has a picture")
            time.sleep(0.05)

    def pixels(self):
        data = self.file.read_bytes()
        header = struct.unpack(">25I", data[:100])
        width, height, line, colours = header[4], header[5], header[12], header[19]
        start = header[0] + colours * 12
        return lambda x, y: struct.unpack_from("<I", data, start + y * line + x * 4)[0] & 0xFFFFFF, width, height

    def input(self, *words):
        subprocess.run(["xdotool", *words], env=os.environ | {"DISPLAY": self.name}, check=True)

    def close(self):
        self.server.terminate()
        self.server.wait()


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
        self.display.input("mousemove", *map(str, self.place(160, 300)))
        self.display.input("key", key)

    def click(self, x, y, times=1):
        self.display.input("mousemove", *map(str, self.place(x, y)), "click", "--repeat", str(times), "--delay", "60", "1")

    def wait(self, what, holds):
        end = time.monotonic() + PATIENCE
        while not holds():
            if time.monotonic() > end:
                sys.exit(f"FAILED: {what}")
            time.sleep(0.1)
        print("ok:", what)


def work(window, folder):
    sky = window.colour(160, 147)
    window.press("n")
    window.wait("N brings a notification's icon into the strip", lambda: window.colour(160, 147) != sky)
    with_icon = window.look()

    window.press("h")
    window.wait("H shows the sheet of help", lambda: window.brightness(285, 300) < 120 and window.look() != with_icon)
    window.press("h")
    window.wait("H takes it away", lambda: window.look() == with_icon)

    pane = window.brightness(160, 200)
    window.click(38, 103)
    window.wait("a click on the calendar opens its pane", lambda: window.brightness(160, 140) < pane)
    time.sleep(0.6)
    window.click(38, 103, times=2)
    window.wait("a double click closes it", lambda: window.look() == with_icon)

    window.press("p")
    window.wait("P leaves a picture", (folder / "lockscreen-1.png").exists)

    window.press("s")
    window.wait("S switches the screen off", lambda: window.brightness(160, 40) == 0 and window.brightness(160, 250) == 0)


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    springboard, tree = (pathlib.Path(word).resolve() for word in sys.argv[1:])
    tree = pathlib.Path(os.environ.get("SOLVANE_PHONE_TREE", tree))
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        shutil.copytree(tree, folder / "root")
        display = Display(folder)
        environment = os.environ | {"DISPLAY": display.name, "SDL_VIDEODRIVER": "x11"}
        phone = subprocess.Popen([springboard, "--root", folder / "root"], cwd=folder, env=environment)
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
