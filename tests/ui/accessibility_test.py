#!/usr/bin/python3
"""Walks the window as a screen reader does: accessibility_test.py ZANTOR

Everything that can have the focus must have a name and a role, in the main window, in each sheet and in each
tab of the preferences. Runs the window on a screen of its own; 77 (skipped) where the bindings are missing.
"""
import os
import subprocess
import sys
import time

UNNAMED_ROLES = {"invalid", "unknown", "extended"}
# The parts of the window, the keys that open each, and a name that only this part holds.
SHEETS = [("ctrl+g", "Games"), ("ctrl+shift+f", "Command Recorder"), ("F1", "Keyboard map")]
TABS = ["Triggers", "Macros", "Encoding", "Speech", "Protocols"]


def again_on_a_hidden_screen():
    here = os.path.dirname(os.path.abspath(__file__))
    wrapper = os.path.join(here, "..", "..", "scripts", "with-display")
    return subprocess.call([wrapper, os.path.abspath(__file__), sys.argv[1], "--here"])


def everything_below(element):
    try:
        children = [element.getChildAtIndex(index) for index in range(min(element.childCount, 400))]
    except Exception:  # it went away meanwhile
        return
    for child in children:
        if child is not None:
            yield child
            yield from everything_below(child)


def wait_for(question, what, seconds=20):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        answer = question()
        if answer:
            return answer
        time.sleep(0.1)
    raise SystemExit(f"waited in vain for {what}")


def main():
    try:
        import pyatspi
    except ImportError:
        return 77
    faults = []
    seen = set()

    def application():
        for app in pyatspi.Registry.getDesktop(0):
            if app is not None and app.name == "Zantor":
                return app
        return None

    def window_named(name):
        app = application()
        return next((frame for frame in app or [] if frame is not None and frame.name.startswith(name)
                     and frame.getState().contains(pyatspi.STATE_SHOWING)), None)

    def check(frame, part):
        focusable = 0
        for element in everything_below(frame):
            states = element.getState()
            if not states.contains(pyatspi.STATE_FOCUSABLE) or not states.contains(pyatspi.STATE_SHOWING):
                continue
            focusable += 1
            seen.add(element.name)
            role = element.getRoleName()
            if not element.name:
                faults.append(f"{part}: a {role} without a name")
            if role in UNNAMED_ROLES:
                faults.append(f"{part}: {element.name!r} has the role {role}")
        if focusable < 2:
            faults.append(f"{part}: only {focusable} elements can have the focus, so this looked at nothing")

    def press(*keys):
        subprocess.check_call(["xdotool", "key", *keys])

    def focus(name):
        found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", f"^{name}"], check=True,
                               capture_output=True, text=True).stdout.split()
        subprocess.check_call(["xdotool", "windowfocus", "--sync", found[-1]])

    program = subprocess.Popen([sys.argv[1]])
    try:
        main_window = wait_for(lambda: window_named("Zantor"), "the main window")
        check(main_window, "main window")
        for name in ("Name", "Address", "Port", "Connect", "Output", "Northwest", "Macro group", "Status"):
            if name not in {element.name for element in everything_below(main_window)}:
                faults.append(f"main window: nothing is called {name}")
        for keys, title in SHEETS:
            focus("Zantor")
            press(keys)
            check(wait_for(lambda: window_named(title), title), title)
            focus(title)
            press("Escape")
            wait_for(lambda: window_named(title) is None, f"{title} to close")
        focus("Zantor")
        press("ctrl+comma")
        preferences = wait_for(lambda: window_named("Preferences"), "the preferences")
        focus("Preferences")
        for tab in TABS:
            # The page of the tab in front bears its name and shows.
            wait_for(lambda: any(element.name == tab and element.getRoleName() != "page tab"
                                 and element.getState().contains(pyatspi.STATE_SHOWING)
                                 for element in everything_below(preferences)), f"the tab {tab}")
            check(preferences, f"preferences, {tab}")
            press("ctrl+Tab")
            time.sleep(0.3)
    finally:
        program.terminate()
        program.wait(10)
    for fault in faults:
        print(fault)
    print(f"{len(seen)} names, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main() if "--here" in sys.argv else again_on_a_hidden_screen())
