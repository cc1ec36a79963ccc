#!/usr/bin/python3
"""Speech is on from the start for a screen reader that the desktop knows nothing of: reader_by_hand_test.py ZANTOR

Such a reader is known by what it listens for on the accessibility bus. Runs the window on a screen of its own; 77
(skipped) where a tool is missing.
"""
import sys

sys.dont_write_bytecode = True
try:
    from accessible_window import (AccessibleProgram, Atspi, GaveUp, everything_below, run_on_a_hidden_screen,
                                   wait_for)
except (ImportError, ValueError):  # the bindings, or their description of AT-SPI
    sys.exit(77)


def status(program):
    return next((element.get_name() for element in everything_below(program.application)
                 if element.get_name().startswith("Status: ")), "")


def main():
    reader = Atspi.EventListener.new(lambda event: None)
    reader.register("object:property-change:accessible-name")
    program = AccessibleProgram([sys.argv[1]])
    try:
        wait_for(lambda: status(program) == "Status: Not connected, speech on", "speech to be on")
    except GaveUp as failure:
        print(f"{failure}; the window says {status(program)!r}")
        return 1
    finally:
        program.end()
    return 0


if __name__ == "__main__":
    run_on_a_hidden_screen(main)
