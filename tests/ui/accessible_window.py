"""A program's windows as a screen reader knows them, over AT-SPI, and a keyboard to press keys on.

Nothing here sleeps for a fixed time: what is waited for is asked again until it holds or its limit is over. Every
key is waited for, since Qt hands keys to the accessibility bus before it looks at them itself, but does what a
shortcut says at once: a shortcut overtakes what was typed before it, and with Alt its own Alt.
"""
import dataclasses
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
    wrapper = os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "..", "scripts", "with-display")
    sys.exit(subprocess.call([wrapper, os.path.abspath(sys.argv[0]), *sys.argv[1:], "--here"]))


class GaveUp(Exception):
    """What was waited for did not come."""


def wait_for(question, what, limit=LIMIT):
    """The first answer that is not empty; events are taken in meanwhile."""
    events = GLib.MainContext.default()
    end = time.monotonic() + limit
    while True:
        while events.iteration(False):
            pass
        answer = question()
        if answer:
            return answer
        if time.monotonic() > end:
            raise GaveUp(f"waited in vain for {what}")
        time.sleep(0.01)


def children_of(element):
    try:
        children = [element.get_child_at_index(index)
                    for index in range(min(element.get_child_count(), MOST_CHILDREN))]
    except GLib.Error:  # it went away meanwhile
        return []
    return [child for child in children if child is not None]


def everything_below(element):
    for child in children_of(element):
        yield child
        yield from everything_below(child)


def shown_below(element):
    """Qt calls the cells of a table shown even while the table itself is not."""
    for child in children_of(element):
        if has(child, State.SHOWING):
            yield child
            yield from shown_below(child)


def has(element, *states):
    now = element.get_state_set()
    return all(now.contains(state) for state in states)


def describe(element):
    return f"{element.get_role_name()} {element.get_name()!r}"


def content(element):
    """What stands in a field."""
    try:
        return Atspi.Text.get_text(element, 0, Atspi.Text.get_character_count(element))
    except GLib.Error:
        return element.get_name()  # a box is called by what it holds


def action_key(element):
    """The keys of what the element does first, such as "Alt+C"; empty where it has none."""
    try:
        return element.get_key_binding(0) if element.get_n_actions() > 0 else ""
    except GLib.Error:
        return ""


def window_of(element):
    while element.get_role() not in WINDOWS:
        element = element.get_parent()
    return element


@dataclasses.dataclass(frozen=True)
class Stop:
    """What Tab goes to as one thing."""

    key: str
    words: str = dataclasses.field(compare=False)  # a box is called by what it holds, which changes


def stop_of(element):
    """The outermost composite around the element, or its group of radio buttons, or the element itself."""
    if element.get_role() == Role.RADIO_BUTTON:
        group = element.get_parent()
        return Stop("in " + group.path, f"the radio buttons of {group.get_name()!r}")
    outermost, above = element, element
    while above is not None and above.get_role() not in WINDOWS:
        if above.get_role() in COMPOSITES:
            outermost = above
        above = above.get_parent()
    return Stop(outermost.path, describe(outermost))


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

    def end(self):
        self.process.terminate()
        self.process.wait(LIMIT)

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
        if self.focused is None or not has(field, State.FOCUSED):
            return False
        if window_of(field).path != window_of(self.focused).path:
            return False
        parent = field.get_parent()  # the line of a box is not told of itself
        return self.focused.path not in (field.path, parent.path if parent.get_role() == Role.COMBO_BOX else "")

    def _find(self):
        return next((application for application in children_of(Atspi.get_desktop(0))
                     if application.get_process_id() == self.process.pid), None)

    def wait_for_window(self, title):
        """The window whose title begins so, once it has the focus."""
        def found():
            try:
                window = window_of(self.focused)
            except (AttributeError, GLib.Error):
                return None
            return window if window.get_name().startswith(title) else None
        return wait_for(found, f"the focus in {title!r}")

    def stop(self):
        """Where the focus is."""
        try:
            return stop_of(self.focused)
        except GLib.Error:
            return Stop("", "something that is gone")

    def press(self, *keys):
        subprocess.check_call(["xdotool", "key", *keys])

    def type(self, text):
        """Into a field that is empty or selected."""
        subprocess.check_call(["xdotool", "type", text])
        wait_for(lambda: content(self.focused) == text, f"{text!r} in {self.stop().words}")

    def press_until(self, key, words, most=60):
        """Again and again, until the focus is on what is called so."""
        for _ in range(most):
            if self.stop().words == words:
                return
            self.press_and_follow(key)
        raise GaveUp(f"{key} does not come to {words}")

    def press_and_follow(self, key, limit=LIMIT):
        """The stop that the focus goes to; None where it stays."""
        before = self.stop()
        self.press(key)
        try:
            return wait_for(lambda: (now := self.stop()) != before and now, key, limit)
        except GaveUp:
            return None
