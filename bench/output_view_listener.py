#!/usr/bin/python3
"""Runs zantor_view_bench with a listener on the accessibility bus, as a screen reader would be one.

Usage: scripts/with-display bench/output_view_listener.py build/release/bench/zantor_view_bench [LINES]
"""
import os
import subprocess
import sys

import pyatspi
from gi.repository import GLib

heard = {"events": 0, "characters": 0}


def on_inserted(event):
    heard["events"] += 1
    heard["characters"] += event.detail2


def look(program):
    if program.poll() is None:
        return True
    pyatspi.Registry.stop()
    return False


pyatspi.Registry.registerEventListener(on_inserted, "object:text-changed:insert")
bench = subprocess.Popen(sys.argv[1:], env=dict(os.environ, ZANTOR_LISTENER="1"))
GLib.timeout_add(200, look, bench)
pyatspi.Registry.start()
print(f"the listener heard {heard['events']} insertions, {heard['characters']} characters")
sys.exit(bench.returncode)
