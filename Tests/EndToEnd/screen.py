# SPDX-License-Identifier: MIT
"""The program's window on a screen of its own, seen over RFB (RFC 6143) as by an operator.

Qt's own "vnc" platform is that screen. The test finds what it looks for by its colour.
"""

import socket
import struct
import time

import stage

PORT = 5900
PLATFORM = f"vnc:size=1600x1000:port={PORT}"
KEYS = {"Tab": 0xFF09, "Return": 0xFF0D, "Alt": 0xFFE9, "Control": 0xFFE3}
AMBER = bytes.fromhex("47b3ffff")  # of a network that is absent: blue, green, red and a byte without meaning


class Screen:

    def __init__(self):
        self._stream = stage.wait(self._connect, 20, "the program's screen")
        self._stream.settimeout(20)
        self._read(12)
        self._stream.sendall(b"RFB 003.003\n")
        self._read(4)  # the security type: none
        self._stream.sendall(b"\1")
        self.width, self.height, name = struct.unpack(">HH16xI", self._read(24))
        self._read(name)
        true_colour = struct.pack(">BBBBHHHBBBxxx", 32, 24, 0, 1, 255, 255, 255, 16, 8, 0)
        self._stream.sendall(b"\0\0\0\0" + true_colour + struct.pack(">BxHi", 2, 1, 0))  # and no compression

    @staticmethod
    def _connect():
        try:
            return socket.create_connection(("127.0.0.1", PORT), 1)
        except OSError:
            return None

    def close(self):
        self._stream.close()

    def _read(self, size):
        data = bytearray()
        while len(data) < size:
            data += self._stream.recv(size - len(data)) or self.fail()
        return bytes(data)

    @staticmethod
    def fail():
        raise AssertionError("the screen is gone")

    def rows(self):
        """The picture, a row of four bytes a pixel after the other."""
        self._stream.sendall(struct.pack(">BBHHHH", 3, 0, 0, 0, self.width, self.height))
        rows = [bytearray(4 * self.width) for _ in range(self.height)]
        missing = self.width * self.height
        while missing > 0:
            for _ in range(struct.unpack(">xxH", self._read(4))[0]):
                left, top, width, height = struct.unpack(">HHHH4x", self._read(12))
                for row in rows[top:top + height]:
                    row[4 * left:4 * (left + width)] = self._read(4 * width)
                missing -= width * height
        return rows

    def type(self, text):
        """A text, and Return behind it. Then waits as press does."""
        before = self.rows()
        self._send([(symbol, down) for symbol in [*map(ord, text), KEYS["Return"]] for down in (1, 0)])
        self._wait_for_change(before)

    def press(self, *keys):
        """These keys together, each by its name in KEYS or its letter. Then waits for what the window makes of it."""
        before = self.rows()
        self.tap(*keys)
        self._wait_for_change(before)

    def tap(self, *keys):
        """As press, but whatever comes of it."""
        symbols = [KEYS.get(key) or ord(key) for key in keys]
        self._send([(symbol, 1) for symbol in symbols] + [(symbol, 0) for symbol in symbols[::-1]])

    def _send(self, keys):
        for symbol, down in keys:
            self._stream.sendall(struct.pack(">BBxxI", 4, down, symbol))

    def _wait_for_change(self, before):
        stage.wait(lambda: self.rows() != before, 20, "the window shows that keys were pressed")
        self.settle()

    def settle(self):
        """Until the picture stays as it is for a moment."""
        shown = [None]

        def stays():
            time.sleep(0.2)
            shown.append(self.rows())
            return shown[-1] == shown.pop(0)

        stage.wait(stays, 20, "the window stays as it is")

    def shows(self, colour):
        """Whether there is a frame of that colour: no letter has so long a line."""
        return any(30 * colour in row for row in self.rows())
