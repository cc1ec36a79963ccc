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
    from accessible_window import (AccessibleProgram, GaveUp, Relation, Role, State, action_key, children_of, content,
                                   describe, everything_below, has, related, run_on_a_hidden_screen, shown_below, stop_of,
                                   wait_for)
except (ImportError, ValueError):  # the bindings, or their description of AT-SPI
    sys.exit(77)

TABS = ["Triggers", "Macros", "Encoding", "Speech", "Protocols"]
NO_ROLE = {Role.INVALID, Role.UNKNOWN, Role.EXTENDED}
FIELDS = {Role.TEXT, Role.ENTRY, Role.COMBO_BOX, Role.SPIN_BUTTON, Role.SLIDER, Role.TABLE, Role.LIST}
MARKUP = re.compile(r"&|</?[a-z]", re.IGNORECASE)
# By then a focus that moves would have moved, on a busy machine too.
STANDS_STILL = 6.0
# The output fills its part of the window; the font panel is Qt's and labels the field beside its list of sizes.
WITHOUT_LABEL = {"text 'Output'", "list 'Size'"}
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
        self.stops = 0
        self.part = ""

    def fault(self, words):
        self.faults.append(f"{self.part}: {words}")

    def check(self, window, part):
        """Reads all of a window and goes round in it."""
        self.part = part
        shown = list(shown_below(window))
        focusable = [element for element in shown if has(element, State.FOCUSABLE)]
        self.check_names(everything_below(window))
        self.check_focusable(focusable)
        self.check_labels(shown)
        self.check_mnemonics(shown)
        self.go_round(window, focusable)
        self.check_carets()

    def check_names(self, elements):
        for element in elements:
            if element.get_role() == Role.TABLE_CELL:  # the player's own words
                continue
            name, description = element.get_name(), element.get_description()
            for text in (name, description):
                if MARKUP.search(text):
                    self.fault(f"{describe(element)} is not plain text: {text!r}")
            if name and name in description:
                self.fault(f"{describe(element)} is said twice: {description!r}")

    def check_focusable(self, elements):
        names = set()
        for element in elements:
            role, name = element.get_role(), element.get_name()
            if not name.strip():
                self.fault(f"a {element.get_role_name()} without a name")
            if role in NO_ROLE:
                self.fault(f"{name!r} has the role {element.get_role_name()}")
            if role != Role.TABLE_CELL and (role, name) in names:
                self.fault(f"two are called {describe(element)}")
            names.add((role, name))

    def check_labels(self, shown):
        labels = {field.path: label.get_name() for label in shown for field in related(label, Relation.LABEL_FOR)}
        for field in shown:
            if field.get_role() not in FIELDS or not has(field, State.FOCUSABLE) or stop_of(field).key != field.path:
                continue
            if describe(field) in WITHOUT_LABEL | WITHOUT_FOCUS:
                continue
            # Qt gives tables and lists no relation of their own.
            isBound = related(field, Relation.LABELLED_BY) or field.get_role() in (Role.TABLE, Role.LIST)
            if not isBound or field.path not in labels:
                self.fault(f"no label belongs to {describe(field)}")
            # A box is called by what it holds.
            elif field.get_role() != Role.COMBO_BOX and labels[field.path] not in field.get_name():
                self.fault(f"{describe(field)} has the label {labels[field.path]!r}")

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

    def go_round(self, window, focusable):
        expected = {stop_of(element) for element in focusable if is_tab_stop(element)}
        if not expected:
            self.fault("nothing in it can have the focus")
        self.stops += len(expected)
        if len(expected) < 2:
            return
        forth = self.cycle("Tab", len(expected))
        for stop in expected.difference(forth):
            self.fault(f"Tab does not come to {stop.words}")
        for stop in set(forth).difference(expected):
            self.fault(f"Tab comes to {stop.words}, which is no stop")
        back = self.cycle("shift+Tab", len(expected))
        if back[:1] + back[:0:-1] != forth:
            self.fault(f"Shift+Tab goes another way: {', '.join(stop.words for stop in back)}")

    def cycle(self, key, count):
        """The stops from here until the focus comes back."""
        visited = [self.program.stop()]
        while (now := self.program.press_and_follow(key, STANDS_STILL)) != visited[0]:
            if now is None:
                self.fault(f"{key} does not leave {visited[-1].words}")
                break
            if now in visited:
                self.fault(f"{key} comes back to {now.words} and never to {visited[0].words}")
                break
            visited.append(now)
        return visited

    def open(self, title, keys=None, item=None):
        """Opens a window with keys or an item of a menu; returns it and what had the focus before."""
        self.part = title
        opener = self.program.stop()
        if item is not None:
            self.program.choose(item)
        else:
            self.program.press(keys)
        return self.program.wait_for_window(title), opener

    def expect_focus(self, stop, when):
        try:
            wait_for(lambda: self.program.stop() == stop, "the focus", STANDS_STILL)
        except GaveUp:
            self.fault(f"{when} the focus is on {self.program.stop().words} and not on {stop.words}")

    def leave(self, title, opener, key="Escape"):
        self.program.press(key)
        self.program.wait_until_gone(title)
        self.expect_focus(opener, f"after {key}")

    def dialog(self, title, keys=None, item=None, holds=None):
        """A window that Escape closes; with something of a name in it."""
        window, opener = self.open(title, keys, item)
        self.check(window, title)
        if holds is not None and not any(element.get_name() == holds for element in shown_below(window)):
            self.fault(f"nothing in it is called {holds!r}")
        self.leave(title, opener)

    def find_bar(self, window):
        opener = self.program.stop()
        self.program.press_and_follow("ctrl+f")
        self.check(window, "main window with the find bar")
        self.program.press("Escape")
        self.expect_focus(opener, "after Escape in the find bar")


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
    walk.leave("Add Macro", opener, "Return")


