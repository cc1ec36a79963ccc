"""A program's windows as a screen reader knows them, over AT-SPI, and a keyboard to press keys on.

Nothing here sleeps for a fixed time: what is waited for is asked again until it holds or its limit is over. Every
key is waited for, since Qt hands keys to the accessibility bus before it looks at them itself, but does what a
shortcut says at once: a shortcut overtakes what was typed before it, and with Alt its own Alt.
"""
import os
import shutil
import subprocess
import sys
import time

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402 (the version comes first)

Role, State = Atspi.Role, Atspi.StateType
# For a machine that is busy with other tests.
LIMIT = 20.0
# One stop of Tab each, whatever in them has the focus.
COMPOSITES = {Role.TABLE, Role.COMBO_BOX, Role.PAGE_TAB_LIST, Role.SPIN_BUTTON, Role.LIST, Role.TREE}
WINDOWS = {Role.FRAME, Role.DIALOG, Role.ALERT, Role.APPLICATION}
MOST_CHILDREN = 400


def run_on_a_hidden_screen(main):
    """Ends the calling script with what `main` returns on a screen and buses of its own, where the script is started
    again for it; skipped where a tool is missing."""
    if not all(shutil.which(tool) for tool in ("Xvfb", "dbus-run-session", "xdotool")):
        sys.exit(77)  # skipped, as ctest is told
    if "--here" in sys.argv:
        sys.exit(main())
    wrapper = os.path.join(os.path.dirname(os.path.abspath(__file__)), *[".."] * 3, "scripts", "with-display")
    sys.exit(subprocess.call([wrapper, os.path.abspath(sys.argv[0]), *sys.argv[1:], "--here"]))


class GaveUp(Exception):
    """What was waited for did not come."""


def wait_for(question, what, limit=LIMIT):
    """The first answer that is not empty; events are taken in meanwhile."""
    end = time.monotonic() + limit
    while time.monotonic() < end:
        while GLib.MainContext.default().iteration(False):
            pass
        try:
            if answer := question():
                return answer
        except (AttributeError, GLib.Error):  # an element that is gone, or has not come
            pass
        time.sleep(0.01)
    raise GaveUp(f"waited in vain for {what}")


def everything_below(element, isWanted=lambda child: True):
    """Also below what is wanted only."""
    for index in range(min(element.get_child_count(), MOST_CHILDREN)):
        child = element.get_child_at_index(index)
        if child is not None and isWanted(child):
            yield child
            yield from everything_below(child, isWanted)


def has(element, state):
    return element.get_state_set().contains(state)


def describe(element):
    return f"{element.get_role_name()} {element.get_name()!r}"


def action_key(element):
    """The keys of what the element does first, such as "Alt+C"; empty where it has none."""
    try:
        return element.get_key_binding(0) if element.get_n_actions() > 0 else ""
    except GLib.Error:
        return ""


def up_to_window(element):
    """The element and all above it, the window last."""
    chain = [element]
    while chain[-1].get_role() not in WINDOWS:
        chain.append(chain[-1].get_parent())
    return chain


class AccessibleProgram:
    """A running program with its windows and its focus."""

    def __init__(self, command):
        Atspi.set_timeout(int(LIMIT * 1000), int(LIMIT * 1000))
        self.focused = None
        self.early_carets = []
        self.marked = None
        self.listener = Atspi.EventListener.new(self._heard)
        for event in ("state-changed:focused", "text-caret-moved", "state-changed:checked"):
            self.listener.register("object:" + event)
        self.process = subprocess.Popen(command)
        self.application = wait_for(self._find, "the program on the accessibility bus")

    def _find(self):
        return next((application for application in everything_below(Atspi.get_desktop(0))
                     if application.get_process_id() == self.process.pid), None)

    def _heard(self, event):
        try:
            if event.source.get_process_id() != self.process.pid:
                return
            if event.type == "object:text-caret-moved":
                if self._is_too_early(event.source):
                    self.early_carets.append(describe(event.source))
            elif event.type.startswith("object:state-changed:checked"):
                self.marked = event.source.get_name()
            elif event.detail1 == 1:
                self.focused = event.source
        except GLib.Error:
            pass

    def _is_too_early(self, field):
        """Whether a field announces its caret while the focus is known to be elsewhere in its window."""
        focused = self.focused  # may change while the bus is asked
        if focused is None or not has(field, State.FOCUSED):
            return False
        if up_to_window(field)[-1].path != up_to_window(focused)[-1].path:
            return False
        parent = field.get_parent()  # the line of a box is not told of itself
        return focused.path not in (field.path, parent.path if parent.get_role() == Role.COMBO_BOX else "")

    def wait_for_window(self, title):
        """The window whose title begins so, once it has the focus."""
        def found():
            window = up_to_window(self.focused)[-1]
            return window if window.get_name().startswith(title) else None
        return wait_for(found, f"the focus in {title!r}")

    def stop(self):
        """Where the focus is, as one thing that Tab goes to: its path and what it is called."""
        focused = self.focused  # another one may be told while the bus is asked about this one
        try:
            chain = up_to_window(focused)[:-1]
            outermost = next((each for each in reversed(chain) if each.get_role() in COMPOSITES), focused)
            return outermost.path, describe(outermost)
        except GLib.Error:
            return "", "something that is gone"

    def press(self, *keys):
        subprocess.check_call(["xdotool", "key", *keys])

    def type(self, text):
        """Into a field that is empty or selected."""
        subprocess.check_call(["xdotool", "type", text])
        wait_for(lambda: self.content() == text, f"{text!r} in {self.stop()[1]}")

    def content(self):
        """What stands in the field that has the focus."""
        focused = self.focused
        try:
            return Atspi.Text.get_text(focused, 0, Atspi.Text.get_character_count(focused))
        except GLib.Error:
            return focused.get_name()  # a box is called by what it holds

    def press_until(self, key, words, most=60):
        """Again and again, until the focus is on what is called so."""
        for _ in range(most):
            if self.stop()[1] == words:
                return
            self.press_and_follow(key)
        raise GaveUp(f"{key} does not come to {words}")

    def press_and_follow(self, key, limit=LIMIT):
        """The stop that the focus goes to."""
        before = self.stop()[0]
        self.press(key)
        return wait_for(lambda: (now := self.stop())[0] != before and now, f"{key} from {before}", limit)
