"""A display of a test's own."""
import contextlib
import ctypes
import os
import struct
import subprocess
import sys
import time

SIZE = (1000, 1300)
PATIENCE = 120

Window = ctypes.c_ulong


class ButtonEvent(ctypes.Structure):
    """XButtonEvent, as large as any XEvent."""
    _fields_ = [("type", ctypes.c_int), ("serial", ctypes.c_ulong), ("send_event", ctypes.c_int), ("display", ctypes.c_void_p),
                ("window", Window), ("root", Window), ("subwindow", Window), ("time", ctypes.c_ulong),
                ("x", ctypes.c_int), ("y", ctypes.c_int), ("x_root", ctypes.c_int), ("y_root", ctypes.c_int),
                ("state", ctypes.c_uint), ("button", ctypes.c_uint), ("same_screen", ctypes.c_int),
                ("padding", ctypes.c_long * 10)]


# Each kind of event with the mask that asks for it.
PRESS, RELEASE = (4, 1 << 2), (5, 1 << 3)

xlib = ctypes.CDLL("libX11.so.6")
xlib.XOpenDisplay.argtypes, xlib.XOpenDisplay.restype = [ctypes.c_char_p], ctypes.c_void_p
for function in (xlib.XGrabServer, xlib.XUngrabServer, xlib.XFlush, xlib.XCloseDisplay):
    function.argtypes = [ctypes.c_void_p]
xlib.XSync.argtypes = [ctypes.c_void_p, ctypes.c_int]
xlib.XSendEvent.argtypes = [ctypes.c_void_p, Window, ctypes.c_int, ctypes.c_long, ctypes.POINTER(ButtonEvent)]


class Display:
    """An X server whose picture lies in a file in the format of xwd. A key that is held does not repeat, however long it takes
    until it is let go."""

    def __init__(self, folder):
        self.file = folder / "Xvfb_screen0"
        reading, writing = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-noreset", "-r", "-displayfd", str(writing), "-screen", "0", "%dx%dx24" % SIZE, "-fbdir", str(folder)],
            pass_fds=[writing], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        os.close(writing)
        # To the end of the line: the server writes it in pieces, and dies of a pipe that is closed too early.
        with os.fdopen(reading) as line:
            self.name = ":" + line.readline().strip()
        # The server may take clients before it has laid out its picture.
        wait("the display has a picture", lambda: self.file.exists() and self.file.stat().st_size >= 4 * SIZE[0] * SIZE[1])
        self.connection = xlib.XOpenDisplay(self.name.encode())
        if not self.connection:
            sys.exit("FAILED: the display takes a client")

    @contextlib.contextmanager
    def standing_still(self):
        """Serves nobody else meanwhile, so that no picture is seen half drawn."""
        xlib.XGrabServer(self.connection)
        xlib.XSync(self.connection, False)
        try:
            yield
        finally:
            xlib.XUngrabServer(self.connection)
            xlib.XFlush(self.connection)

    def pixels(self):
        with self.standing_still():
            data = self.file.read_bytes()
        header = struct.unpack(">25I", data[:100])
        width, height, line, colours = header[4], header[5], header[12], header[19]
        start = header[0] + colours * 12
        return lambda x, y: struct.unpack_from("<I", data, start + y * line + x * 4)[0] & 0xFFFFFF, width, height

    def input(self, *words):
        """Has xdotool work the mouse or the keys, and gives what it prints."""
        return subprocess.run(["xdotool", *words], env=os.environ | {"DISPLAY": self.name}, check=True,
                              stdout=subprocess.PIPE, text=True).stdout

    def click_at(self, x, y, times):
        """One click for each time, in the order in which they are sent. A time is what the mouse's events bear: milliseconds of
        now(), whenever they arrive."""
        place = self.input("mousemove", str(x), str(y), "getmouselocation", "--shell")
        window = int(dict(line.split("=") for line in place.split())["WINDOW"])
        for moment in times:
            for kind, mask in (PRESS, RELEASE):
                event = ButtonEvent(type=kind, window=window, time=moment, button=1, same_screen=True)
                xlib.XSendEvent(self.connection, window, True, mask, event)
        xlib.XSync(self.connection, False)

    def now(self):
        """The time that the server gives to what happens now, in milliseconds."""
        return time.monotonic_ns() // 1_000_000 & 0xFFFFFFFF

    def close(self):
        xlib.XCloseDisplay(self.connection)
        self.server.terminate()
        self.server.wait()


def wait(what, holds):
    """Ends the test when that does not come to hold."""
    end = time.monotonic() + PATIENCE
    while not holds():
        if time.monotonic() > end:
            sys.exit(f"FAILED: {what}")
        time.sleep(0.05)
