#!/usr/bin/python3
"""Walks the window as a player does who sees nothing of it: accessibility_test.py ZANTOR

The main window while idle, while playing and with the find bar, each tab of the preferences, each sheet and each
page of help is read over the accessibility bus and gone through with Tab and Shift+Tab. Runs the window on a
screen of its own; 77 (skipped) where a tool is missing.
"""
import re
import sys

sys.dont_write_bytecode = True
try:
    from accessible_window import (AccessibleProgram, Atspi, GaveUp, Role, State, action_key, children_of, content,
                                   describe, everything_below, has, run_on_a_hidden_screen, shown_below, stop_of, wait_for)
except (ImportError, ValueError):  # the bindings, or their description of AT-SPI
    sys.exit(77)

TABS = ["Triggers", "Macros", "Encoding", "Speech", "Protocols"]
NO_ROLE = {Role.INVALID, Role.UNKNOWN, Role.EXTENDED}
MARKUP = re.compile(r"&|</?[a-z]", re.IGNORECASE)
# By then a focus that moves would have moved, on a busy machine too.
STANDS_STILL = 6.0
# The font panel's fields leave the focus to the lists below them.
WITHOUT_FOCUS = {"text 'Font'", "text 'Font style'", "text 'Size'"}


def is_tab_stop(element):
    """Whether Tab may be expected to come here, of what can have the focus."""
    if not has(element, State.ENABLED) or describe(element) in WITHOUT_FOCUS:
        return False
    above = element.get_parent()
    if element.get_role() == Role.LABEL and above.get_role() == Role.ALERT:
        return False  # for the mouse to select; a reader says it when the alert opens
    # Tabs with their pages hand the focus on to the row of tabs.
    return not any(child.get_role() == Role.PAGE_TAB_LIST for child in children_of(element))


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
        shown = list(shown_below(window))
        focusable = [element for element in shown if has(element, State.FOCUSABLE)]
        self.check_texts(everything_below(window))
        self.check_focusable(focusable)
        self.check_mnemonics(shown)
        self.go_round(focusable)
        self.check_carets()

    def check_texts(self, elements):
        for element in elements:
            isPlayers = element.get_role() == Role.TABLE_CELL
            if not isPlayers and MARKUP.search(element.get_name() + element.get_description()):
                self.fault(f"{describe(element)} is not plain text: {element.get_description()!r}")

    def check_focusable(self, elements):
        words = [describe(element) for element in elements if element.get_role() != Role.TABLE_CELL]
        for element in elements:
            if not element.get_name().strip() or element.get_role() in NO_ROLE or words.count(describe(element)) > 1:
                self.fault(f"{describe(element)} has no name, or no role, or another is called so too")

    def check_mnemonics(self, elements):
        bearers = {}
        for element in elements:
            keys = action_key(element).upper()
            if re.fullmatch(r"ALT\+.", keys) and bearers.setdefault(keys, element) is not element:
                self.fault(f"{keys} is for {describe(bearers[keys])} and for {describe(element)}")

    def check_carets(self):
        """A reader takes a field whose caret moves before it has the focus for known, and does not say it."""
        for words in self.program.early_carets:
            if words not in WITHOUT_FOCUS:
                self.fault(f"{words} tells of its caret before it tells of the focus")
        self.program.early_carets.clear()

    def go_round(self, focusable):
        expected = {stop_of(element) for element in focusable if is_tab_stop(element)}
        if len(expected) < 2:
            return
        forth = self.cycle("Tab")
        for stop in expected.symmetric_difference(forth):
            self.fault(f"{'Tab does not come to' if stop in expected else 'no stop, but Tab comes to'} {stop.words}")
        back = self.cycle("shift+Tab")
        if back[:1] + back[:0:-1] != forth:
            self.fault(f"Shift+Tab goes another way: {', '.join(stop.words for stop in back)}")

    def cycle(self, key):
        """The stops from here until the focus comes back."""
        visited = [self.program.stop()]
        while (now := self.program.press_and_follow(key, STANDS_STILL)) != visited[0]:
            if now is None or now in visited:
                self.fault(f"{key} goes from {visited[-1].words} to {now and now.words}")
                break
            visited.append(now)
        return visited

    def open(self, title, keys):
        """Opens a window; returns it and what had the focus before."""
        opener = self.program.stop()
        self.program.press(keys)
        return self.program.wait_for_window(title), opener

    def leave(self, opener, key="Escape"):
        """Until the focus is back."""
        self.program.press(key)
        wait_for(lambda: self.program.stop() == opener, f"the focus on {opener.words} after {self.part}", STANDS_STILL)

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
    walk.dialog("Macro Group Created", keys="space")
    walk.dialog("Add Macro", keys="ctrl+shift+m")
    _, opener = walk.open("Add Macro", keys="ctrl+shift+m")
    program.type("wave")
    program.press_and_follow("Tab")
    program.type("wave to all")
    program.press_and_follow("Tab")
    walk.leave(opener, "Return")


def edit_a_cell(walk):
    """What is edited bears the name of its column, and Escape leaves the cell and not the sheet."""
    _, opener = walk.open("Games", keys="ctrl+g")
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
    walk.dialog("Edit Macro", keys="ctrl+e")
    walk.dialog("Games", keys="ctrl+g")
    edit_a_cell(walk)
    program.press_and_follow("ctrl+l")
    program.press("ctrl+shift+r")
    program.type("look")
    program.press("Return")
    wait_for(lambda: content(program.focused) == "", "the command line to be sent")
    walk.dialog("Command Recorder", keys="ctrl+shift+f")
    walk.dialog("Select Font", keys="ctrl+shift+t")


def walk_preferences(walk):
    program = walk.program
    window, opener = walk.open("Preferences", keys="ctrl+comma")
    for tab in TABS:
        # The row of tabs is called by the one in front.
        wait_for(lambda: program.stop().words == f"page tab list {tab!r}", f"the tab {tab}")
        if tab == "Triggers":
            program.press_and_follow("alt+a")
            program.press("space")
            wait_for(lambda: program.marked == "Active: yes", "the mark that the space bar sets to be told")
        walk.check(window, f"preferences, {tab}")
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
    wait_for(lambda: program.stop().words == "text 'Command line'", "the demo game")
    walk.check(window, "main window, playing")
    walk_sheets(walk)
    walk.dialog("Keyboard map", keys="F1")
    walk_preferences(walk)


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
        program.end()
    print(*walk.faults, sep="\n")
    return 1 if walk.faults else 0


if __name__ == "__main__":
    run_on_a_hidden_screen(main)
