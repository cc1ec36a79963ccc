#!/usr/bin/env python3
"""How long a player's trigger takes to answer, from the server's last byte sent to the answer's last byte read.

usage: trigger_latency.py CONSOLE [TRIGGERS ...]

Runs the given zantor-console against a server on loopback, in a home of its own, with as many further triggers
that never match as each number says.
"""
import os
import socket
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time

ROUNDS = 300


def fill_store(home, triggers):
    store = sqlite3.connect(home + "/Library/Zantor/database/.zantorDB.db")
    insert = "insert into ZNTTrigger (name, checkString, action, enabled, gag) values (?, ?, ?, 1, 0)"
    store.execute("delete from ZNTTrigger")
    store.executemany(
        insert, [("t", f"The %1 number{n} arrives from *", "greet %1") for n in range(triggers)])
    store.execute(insert, ("k", "A %1 kicks you hard!", "kick %1"))
    store.commit()
    store.close()


def microseconds_to_answer(program, environment):
    listener = socket.create_server(("127.0.0.1", 0))
    client = subprocess.Popen([program, "127.0.0.1", str(listener.getsockname()[1])], env=environment,
                              stdin=subprocess.PIPE, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    connection, _ = listener.accept()
    connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
    time.sleep(0.3)
    times = []
    for _ in range(ROUNDS):
        start = time.perf_counter()
        connection.sendall(b"A goblin kicks you hard!\r\n\xff\xf9\r\n")
        answer = b""
        while not answer.endswith(b"kick goblin\r\n"):
            answer += connection.recv(1000)
        times.append((time.perf_counter() - start) * 1e6)
        time.sleep(0.002)
    client.stdin.close()
    connection.close()
    client.wait(10)
    return sorted(times)


def main():
    program = sys.argv[1]
    for triggers in [int(word) for word in sys.argv[2:]] or [0, 1000, 10000]:
        with tempfile.TemporaryDirectory() as home:
            environment = dict(os.environ, HOME=home)
            subprocess.run([program], env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL, check=True)
            fill_store(home, triggers)
            times = microseconds_to_answer(program, environment)
        print(f"{triggers:6} further triggers: median {statistics.median(times):.0f} us, "
              f"99th percentile {times[len(times) * 99 // 100]:.0f} us")


main()