def look_into_the_group(walk):
    walk.part = "the open list of macro groups"
    walk.program.press_and_follow("shift+Tab")
    walk.program.press("F4")
    walk.check_focusable([walk.program.wait_for_role(Role.LIST)])
    walk.program.press("Escape")
    walk.program.wait_for_role(Role.COMBO_BOX)


def edit_a_cell(walk):
    """What is edited bears the name of its column, and Escape leaves the cell and not the sheet."""
    _, opener = walk.open("Games", keys="ctrl+g")
    walk.part = "a cell of the games"
    walk.program.press("F2")
    editor = walk.program.wait_for_role(Role.TEXT)
    if editor.get_name() != "Name":
        walk.fault(f"is edited in {describe(editor)}")
    walk.check_carets()
    walk.program.press("Escape")
    walk.program.wait_for_role(Role.TABLE, Role.TABLE_CELL)
    walk.leave("Games", opener)


def walk_sheets(walk):
    program = walk.program
    add_macro(walk)
    look_into_the_group(walk)
    program.press_until("Tab", "table 'Macro list'")
    walk.dialog("Edit Macro", keys="ctrl+e")
    walk.dialog("Games", keys="ctrl+g")
    edit_a_cell(walk)
    program.press_and_follow("ctrl+l")
    program.press("ctrl+shift+r")
    program.type("look")
    program.press("Return")
    wait_for(lambda: content(program.focused) == "", "the command line to be sent")
    walk.dialog("Command Recorder", keys="ctrl+shift+f", holds="look")
    walk.dialog("Select Font", keys="ctrl+shift+t")


def walk_help(walk):
    walk.dialog("First steps", item="First steps")
    walk.dialog("Keyboard map", keys="F1")
    walk.dialog("About Zantor", item="About Zantor")


def walk_radio_buttons(walk, window):
    """The arrows go through a group, one after the other and back."""
    buttons = [element for element in shown_below(window) if element.get_role() == Role.RADIO_BUTTON]
    walk.program.press_until("Tab", "the radio buttons of 'Characters of the game'")
    for key, order in (("Down", buttons[1:]), ("Up", buttons[-2::-1])):
        for button in order:
            walk.program.press(key)
            wait_for(lambda: walk.program.focused.path == button.path, f"{key} to go to {describe(button)}")


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
        if tab == "Encoding":
            walk_radio_buttons(walk, window)
        program.press_until("shift+Tab", f"page tab list {tab!r}")
        program.press("ctrl+Tab")
    walk.leave("Preferences", opener)


def connect_to_nothing(walk):
    """Without an address the button leads to the field for it."""
    walk.part = "connecting without an address"
    walk.program.press_until("Tab", "push button 'Connect'")
    walk.program.press_and_follow("space")
    if walk.program.stop().words != "text 'Address'":
        walk.fault(f"the focus goes to {walk.program.stop().words}")


def leave_the_game(walk):
    """The command line goes; the focus stays with what was said last."""
    walk.part = "the end of the game"
    walk.program.press("ctrl+l")
    wait_for(lambda: walk.program.stop().words == "text 'Command line'", "the command line")
    walk.program.press_and_follow("F5")
    if walk.program.stop().words != "text 'Output'":
        walk.fault(f"the focus goes to {walk.program.stop().words}")


def walk_everything(walk):
    program = walk.program
    window = program.wait_for_window("Zantor")
    walk.check(window, "main window, not connected")
    walk.find_bar(window)
    connect_to_nothing(walk)
    program.press("ctrl+shift+d")
    wait_for(lambda: program.stop().words == "text 'Command line'", "the demo game")
    walk.check(window, "main window, playing")
    walk_sheets(walk)
    walk_help(walk)
    walk_preferences(walk)
    leave_the_game(walk)


def main():
    program = AccessibleProgram([sys.argv[1]])
    walk = Walk(program)
    try:
        walk_everything(walk)
    except GaveUp as failure:
        walk.fault(str(failure))
    finally:
        program.end()
    for fault in walk.faults:
        print(fault)
    print(f"{walk.stops} stops of Tab, {len(walk.faults)} faults")
    return 1 if walk.faults else 0


if __name__ == "__main__":
    run_on_a_hidden_screen(main)
