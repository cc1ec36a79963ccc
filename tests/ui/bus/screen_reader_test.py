#!/usr/bin/python3
"""What is spoken to a blind player: a real Orca on a screen and buses of its own, and a speech service that records.

Usage: screen_reader_test.py PROBE. Exits 77 (skipped) where a tool is missing.
"""

import itertools
import os
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time

sys.dont_write_bytecode = True
try:
    from accessible_window import run_on_a_hidden_screen
except (ImportError, ValueError):  # the bindings, or their description of AT-SPI
    sys.exit(77)

OURS = ":zantor:"
MARKUP = re.compile("<[^>]*>")  # Orca marks the words
ANSWERS = {"LIST": ("249-recording\ten\tnone", "249 OK LIST SENT"), "GET": ("251-0", "251 OK GET RETURNED"),
           "HISTORY": ("245-1", "245 OK CLIENT ID SENT")}


class RecordingService(threading.Thread):
    """Answers SSIP on a Unix socket; every text takes no time to say."""

    def __init__(self, path):
        super().__init__(daemon=True)
        self.listener = socket.socket(socket.AF_UNIX)
        self.listener.bind(path)
        self.listener.listen(8)
        self.said = []  # (client's name, text)
        self.numbers = itertools.count(1)

    def run(self):
        while True:
            client, _ = self.listener.accept()
            threading.Thread(target=self.serve, args=(client,), daemon=True).start()

    def serve(self, client):
        name = ""
        lines = (line.rstrip("\r\n") for line in client.makefile("r", encoding="utf-8", newline="\r\n"))

        def send(*answer):
            client.sendall("".join(line + "\r\n" for line in answer).encode())

        for line in lines:
            verb = line.upper().partition(" ")[0]
            if "CLIENT_NAME" in line:
                name = line.split()[-1]
            if verb == "SPEAK":
                send("230 OK RECEIVING DATA")
                body = "\n".join(text.removeprefix(".") for text in iter(lambda: next(lines), "."))
                self.say(name, body, send)
            elif verb in ("CHAR", "KEY", "SOUND_ICON"):
                self.say(name, line, send)
            else:
                send(*ANSWERS.get(verb, ["200 OK"]))

    def say(self, name, text, send):
        self.said.append((name, MARKUP.sub("", text)))
        number = next(self.numbers)
        send(f"225-{number}", "225 OK MESSAGE QUEUED")
        for code, event in ((701, "BEGIN"), (702, "END")):
            send(f"{code}-{number}", f"{code}-1", f"{code} {event}")


def until(condition, seconds=60):
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        if condition():
            return True
        time.sleep(0.05)
    return False


class Probe:
    def __init__(self, program):
        self.process = subprocess.Popen([program], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True, bufsize=1)

    def tell(self, *commands):
        self.process.stdin.write("".join(command + "\n" for command in commands))
        self.process.stdin.flush()

    def state(self):
        self.tell("state")
        return self.process.stdout.readline().strip()

    def comes_to(self, state, seconds=60):
        return until(lambda: self.state() == state, seconds)

    def end(self):
        self.process.stdin.close()
        self.process.wait(10)


LISTENER = """
import gi
gi.require_version("Atspi", "2.0")
from gi.repository import Atspi
Atspi.EventListener.new(lambda event: print(event.any_data, flush=True)).register("object:announcement")
Atspi.event_main()
"""


def check_announcements(probe, service):
    """No such reader is at hand: a listener of ours wants announcements, as Orca does from 45.2."""
    listener = subprocess.Popen(["/usr/bin/python3", "-c", LISTENER], stdout=subprocess.PIPE, text=True)
    probe.comes_to("running, active")
    lines = burst("announced", 3)
    start = len(service.said)
    probe.tell(*[f"say {line}" for line in lines])
    heard = [listener.stdout.readline().strip() for _ in lines]
    expect("who listens for announcements gets them, and nobody else", (heard, service.said[start:]), (lines, []))
    listener.kill()
    listener.wait()
    expect("a listener that left is noticed", probe.comes_to("off, active"), True)


def check_deaf_reader(probe, service):
    """The desktop says that a reader is on, but none listens."""
    def tell_desktop(value):
        subprocess.check_call(["gdbus", "call", "--session", "--dest", "org.a11y.Bus", "--object-path",
                               "/org/a11y/bus", "--method", "org.freedesktop.DBus.Properties.Set",
                               "org.a11y.Status", "ScreenReaderEnabled", f"<{value}>"], stdout=subprocess.DEVNULL)

    tell_desktop("true")
    expect("the desktop's word is taken", probe.comes_to("running, active"), True)
    check_burst(service, probe, "deaf", "us", "if no reader listens the service speaks")
    tell_desktop("false")
    expect("the desktop's change of mind too", probe.comes_to("off, active"), True)


