#!/usr/bin/env python3
"""Runs the real terminal client against the real demo game, as a player's shell would.

usage: console_program_test.py ZANTOR_CONSOLE
"""
import os
import pty
import re
import select
import socket
import subprocess
import sys
import tempfile
import termios
import unittest

PROGRAM = sys.argv.pop(1)


class ConsoleProgram(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.home = folder.name

    def run_client(self, command, home=None, **options):
        return subprocess.run(command, capture_output=True, timeout=30, check=False,
                              env=dict(os.environ, HOME=home or self.home), **options)

    def play(self, lines, *arguments, home=None):
        """Standard output, standard error and the exit code of a client that is given `lines`."""
        done = self.run_client([PROGRAM, *arguments], home, input=lines.encode())
        return done.stdout.decode(), done.stderr.decode(), done.returncode

    def test_a_script_is_played_line_by_line(self):
        out, _, code = self.play("look\nnorth\n", "--demo")
        self.assertRegex(out, r"(?s)Lantern Square.*> look\n.*Lantern Square.*> north\n.*The Harbour")
        self.assertNotRegex(out, r"[\x00-\x08\x0b-\x1f\x7f-\x9f]")
        self.assertEqual(code, 0)

    def test_no_lines_show_the_greeting(self):
        for closed in "", "<&-", ">&-", "<&- >&- 2>&-":
            with self.subTest(closed):
                done = self.run_client(["sh", "-c", f'"$0" --demo --colour always {closed}', PROGRAM],
                                       stdin=subprocess.DEVNULL)
                self.assertEqual(done.returncode, 0)
                if ">" not in closed:
                    self.assertRegex(done.stdout, rb"(?s)\x1b\[0;.*Lantern Square")

    def test_too_few_descriptors_end_in_words_and_not_in_a_signal(self):
        for limit in range(4, 15, 2):
            done = self.run_client(["sh", "-c", f'ulimit -n {limit}; exec "$0" --demo', PROGRAM], input=b"look\n")
            self.assertIn(done.returncode, (0, 1), (limit, done.stderr))
            self.assertTrue(done.returncode == 0 or done.stderr, limit)

    def test_the_line_being_typed_is_drawn_again_below_texts_and_alerts(self):
        ours, connection = self.on_a_terminal()
        prompt = "\u00e9\u00e9> "  # four columns, which a locale without UTF-8 cannot read
        with connection:
            connection.sendall(b"\xe9\xe9> \xff\xf9")
            self.screen_until(ours, prompt + "$")
            os.write(ours, b"say hello world")
            self.screen_until(ours, r"world$")
            connection.sendall(b"\x1b[31mone row\x1b[0m\r\n\xe9\xe9> \xff\xf9")
            shown = self.screen_until(ours, rf"(?<!1A)\r\x1b\[J{prompt}one row\r\n[^a-z]*{prompt}say hello world$")
            self.assertIn("\x1b[0;31mone row", shown)
            os.write(ours, b"!")
            self.screen_until(ours, r"!")
            connection.sendall(b"two rows\r\n\xe9\xe9> \xff\xf9")
            self.screen_until(ours, r"\x1b\[1A\r\x1b\[J.*two rows(.|\s)*say hello world!")
            os.write(ours, b"\x15say he")
            self.screen_until(ours, r"say he$")
        self.screen_until(ours, rf"\x1b\[J\w[^\r\n]*: [^\r\n]+\r\n\r?{prompt}say he$")

    def test_a_password_is_typed_unseen(self):
        ours, connection = self.on_a_terminal("--set=standard-telnet=on")
        with connection:
            connection.sendall(b"Name: \xff\xf9")
            self.screen_until(ours, "Name: $")
            os.write(ours, b"ash\r")
            self.screen_until(ours, "ash\r")
            connection.sendall(b"\xff\xfb\x01Password: \xff\xf9")
            self.screen_until(ours, "Password: $")
            os.write(ours, b"/se")
            os.write(ours, b"cret\r")
            received = b""  # in any pieces
            while not received.endswith(b"\xff\xfd\x01/secret\r\n"):
                received += connection.recv(4096)
            connection.sendall(b"\xff\xfc\x01\r\nWelcome.\r\n> \xff\xf9")
            self.assertNotIn("ecret", self.screen_until(ours, "Welcome.\r\n.*> $"))
            os.write(ours, b"look")
            self.screen_until(ours, "look$")
            os.dup2(os.open(os.devnull, os.O_RDONLY), ours)  # the terminal goes away, and the client ends
            while connection.recv(4096):
                pass

    def on_a_terminal(self, *arguments):
        """The terminal of a client that has connected, and its game's end of the connection."""
        with socket.create_server(("127.0.0.1", 0)) as listener:
            ours, theirs = pty.openpty()
            self.addCleanup(os.close, ours)
            termios.tcsetwinsize(ours, (24, 20))
            client = subprocess.Popen(
                [PROGRAM, *arguments, "127.0.0.1", str(listener.getsockname()[1])],
                stdin=theirs, stdout=theirs, stderr=theirs, start_new_session=True,
                env=dict(os.environ, HOME=self.home, TERM="xterm", LC_ALL="C"))
            self.addCleanup(client.wait)
            self.addCleanup(client.kill)
            os.close(theirs)
            connection, _ = listener.accept()
            connection.settimeout(20)
            return ours, connection

    def screen_until(self, terminal, pattern):
        """What the client writes until `pattern` is found in it. The pattern sees no colours."""
        written = ""
        while not re.search(pattern, re.sub(r"\x1b\[[0-9;]*m", "", written)):
            ready, _, _ = select.select([terminal], [], [], 20)
            self.assertTrue(ready, f"no {pattern!r} in {written!r}")
            written += os.read(terminal, 65536).decode()
        return written

    def test_a_reader_that_leaves_ends_it_quietly(self):
        with subprocess.Popen([PROGRAM, "--demo"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                              stderr=subprocess.PIPE, env=dict(os.environ, HOME=self.home)) as client:
            client.stdout.readline()
            client.stdout.close()
            client.stdin.write(b"look\n" * 50)
            client.stdin.close()
            complaints = client.stderr.read().decode()
            code = client.wait(30)
        self.assertGreaterEqual(code, 0, "ended by a signal")
        self.assertNotIn("roken pipe", complaints)

    def test_chinese_is_shown_in_utf_8(self):
        out, _, _ = self.play("", "--demo", "--encoding", "big5")
        self.assertRegex(out, "[\u4e00-\u9fff]{4}")
        self.assertNotIn("\ufffd", out)
        out, _, _ = self.play("say 世界 é\n", "--demo", "--set=encoding=utf-8")
        self.assertIn("You say: 世界 é", out)

    def test_standard_telnet_hides_a_password_and_agrees_on_utf_8(self):
        for compression in [], ["--mccp"]:
            with self.subTest(compression):
                out, errors, _ = self.play("name Oak\nsesame\nsay é ÿ 海\nw\nu\ncompress\n", "--demo",
                                           "--set=standard-telnet=on", *compression)
                self.assertRegex(out, "(?s)Choose a password.*You are called Oak.*You say: é ÿ 海\n.*море")
                self.assertIn("was compressed" if compression else "Nothing is compressed", out)
                self.assertNotIn("sesame", out + errors)

    def test_without_a_usable_home_play_goes_on(self):
        out, _, code = self.play("north\n", "--demo", home="/dev/null")
        self.assertIn("The Harbour", out)
        self.assertEqual(code, 0)

    def test_exit_codes(self):
        out, err, code = self.play("", "--help")
        self.assertEqual((bool(out), err, code), (True, "", 0))
        for wrong in (
            "mud.example", "mud.example 65536", "mud.example 4000 more", "--demo mud.example 4000", "--encoding latin",
            "--encoding", "--colour red", "--set rate=fast", "--set loudness=3", "--set speech", "--unknown"):
            with self.subTest(wrong):
                out, err, code = self.play("", *wrong.split())
                self.assertEqual((out, bool(err), code), ("", True, 2))
        _, err, code = self.play("look\n", "127.0.0.1", "1")
        self.assertIn("MUD Not Responding", err)
        self.assertEqual(code, 1)


unittest.main()
