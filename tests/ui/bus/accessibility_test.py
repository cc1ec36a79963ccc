#!/usr/bin/python3
"""Walks the window as a player does who sees nothing of it: accessibility_test.py ZANTOR

The main window while idle, while playing and with the find bar, each tab of the preferences, each sheet and the
keyboard map are read over the accessibility bus and gone through with Tab and Shift+Tab. Runs the window on a
screen of its own; 77 (skipped) where a tool is missing.
"""
import re
import sys

sys.dont_write_bytecode = True
try:
    from accessible_window import (AccessibleProgram, Atspi, GaveUp, Role, State, action_key, describe,
                                   everything_below, has, run_on_a_hidden_screen, wait_for)
except (ImportError, ValueError):  # the bindings, or their description of AT-SPI
    sys.exit(77)

TABS = ["Triggers", "Macros", "Encoding and text", "Speech", "Sound and compression"]
NO_ROLE = {Role.INVALID, Role.UNKNOWN, Role.EXTENDED, Role.FILLER}
MARKUP = re.compile(r"&|</?[a-z]", re.IGNORECASE)
# By then a focus that moves would have moved, on a busy machine too.
STANDS_STILL = 6.0


class Walk:
    """Goes through the program part by part and collects what is wrong."""

    def __init__(self, program):
        self.program = program
        self.faults = []
        self.part = ""

    def fault(self, words):
        self.faults.append(f"{self.part}: {words}")

    def check(self, window, part):
        """Reads all of a window and goes round in it."""
        self.part = part
        # Qt calls the cells of a table shown even while the table itself is not.
        shown = list(everything_below(window, lambda child: has(child, State.SHOWING)))
        self.check_names([element for element in shown if element.get_role() != Role.TABLE_CELL])
        self.check_mnemonics(shown)
        if sum(has(element, State.FOCUSABLE) and element.get_role() != Role.LABEL for element in shown) > 1:
            forth, back = self.cycle("Tab"), self.cycle("shift+Tab")
            if back[:1] + back[:0:-1] != forth:
                self.fault(f"Tab goes {forth}, but Shift+Tab {back}")
        self.check_carets()

    def check_names(self, elements):
        words = [self.called(element) for element in elements if has(element, State.FOCUSABLE)]
        for element in elements:
            if MARKUP.search(element.get_name() + element.get_description()):
                self.fault(f"{describe(element)} is not plain text: {element.get_description()!r}")
            isNamed = element.get_name().strip() and element.get_role() not in NO_ROLE
            if has(element, State.FOCUSABLE) and not (isNamed and words.count(self.called(element)) == 1):
                self.fault(f"{describe(element)} has no name, or no role, or another is called so too")

    @staticmethod
    def called(element):
        """With its label: a choice is named by what is chosen, and two may have the same chosen."""
        labels = [relation.get_target(0).get_name() for relation in element.get_relation_set()
                  if relation.get_relation_type() == Atspi.RelationType.LABELLED_BY]
        return describe(element), *labels

    def check_mnemonics(self, elements):
        bearers = {}
        for element in elements:
            keys = action_key(element).upper()
            if re.fullmatch(r"ALT\+.", keys) and bearers.setdefault(keys, element) is not element:
                self.fault(f"{keys} is for {describe(bearers[keys])} and for {describe(element)}")

    def check_carets(self):
        """A reader takes a field whose caret moves before it has the focus for known, and does not say it."""
        for words in set(self.program.early_carets):
            self.fault(f"{words} tells of its caret before it tells of the focus")
        self.program.early_carets.clear()

    def cycle(self, key):
        """The stops from here until the focus comes back."""
        visited = [self.program.stop()]
        while True:
            try:
                now = self.program.press_and_follow(key, STANDS_STILL)
            except GaveUp:  # there is only one, or it keeps the focus
                now = visited[-1]
            if now in visited:
                break
            visited.append(now)
        if now != visited[0]:
            self.fault(f"{key} goes from {visited[-1]} to {now}")
        return visited

    def open(self, title, keys):
        """Opens a window; returns it and what had the focus before."""
        opener = self.program.stop()
        self.program.press(keys)
        return self.program.wait_for_window(title), opener

    def leave(self, opener, key="Escape"):
        """Until the focus is back."""
        self.program.press(key)
        wait_for(lambda: self.program.stop()[0] == opener[0], f"the focus on {opener} after {self.part}", STANDS_STILL)

    def dialog(self, title, keys):
        """A window that Escape closes."""
        window, opener = self.open(title, keys)
        self.check(window, title)
        self.leave(opener)


def add_macro(walk):
    """A group with a macro, through the window, and all that is shown on the way."""
    program = walk.program
    program.press_until("F6", "combo box 'none'")  # the macro group
    program.type("Walks")
    program.press_and_follow("Tab")  # to New group
    walk.dialog("Zantor", keys="space")  # the alert that the group was made
    walk.dialog("Add macro", keys="ctrl+shift+m")
    _, opener = walk.open("Add macro", keys="ctrl+shift+m")
    for text in ("wave", "wave to all"):
        program.type(text)
        program.press_and_follow("Tab")
    walk.leave(opener, "Return")


def narrow_down(walk, title, keys, letters, to_the_filter=()):
    """While the player types into the field above a list, the focus does not seem to leave the field, whatever way
    this Qt tells of it."""
    program = walk.program
    _, opener = walk.open(title, keys)
    for key in to_the_filter:
        program.press_and_follow(key)
    field = program.stop()
    program.type(letters)
    # What the list tells comes a moment after the letters.
    try:
        wait_for(lambda: program.stop() != field, "nothing", limit=1.5)
        walk.fault(f"{title}: the focus seems to go to {program.stop()[1]} while {letters!r} is typed")
    except GaveUp:
        pass
    walk.leave(opener)