failures = []


def expect(what, actual, expected):
    if actual != expected:
        failures.append(what)
        print(f"FAILED: {what}\n  expected {expected}\n  heard    {actual}")


def speakers(heard, lines):
    """Who said each of our lines, in order; what the reader says of focus and window is left out."""
    return [(("us" if OURS in name else "reader"), text) for name, text in heard if text in lines]


def start_orca(folder):
    """An Orca that finds no other Orca. If it found one, it would not start, or with --replace it would end it: that of
    the person who runs the tests, or that of another run of them."""
    with open(f"{folder}/pgrep", "w", encoding="utf-8", opener=lambda *of: os.open(*of, mode=0o700)) as none:
        none.write("#!/bin/sh\n")
    return subprocess.Popen(["/usr/bin/python3", shutil.which("orca"), "--disable=braille", "--disable=braille-monitor"],
                            env={**os.environ, "PATH": f"{folder}:{os.environ['PATH']}"},
                            stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)


def takes_announcements():
    """Whether this Orca listens for announcements (from 45.2 on); those need no element with the focus."""
    version = subprocess.run([shutil.which("orca"), "--version"], capture_output=True, text=True).stdout
    return [int(number) for number in re.findall(r"\d+", version)[:2]] >= [45, 2]


def quiet(service):
    """Until the reader has said what it has to say of a new window."""
    before = -1
    while len(service.said) != before:
        before = len(service.said)
        time.sleep(1)


def check(service, probe, commands, expected, what, others=()):
    start = len(service.said)
    lines = [*others, *(text for _, text in expected)]
    probe.tell(*commands)
    until(lambda: len(speakers(service.said[start:], lines)) >= len(expected))
    quiet(service)
    heard = service.said[start:]
    expect(what, speakers(heard, lines), expected)
    expect("nothing is only called a notification", [text for _, text in heard if "notification" in text.lower()], [])


def burst(name, count):
    return [f"{name} {number}: the goblin hits you." for number in range(count)]


def check_burst(service, probe, name, speaker, what, count=3, command="say"):
    lines = burst(name, count)
    check(service, probe, [f"{command} {line}" for line in lines], [(speaker, line) for line in lines], what)


def run(program):
    folder = tempfile.TemporaryDirectory()
    os.environ["SPEECHD_ADDRESS"] = f"unix_socket:{folder.name}/speech.sock"
    service = RecordingService(f"{folder.name}/speech.sock")
    service.start()
    probe = Probe(program)
    until(lambda: probe.state().endswith(", active"))
    expect("no reader runs at first", probe.state(), "off, active")
    check_burst(service, probe, "alone", "us", "without a reader the service speaks")
    check_deaf_reader(probe, service)
    check_announcements(probe, service)

    orca = start_orca(folder.name)
    expect("a reader that was started is noticed", probe.comes_to("running, active", 120), True)
    quiet(service)

    check_burst(service, probe, "burst", "reader",
                "a burst of 50 is announced once and in order while the line edit has the focus", count=50)
    check(service, probe, ["say again", "say again", "say again"], [("reader", "again")] * 3,
          "a line that repeats is announced each time")
    check_burst(service, probe, "queued", "reader", "received lines go to the reader too", command="line")

    lines = burst("stopped", 20)
    check(service, probe, [*[f"say {line}" for line in lines], "stop", "say after the stop"],
          [("reader", lines[0]), ("reader", "after the stop")], "a stop drops what the reader was not handed yet", lines)

    focusless = "reader" if takes_announcements() else "us"
    places = (("other", focusless), ("back", "reader"), ("dialog", "reader"), ("back", "reader"))
    for number, (place, speaker) in enumerate(places):
        probe.tell(place)
        probe.comes_to("running, active" if place == "back" else "running, inactive")
        quiet(service)
        check_burst(service, probe, f"{place} {number}", speaker, f"only the {speaker} speaks after the command {place!r}")

    orca.send_signal(signal.SIGKILL)
    orca.wait()
    expect("a reader that died is noticed", probe.comes_to("off, active"), True)
    check_burst(service, probe, "died", "us", "after it the service speaks again")
    probe.end()
    return 1 if failures else 0


if not shutil.which("orca"):
    sys.exit(77)
run_on_a_hidden_screen(lambda: run(sys.argv[1]))
