#!/usr/bin/env python3
"""Runs the real terminal client against the real demo game, as a player's shell would.

usage: console_program_test.py ZANTOR_CONSOLE
"""
import os
import pty
import re
import select
import signal
import socket
import subprocess
import sys
import tempfile
import termios
import time
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

    def test_a_password_is_typed_unseen(self):
        ours, connection = self.on_a_terminal("--set=standard-telnet=on")
        with connection:
            connection.sendall(b"Name: \xff\xf9")
            self.screen_until(ours, "Name: $")
            os.write(ours, b"ash\r")
            self.screen_until(ours, "ash\r")
            connection.sendall(b"\xff\xfb\x01Password: \xff\xf9")
            self.screen_until(ours, "Password: $")
            os.write(ours, b"secret\r")
            while b"secret" not in connection.recv(4096):
                pass
            connection.sendall(b"\xff\xfc\x01\r\nWelcome.\r\n> \xff\xf9")
            self.assertNotIn("ecret", self.screen_until(ours, "Welcome.\r\n.*> $"))
            os.write(ours, b"look")
            self.screen_until(ours, "look$")
            os.dup2(os.open(os.devnull, os.O_RDONLY), ours)  # the terminal goes away, and the client ends
            while connection.recv(4096):
                pass

    # For screen readers of the terminal: text is appended, and nothing is written twice.
    APPEND_ONLY = (["--reader"], "xterm"), ([], "dumb"), ([], None)

    def test_append_only_a_line_that_comes_stands_alone_and_nothing_is_drawn_again(self):
        for arguments, term in self.APPEND_ONLY:
            with self.subTest(term):
                ours, game = self.on_a_terminal("--set=standard-telnet=on", *arguments, term=term)
                steps = [(game.sendall, "\x1b[31mHi\x1b[0m\r\n> \xff\xf9", "Hi\r\n> "),
                         (game.sendall, "A troll comes.\r\n> \xff\xf9", "\r\nA troll comes.\r\n> "),
                         (self.types(ours), "lo", "lo"),
                         (game.sendall, "\r\nIt waves.\r\n> \xff\xf9", "\r\nIt waves.\r\n> "),
                         (self.types(ours), "ok\x1b[1;5D\x1bOP\x1b[[A\x01\n", "ok[^\x1b\x01]*\r\n"),
                         (lambda _: self.assertTrue(game.recv(4096).endswith(b"look\r\n")), "", ""),
                         (game.sendall, "A square.\r\n> \xff\xf9", "A square.\r\n> "),
                         (self.types(ours), "/reload\n", "/reload\r\nThe triggers are in force.\r\n"),
                         (self.types(ours), "/xyzzy\n", "/xyzzy\r\nThere is no command /xyzzy; .*two\\.\r\n"),
                         (game.sendall, "> \xff\xf9", "> "),
                         (lambda _: game.close(), "", "\r\nThe game closed the connection.\r\n"),
                         (self.types(ours), "look\n", "look\r\nNot connected[^\r\n]*: look\r\n")]
                for act, given, shown in steps:
                    act(given.encode("latin-1"))
                    self.screen_until(ours, f"(^|Connected\\.\r\n){shown}$", sees_colours=True)

    def test_colours_can_be_asked_for_where_text_is_only_appended(self):
        ours, game = self.on_a_terminal("--reader", "--colour", "always")
        with game:
            game.sendall(b"\x1b[31mHi\x1b[0m\r\n\x1b[32m> \x1b[0m\xff\xf9")
            self.screen_until(ours, "(^|Connected\\.\r\n)\x1b\\[0;31mHi\x1b\\[0m\r\n\x1b\\[0;32m> \x1b\\[0m$", sees_colours=True)
            os.write(ours, b"look\n")
            self.screen_until(ours, "^look\r\n$", sees_colours=True)
            while b"look" not in game.recv(4096):
                pass
            game.sendall(b"\x1b[32mA square.\r\n> \x1b[0m\xff\xf9")
            self.screen_until(ours, "^\x1b\\[0;32mA square.\r\n> \x1b\\[0m$", sees_colours=True)

    def test_however_it_ends_the_terminal_shows_again_what_is_typed(self):
        ways = [*self.APPEND_ONLY, ([], "xterm")]
        for (arguments, term), name in zip(ways * 2, "INT TERM HUP QUIT USR1 ABRT ALRM".split()):
            with self.subTest(f"{arguments} {term} {name}"):
                with self.asked_for_a_password(*arguments, term=term):
                    self.client.send_signal(signal.Signals["SIG" + name])
                    self.assertEqual(self.client.wait(20), -signal.Signals["SIG" + name])
                self.assertTrue(self.is_typing_shown())

    def test_while_it_is_stopped_the_terminal_shows_what_is_typed(self):
        with self.asked_for_a_password("--reader"):
            self.client.send_signal(signal.SIGTSTP)
            os.waitid(os.P_PID, self.client.pid, os.WSTOPPED)
            self.assertTrue(self.is_typing_shown())
            self.client.send_signal(signal.SIGCONT)
            for _ in range(200):
                if self.is_typing_shown():
                    time.sleep(0.05)
            self.assertFalse(self.is_typing_shown())

    def test_a_terminal_may_be_for_typing_alone(self):
        with self.asked_for_a_password("--colour", "auto", output=subprocess.PIPE) as game:
            os.write(self.terminal, b"secret\n\x04")
            while b"secret" not in game.recv(4096):
                pass
            game.sendall(b"\r\nWelcome.")
            self.assertEqual(self.client.communicate(timeout=20)[0], b"Hi\nPassword: \nWelcome.")
        self.assertTrue(self.is_typing_shown())

    def asked_for_a_password(self, *arguments, **options):
        """The game's end of a connection whose client hides what is typed on its terminal."""
        self.terminal, game = self.on_a_terminal("--set=standard-telnet=on", *arguments, **options)
        game.sendall(b"\x1b[31mHi\x1b[0m\r\n\xff\xfb\x01Password: \xff\xf9")
        while b"\xff\xfd\x01" not in game.recv(4096):
            pass
        if not options.get("output"):
            self.screen_until(self.terminal, "Password: $")
        self.assertFalse(self.is_typing_shown())
        return game

    @staticmethod
    def types(terminal):
        return lambda keys: os.write(terminal, keys)

    def is_typing_shown(self):
        return bool(termios.tcgetattr(self.theirs)[3] & termios.ECHO)

    def on_a_terminal(self, *arguments, term="xterm", output=None):
        """The terminal of a client that has connected, and its game's end of the connection."""
        environment = dict(os.environ, HOME=self.home, TERM=term or "", LC_ALL="C")
        if term is None:
            del environment["TERM"]
        with socket.create_server(("127.0.0.1", 0)) as listener:
            ours, self.theirs = pty.openpty()
            self.addCleanup(os.close, ours)
            self.addCleanup(os.close, self.theirs)
            termios.tcsetwinsize(ours, (24, 20))
            self.client = subprocess.Popen(
                [PROGRAM, *arguments, "127.0.0.1", str(listener.getsockname()[1])], stdin=self.theirs,
                stdout=output or self.theirs, stderr=self.theirs, process_group=0, env=environment)
            self.addCleanup(self.client.wait)
            self.addCleanup(self.client.kill)
            connection, _ = listener.accept()
            connection.settimeout(20)
            return ours, connection

    def screen_until(self, terminal, pattern, sees_colours=False):
        """What the client writes until `pattern` is found in it."""
        written = ""
        while not re.search(pattern, written if sees_colours else re.sub(r"\x1b\[[0-9;]*m", "", written)):
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
                for folder, _, files in os.walk(self.home):
                    for file in files:
                        with open(os.path.join(folder, file), "rb") as content:
                            self.assertNotIn(b"sesame", content.read(), file)

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
        for link in ("telnet://127.0.0.1:1 4000", "telnet://-x", "-x", "-- --demo", "-- --version 4000 more",
                     "telnet:127.0.0.1 1", "telnet://game@127.0.0.1:1", "--demo telnet://127.0.0.1:1"):
            with self.subTest(link):
                out, err, code = self.play("", *link.split())
                self.assertEqual((out, bool(err), code), ("", True, 2))
        self.assertRegex(self.play("", "--version")[0], r"^zantor-console [0-9.]+\n$")
        _, err, code = self.play("look\n", "127.0.0.1", "1")
        self.assertIn("MUD Not Responding", err)
        self.assertEqual(code, 1)
        _, err, code = self.play("look\n", "--", "TELNET://127.0.0.1:1/")
        self.assertIn("MUD Not Responding", err)
        self.assertEqual(code, 1)

    def test_bash_completes_options_and_their_values(self):
        completion = self.play("", "--describe=bash")[0]
        for words, offered in (
                (["--enc"], ["--encoding"]), (["--encoding", "a"], ["ascii"]), (["--encoding", "="], ["ascii", "big5"]),
                (["--colour", "=", "al"], ["always"]), (["--set", "pac"], ["pacing="]), (["--set", "speech", "=", ""], []),
                (["--demo", "--me"], ["--mend-home"]), (["mud.example", ""], ["--demo", "--version"])):
            with self.subTest(words):
                done = self.run_client(
                    ["bash", "-c", 'compopt() { :; }; eval "$1"; shift; COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1))\n'
                     '_zantor_console; printf "%s\n" "${COMPREPLY[@]}"', "bash", completion, "zantor-console", *words])
                replies = done.stdout.decode().split()
                self.assertEqual(replies if len(offered) < 2 else [o for o in offered if o in replies], offered)


unittest.main()