def walk_game(walk):
    """What belongs to one game of the list. An editor bears the name of its column, and Escape leaves only it."""
    _, opener = walk.open("Games", keys="ctrl+g")
    walk.dialog("Settings of", keys="alt+s")
    walk.dialog("Open a web address", keys="alt+w")
    walk.part = "a cell of the games"
    walk.program.press("F2")
    wait_for(lambda: describe(walk.program.focused) == "text 'Name'", "the editor of the name")
    walk.check_carets()
    walk.program.press("Escape")
    wait_for(lambda: describe(walk.program.focused).startswith("table "), "the table after Escape")
    walk.leave(opener)


def walk_sheets(walk):
    program = walk.program
    add_macro(walk)
    program.press_until("Tab", "table 'Macro list'")
    walk.dialog("Edit macro", keys="ctrl+e")
    walk.dialog("Games", keys="ctrl+g")
    narrow_down(walk, "Games", "ctrl+g", "bat", to_the_filter=["alt+f"])
    walk_game(walk)
    walk.dialog("Channel history", keys="ctrl+shift+h")
    program.press_and_follow("ctrl+l")
    program.press("ctrl+shift+r")
    program.type("look")
    program.press("Return")
    wait_for(lambda: program.content() == "", "the command line to be sent")
    walk.dialog("Lines I have sent", keys="ctrl+h")
    walk.dialog("Command recorder", keys="ctrl+shift+f")
    _, opener = walk.open("Command recorder", keys="ctrl+shift+k")
    wait_for(lambda: program.stop()[1] == "text 'Name'", "the name of what is kept")
    program.type("stroll")
    program.press("alt+k")
    walk.leave(opener)
    walk.dialog("Kept recordings", keys="ctrl+k")
    walk.dialog("Font of the output", keys="ctrl+shift+o")
    walk.dialog("Open a web address", keys="ctrl+shift+w")
    walk.dialog("Old logs", keys="ctrl+shift+y")
    walk.dialog("Keyboard map", keys="F1")
    narrow_down(walk, "Keyboard map", "F1", "ctrl+k")
    by_menu(walk, "About Zantor", "About Zantor", to_the_menu=["Left"])
    by_menu(walk, "Export triggers", "Export...")
    by_menu(walk, "Import triggers", "Import...")


def by_menu(walk, title, item, to_the_menu=()):
    """A window that has no key."""
    program = walk.program
    opener = program.stop()
    program.press("F10")
    for key in to_the_menu:
        wait_for(lambda: describe(program.focused).startswith("menu item"), "a menu")
        program.press_and_follow(key)
    program.press_until("Down", f"menu item {item!r}")
    program.press("Return")
    walk.check(program.wait_for_window(title), title)
    walk.leave(opener)


def walk_preferences(walk):
    program = walk.program
    window, opener = walk.open("Preferences", keys="ctrl+comma")
    for tab in TABS:
        # The row of tabs is called by the one in front.
        wait_for(lambda: program.stop()[1] == f"page tab list {tab!r}", f"the tab {tab}")
        if tab == "Triggers":
            program.press_and_follow("alt+a")
            program.press("space")
            wait_for(lambda: program.marked == "Active: yes", "the mark that the space bar sets to be told")
        walk.check(window, f"preferences, {tab}")
        for element in everything_below(window, lambda child: has(child, State.SHOWING)):
            if element.get_role() == Role.LABEL and not element.get_relation_set():
                walk.fault(f"a reader says {describe(element)} when the window opens")
        program.press_until("shift+Tab", f"page tab list {tab!r}")
        program.press("ctrl+Tab")
    walk.leave(opener)


def walk_everything(walk):
    program = walk.program
    window = program.wait_for_window("Zantor")
    # A reader that was started by hand is known by what it listens for.
    wait_for(lambda: any(element.get_name() == "Status: Not connected, speech on"
                         for element in everything_below(program.application)), "speech to be on")
    walk.check(window, "main window, not connected")
    opener = program.stop()
    program.press_and_follow("ctrl+f")
    walk.check(window, "main window with the find bar")
    walk.leave(opener)
    program.press("ctrl+shift+d")
    wait_for(lambda: program.stop()[1] == "text 'Command line'", "the demo game")
    walk.check(window, "main window, playing")
    program.press("Prior")
    walk.check(window, "main window, scrolled back")
    program.press("ctrl+End", "F9")
    walk.check(window, "main window, without the side panel")
    program.press("F9", "ctrl+F9")
    walk.check(window, "main window, playing with the fields")
    program.press("ctrl+F9")
    walk_sheets(walk)
    walk_preferences(walk)
    program.press_and_follow("F5")
    wait_for(lambda: any(element.get_name() == "Connect again" for element in
                         everything_below(window, lambda child: has(child, State.SHOWING))), "the button")
    walk.check(window, "main window, after a connection")


def main():
    reader = Atspi.EventListener.new(lambda event: None)
    reader.register("object:property-change:accessible-name")
    program = AccessibleProgram([sys.argv[1]])
    walk = Walk(program)
    try:
        walk_everything(walk)
    except GaveUp as failure:
        walk.fault(str(failure))
    finally:
        program.process.terminate()
        program.process.wait()
    print(*walk.faults, sep="\n")
    return 1 if walk.faults else 0


if __name__ == "__main__":
    run_on_a_hidden_screen(main)
