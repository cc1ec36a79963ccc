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

    def assert_in_order(self, text, *parts):
        at = 0
        for part in parts:
            found = text.find(part, at)
            self.assertGreaterEqual(found, 0, f"{part!r} is missing after {text[:at]!r} in {text[at:]!r}")
            at = found + len(part)

    def test_a_script_is_played_line_by_line(self):
        out, _, code = self.play("look\nnorth\n", "--demo")
        self.assert_in_order(out, "Lantern Square", "> look\n", "Lantern Square", "> north\n", "The Harbour")
        self.assertNotRegex(out, r"[\x00-\x08\x0b-\x1f\x7f-\x9f]")
        self.assertEqual(code, 0)

    def test_no_lines_show_the_greeting(self):
        done = self.run_client([PROGRAM, "--demo", "--colour", "always"], stdin=subprocess.DEVNULL)
        self.assertIn(b"Lantern Square", done.stdout)
        self.assertIn(b"\x1b[0;", done.stdout)
        self.assertEqual(done.returncode, 0)

    def test_closed_standard_descriptors_are_as_good_as_empty(self):
        for closed in "<&-", ">&-", "<&- >&- 2>&-":
            with self.subTest(closed):
                done = self.run_client(["sh", "-c", f'"$0" --demo {closed}', PROGRAM], stdin=subprocess.DEVNULL)
                self.assertEqual(done.returncode, 0)

    def test_too_few_descriptors_end_in_words_and_not_in_a_signal(self):
        for limit in range(4, 15):
            for arguments in (), ("--demo",), ("localhost", "1"):
                with self.subTest(limit=limit, arguments=arguments):
                    done = self.run_client(
                        ["sh", "-c", f'ulimit -n {limit}; exec "$0" "$@"', PROGRAM, *arguments], input=b"look\n")
                    self.assertIn(done.returncode, (0, 1), done.stderr)
                    self.assertTrue(done.returncode == 0 or done.stderr)

    def test_the_line_being_typed_is_drawn_again_below_texts_and_alerts(self):
        with socket.create_server(("127.0.0.1", 0)) as listener:
            ours, theirs = pty.openpty()
            self.addCleanup(os.close, ours)
            termios.tcsetwinsize(ours, (24, 20))
            client = subprocess.Popen(
                [PROGRAM, "127.0.0.1", str(listener.getsockname()[1])], stdin=theirs, stdout=theirs, stderr=theirs,
                start_new_session=True, env=dict(os.environ, HOME=self.home, TERM="xterm", LC_ALL="C"))
            self.addCleanup(client.wait)
            self.addCleanup(client.kill)
            os.close(theirs)
            connection, _ = listener.accept()
        prompt = "\u00e9\u00e9> "  # four columns, which a locale without UTF-8 cannot read
        with connection:
            connection.sendall(b"\xe9\xe9> \xff\xf9")
            self.screen_until(ours, prompt + "$")
            os.write(ours, b"say hello world")
            self.screen_until(ours, r"world$")
            connection.sendall(b"one row\r\n\xe9\xe9> \xff\xf9")
            self.screen_until(ours, rf"(?<!1A)\r\x1b\[J{prompt}one row\r\n[^a-z]*{prompt}say hello world$")
            os.write(ours, b"!")
            self.screen_until(ours, r"!")
            connection.sendall(b"two rows\r\n\xe9\xe9> \xff\xf9")
            self.screen_until(ours, r"\x1b\[1A\r\x1b\[J.*two rows(.|\s)*say hello world!")
            os.write(ours, b"\x15say he")
            self.screen_until(ours, r"say he$")
        self.screen_until(ours, rf"\x1b\[J\w[^\r\n]*: [^\r\n]+\r\n\r?{prompt}say he$")

    def screen_until(self, terminal, pattern):
        """Reads what the client writes until `pattern` is found in it; colours are not shown."""
        written = ""
        while not re.search(pattern, written):
            ready, _, _ = select.select([terminal], [], [], 20)
            self.assertTrue(ready, f"no {pattern!r} in {written!r}")
            written += re.sub(r"\x1b\[[0-9;]*m", "", os.read(terminal, 65536).decode())

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
        for encoding in "euc-cn", "big5":
            with self.subTest(encoding):
                out, _, code = self.play("", "--demo", "--encoding", encoding)
                self.assertRegex(out, "[\u4e00-\u9fff]{4}")
                self.assertNotIn("\ufffd", out)
                self.assertEqual(code, 0)

    def test_without_a_usable_home_play_goes_on(self):
        out, _, code = self.play("north\n", "--demo", home="/dev/null")
        self.assertIn("The Harbour", out)
        self.assertEqual(code, 0)

    def test_exit_codes(self):
        out, err, code = self.play("", "--help")
        self.assertEqual((bool(out), err, code), (True, "", 0))
        for wrong in (
            "mud.example", "mud.example 0", "mud.example 65536", "mud.example port", "mud.example 4000 more",
            "--demo mud.example 4000", "--encoding utf-8", "--encoding", "--colour red", "--set rate=fast",
            "--set loudness=3", "--set speech", "--unknown"):
            with self.subTest(wrong):
                out, err, code = self.play("", *wrong.split())
                self.assertEqual((out, bool(err), code), ("", True, 2))
        _, err, code = self.play("look\n", "127.0.0.1", "1")
        self.assertIn("MUD Not Responding", err)
        self.assertEqual(code, 1)


unittest.main()
