#!/usr/bin/env python3
"""Plays sessions to the terminal client with standard telnet and compares what it shows with a reader of its own.

usage: standard_telnet_test.py ZANTOR_CONSOLE [RECORDING ENCODING]...

Each session is sent whole, byte by byte, and cut at random. A RECORDING is a file with the bytes of a server; ENCODING
is a name of Zantor's. The reader below knows nothing of Zantor's code; Python's codecs decode for it.
"""
import os
import random
import re
import socket
import subprocess
import sys
import tempfile
import threading
import unittest
import zlib

PROGRAM, RECORDINGS = sys.argv[1], sys.argv[2:]
CODECS = {"ascii": "latin-1", "utf-8": "utf-8", "euc-cn": "gb18030", "big5": "big5hkscs"}
IAC, SE, SB, WILL, WONT, DO, DONT = 255, 240, 250, 251, 252, 253, 254
MCCP2 = 86


def read(data, encoding):
    """The text that a player is to see, with one line feed for each line end."""
    text, at = bytearray(), 0
    while at < len(data):
        command = data[at + 1] if data[at] == IAC and at + 1 < len(data) else None
        if data[at] != IAC:
            text.append(data[at])
            at += 1
        elif command == IAC:
            text.append(IAC)
            at += 2
        elif command == SB:
            option, at = data[at + 2], data.index(bytes([IAC, SE]), at) + 2
            if option == MCCP2:
                stream = zlib.decompressobj()
                data, at = stream.decompress(data[at:]) + stream.unused_data, 0
        else:
            at += 3 if command in (WILL, WONT, DO, DONT) else 2
    shown = bytes(text).replace(b"\r\0", b"\r").decode(CODECS[encoding], "replace").removeprefix("\ufeff")
    shown = re.sub(r"!!\w*\([^ \r\n]+.*\)", "", shown)
    shown = re.sub(r"(\x1b\[H)?\x1b\[2?J", "\f", shown)
    shown = re.sub(r"\x1b\[[0-?]*[ -/]*[@-~]", "", shown)
    shown = re.sub(r"(^|\n|\r)\f+", r"\1", shown).replace("\f", "\n")  # a cleared screen begins a fresh line
    shown = re.sub(r"\r\n|\n\r|\r", "\n", shown)
    return re.sub(r"[\x00-\x08\x0b-\x1f\x7f-\x9f]", "", shown)


def telnet(*numbers):
    return bytes([IAC, *numbers])


def compressed(text):
    return telnet(SB, MCCP2, IAC, SE) + zlib.compress(text)


OFFERS = telnet(DO, 24) + telnet(WILL, 1) + telnet(WILL, 25) + telnet(WILL, 42) + telnet(WILL, 90)
SESSIONS = [
    ("ascii", OFFERS + b"\x1b[2J\x1b[38;5;214mBy what name?\x1b[0m " + telnet(249) + b"a\r\0b \xff\xff c\n\r\r\n" +
     b"A whisper. !!SOUND(whisper.wav V=50 U=http://127.0.0.1/) \n\rWords at \r\n  both\tends \r\n"),
    ("utf-8", b"\xef\xbb\xbf" + "naïve ÿ 你好 🎲 e\u0301 שלום\r\n".encode() + b"\xf0\x9f\x92 bad \xc3( \xed\xa0\x80\r\n"),
    ("euc-cn", "你好，朱镕基 \x1b[31m你\x1b[0m好\r\n".encode("gbk") + telnet(249)),
    ("big5", "許功蓋 嘅㗎\r\n".encode("big5hkscs")),
    ("ascii", telnet(WILL, MCCP2) + b"plain\r\n" + compressed(OFFERS + b"packed \xff\xff\r\n" * 200) + b"plain again\r\n" +
     telnet(WILL, MCCP2) + compressed(b"packed again\r\n> ") + telnet(239) + b"and plain\r\n"),
]


class StandardTelnet(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.home = folder.name
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.addCleanup(self.listener.close)

    def shown(self, encoding, serve):
        """What the client writes to stdout while `serve` plays the server's part."""
        def answer():
            connection, _ = self.listener.accept()
            with connection:
                connection.setsockopt(socket.IPPROTO_TCP, socket.TCP_NODELAY, 1)
                serve(connection)
        server = threading.Thread(target=answer)
        server.start()
        done = subprocess.run(
            [PROGRAM, "--colour", "never", "--set", "standard-telnet=on", "--set", "full-colours=on", "--set",
             "compression=on", "--set", "sounds=on", "--encoding", encoding, "127.0.0.1",
             str(self.listener.getsockname()[1])],
            input=b"", capture_output=True, timeout=60, check=False, env=dict(os.environ, HOME=self.home))
        server.join()
        return done.stdout.decode()

    def check(self, data, encoding):
        pieces = {"whole": [data], "byte by byte": [bytes([byte]) for byte in data], "cut at random": []}
        chance, at = random.Random(len(data)), 0
        while at < len(data):
            size = chance.choice([1, 2, 5, 30, 400])
            pieces["cut at random"].append(data[at:at + size])
            at += size
        for how, cut in pieces.items():
            with self.subTest(how):
                def serve(connection, cut=cut):
                    for piece in cut:
                        connection.sendall(piece)
                    connection.shutdown(socket.SHUT_WR)
                    while connection.recv(65536):
                        pass
                self.assertEqual(self.shown(encoding, serve).rstrip("\n"), read(data, encoding).rstrip("\n"))

    def test_every_character_is_shown(self):
        for number, (encoding, data) in enumerate(SESSIONS):
            with self.subTest(number):
                self.check(data, encoding)

    def test_recordings_are_shown_whole(self):
        for name, encoding in zip(RECORDINGS[::2], RECORDINGS[1::2]):
            with self.subTest(name), open(name, "rb") as recording:
                # One of a client that asked for compression, which was never offered.
                self.check(telnet(WILL, MCCP2) + recording.read(), encoding)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
