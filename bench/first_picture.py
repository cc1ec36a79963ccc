#!/usr/bin/python3
"""Seconds from the start of a window's program to its first whole picture:
scripts/with-display bench/first_picture.py PROGRAM... [--rounds 20]

With several programs they take turns. The screen is painted in one colour first. A window that is mapped but not
painted still shows that colour, so the picture is whole if no sample of the window has it. Each round has a home of
its own: the first start makes the player's store, the later one finds it.
"""
import argparse
import ctypes
import os
import statistics
import subprocess
import tempfile
import time

X = ctypes.CDLL("libX11.so.6")
X.XOpenDisplay.restype = X.XGetImage.restype = ctypes.c_void_p
X.XGetPixel.restype = X.XDefaultRootWindow.restype = ctypes.c_ulong
EMPTY, ALL_PLANES, Z_PIXMAP, SUBSTRUCTURE, MAP_NOTIFY = 0xFF00FF, 0xFFFFFF, 2, 1 << 19, 19
LIMIT = 20.0


class Screen:
    def __init__(self):
        self.display = ctypes.c_void_p(X.XOpenDisplay(None))
        self.root = ctypes.c_ulong(X.XDefaultRootWindow(self.display))
        X.XSelectInput(self.display, self.root, ctypes.c_long(SUBSTRUCTURE))
        X.XSetWindowBackground(self.display, self.root, ctypes.c_ulong(EMPTY))

    def clear(self):
        X.XClearWindow(self.display, self.root)
        X.XSync(self.display, 1)  # older events are dropped

    def mapped(self):
        """Where the next window that appears stands: its left, top, width and height."""
        event = (ctypes.c_long * 24)()
        while X.XPending(self.display):
            X.XNextEvent(self.display, ctypes.byref(event))
            if event[0] & 0xFFFFFFFF == MAP_NOTIFY:
                place = [ctypes.c_int() for _ in range(4)]
                others = [ctypes.c_uint() for _ in range(3)]
                X.XGetGeometry(self.display, ctypes.c_ulong(event[5]), ctypes.byref(others[0]), *map(ctypes.byref, place),
                               ctypes.byref(others[1]), ctypes.byref(others[2]))
                left, top, width, height = (number.value for number in place)
                if width > 300:
                    return left, top, width, height
        return None

    def is_painted(self, left, top, width, height):
        """Whether none of the samples along a diagonal is empty."""
        image = ctypes.c_void_p(X.XGetImage(self.display, self.root, left, top, width, height,
                                            ctypes.c_ulong(ALL_PLANES), Z_PIXMAP))
        if not image.value:
            return False
        pixels = {X.XGetPixel(image, width * part // 64, height * part // 64) & ALL_PLANES for part in range(1, 64)}
        X.XDestroyImage(image)
        return EMPTY not in pixels


def seconds(screen, program, home):
    screen.clear()
    begin = time.monotonic()
    process = subprocess.Popen([program], env=dict(os.environ, HOME=home, XDG_CONFIG_HOME=home + "/.config"),
                               stderr=subprocess.DEVNULL)
    place = None
    try:
        while time.monotonic() - begin < LIMIT:
            place = place or screen.mapped()
            if place and screen.is_painted(*place):
                return time.monotonic() - begin
        raise SystemExit(f"{program} shows nothing")
    finally:
        process.terminate()
        process.wait()


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("programs", nargs="+")
    parser.add_argument("--rounds", type=int, default=20)
    options = parser.parse_args()
    screen, first, later = Screen(), {}, {}
    for _ in range(options.rounds):
        for program in options.programs:
            with tempfile.TemporaryDirectory() as home:
                first.setdefault(program, []).append(seconds(screen, program, home))
                later.setdefault(program, []).append(seconds(screen, program, home))
    for program in options.programs:
        print(program, *(f"{name}: median {statistics.median(times):.3f} s, least {min(times):.3f} s"
                         for name, times in (("first start", first[program]), ("later", later[program]))), sep="  ")


if __name__ == "__main__":
    main()
