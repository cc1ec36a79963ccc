#!/usr/bin/env python3
"""Starts the terminal client in new and in broken homes, as a player's shell would.

usage: first_run_test.py ZANTOR_CONSOLE [DOUBLE_STARTS] [KILLS]
"""
import contextlib
import os
import plistlib
import random
import sqlite3
import stat
import subprocess
import sys
import tempfile
import time
import unittest

PROGRAM = sys.argv.pop(1)
DOUBLE_STARTS = int(sys.argv.pop(1)) if len(sys.argv) > 1 else 5
KILLS = int(sys.argv.pop(1)) if len(sys.argv) > 1 else 10


class Home:
    def __init__(self, test):
        folder = tempfile.TemporaryDirectory()
        test.addCleanup(folder.cleanup)
        self.path = folder.name
        self.zantor = folder.name + "/Library/Zantor"
        self.folder = self.zantor + "/database"
        self.database = self.folder + "/.zantorDB.db"
        self.properties = self.folder + "/database_properties.plist"

    def start(self, *arguments, **options):
        return subprocess.Popen([PROGRAM, *arguments], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.PIPE, env=dict(os.environ, HOME=self.path), text=True,
                                **options)

    def run(self, *arguments, **options):
        """Standard output, standard error and the exit code."""
        program = self.start(*arguments, **options)
        out, err = program.communicate(timeout=60)
        return out, err, program.returncode


class FirstRun(unittest.TestCase):
    def setUp(self):
        self.random = random.Random(20)
        undisturbed = Home(self)
        began = time.monotonic()
        undisturbed.run()
        self.seconds = time.monotonic() - began
        self.contents = self.contents_of(undisturbed)

    def contents_of(self, home):
        """All tables and rows, and whether the file is sound."""
        with contextlib.closing(sqlite3.connect(home.database)) as connection:
            return [*connection.iterdump(), connection.execute("pragma integrity_check").fetchone()]

    def assert_whole(self, home):
        self.assertEqual(self.contents_of(home), self.contents)
        with open(home.properties, "rb") as properties:
            self.assertEqual(plistlib.load(properties), {"update_db": 3})
        for path in (home.zantor, home.folder, home.database, home.properties):
            self.assertEqual(stat.S_IMODE(os.stat(path).st_mode) & 0o077, 0, path)

    def assert_next_start_is_whole(self, home):
        home.run()
        self.assert_whole(home)
        self.assertEqual(sorted(os.listdir(home.folder)), [".zantorDB.db", "database_properties.plist"])
        self.assertEqual([name for name in os.listdir(home.zantor) if name.startswith("database.")],
                         ["database.lock"], "nothing else is left behind")

    def test_two_programs_that_start_together_make_one_store(self):
        for _ in range(DOUBLE_STARTS):
            home = Home(self)
            both = [home.start(), home.start()]
            said = "".join(program.communicate(timeout=60)[1] for program in both)
            self.assertEqual([program.returncode for program in both], [0, 0])
            self.assertEqual(said, f"Root ZNTDatabaseAndPropertyUpdater: {home.properties}\n")
            self.assert_whole(home)

    def test_a_first_run_that_is_killed_leaves_nothing_or_a_whole_store(self):
        for _ in range(KILLS):
            home = Home(self)
            program = home.start()
            time.sleep(self.random.uniform(0, self.seconds))
            program.kill()
            program.communicate()
            if os.path.exists(home.folder):
                self.assert_whole(home)
            self.assert_next_start_is_whole(home)

    def test_a_broken_home_is_named_and_mended_when_asked(self):
        home = Home(self)
        home.run()
        os.remove(home.database)
        self.assertIn("zantor-console --mend-home", home.run()[1])
        out, err, code = home.run("--mend-home")
        self.assertEqual(code, 0, err)
        self.assertIn(home.folder + ".broken-1", out)
        self.assert_whole(home)


if __name__ == "__main__":
    unittest.main()
