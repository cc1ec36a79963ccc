#!/usr/bin/env python3
"""How fast a flood passes through the terminal client, beside a plain copy of the same bytes.

usage: console_flood.py CONSOLE [MIB [ROUNDS]]

A server on loopback sends game text and closes; the text goes to a terminal (a pseudo-terminal that processes no
output) or to a pipe, which is read and thrown away. The plain copy is "cat" between the same socket and the same
end, and beside the pipe "tee", which writes the text to a file too, as the client writes its log. The rounds
alternate between the programs, and the fastest of each counts.
"""
import os
import pty
import re
import socket
import subprocess
import sys
import tempfile
import threading
import time
import tty

LINES = b"".join(
    b"\x1b[1;3%dmA lantern fish\x1b[0m drifts past you, number %d of many, and looks at you.\r\n"
    b"The quay creaks underfoot, and somewhere above a gull laughs at you for quite a while.\r\n"
    % (n % 8, n) for n in range(4000))


def both_ends(kind):
    """The end to read from and the end that a program writes to."""
    if kind == "pipe":
        return os.pipe()
    ours, theirs = pty.openpty()
    tty.setraw(theirs)
    return ours, theirs


def pieces(descriptor):
    try:
        while piece := os.read(descriptor, 1 << 20):
            yield piece
    except OSError:  # how a terminal tells that its last writer has gone
        pass


def seconds_to_pass(start, flood, kind):
    """Seconds from the first byte sent to the last one read from what `start(port, output)` runs; and their number."""
    ours, theirs = both_ends(kind)
    with socket.create_server(("127.0.0.1", 0)) as listener, os.fdopen(ours, "rb", 0):
        program = start(listener.getsockname()[1], theirs)
        os.close(theirs)
        connection, _ = listener.accept()

        def send():
            with connection:
                connection.sendall(flood)

        began = time.perf_counter()
        sender = threading.Thread(target=send)
        sender.start()
        count = sum(map(len, pieces(ours)))
        passed = time.perf_counter() - began
        sender.join()
        program.wait(60)
    return passed, count


def main():
    program = sys.argv[1]
    mib = int(sys.argv[2]) if len(sys.argv) > 2 else 64
    rounds = int(sys.argv[3]) if len(sys.argv) > 3 else 5
    flood = LINES * ((mib << 20) // len(LINES))
    shown = len(re.sub(rb"\x1b\[[0-9;]*m|\r", b"", flood))
    with tempfile.TemporaryDirectory() as home:
        def copy(*command):
            def start(port, output):
                with socket.create_connection(("127.0.0.1", port)) as connection:
                    return subprocess.Popen(command, stdin=connection.fileno(), stdout=output)
            return start

        def client(*options):
            def start(port, output):
                return subprocess.Popen(
                    [program, *options, "127.0.0.1", str(port)], stdin=subprocess.DEVNULL, stdout=output,
                    stderr=subprocess.DEVNULL, env=dict(os.environ, HOME=home, TERM="xterm-256color"))
            return start

        runs = {"plain copy (cat)": (copy("cat"), len(flood)),
                "copy with a file (tee)": (copy("tee", os.path.join(home, "copy")), len(flood)),
                "zantor-console": (client("--colour", "never"), shown),
                "zantor-console, colours": (client("--colour", "always"), shown)}
        for kind in ("terminal", "pipe"):
            times = {name: [] for name in runs}
            for _ in range(rounds):
                for name, (start, least) in runs.items():
                    passed, count = seconds_to_pass(start, flood, kind)
                    if count < least * 0.999:  # the blanks at the ends of a received block are not shown
                        sys.exit(f"{name}: {count} bytes came of {least}")
                    times[name].append(passed)
            fastest = {name: min(seconds) for name, seconds in times.items()}
            print(f"to a {kind}:")
            for name, seconds in fastest.items():
                print(f"  {name:24} {len(flood) / seconds / (1 << 20):7.0f} MiB/s  "
                      f"{fastest['plain copy (cat)'] / seconds:.2f} of the plain copy")


main()
