"""A desktop that is seen and steered from afar: an X server whose screens are those of its viewer.

Only ever used inside the sandbox, where all processes are ours.
"""

import pathlib
import socket
import struct
import threading

from desktop import DISPLAY, Desktop, wait_until

SOCKET = "/tmp/runtime/vnc"
NO_SECRET = 1
SCREENS_OF_SEVERAL = -308  # what is an encoding to the protocol
SET_ENCODINGS, ASK_FOR_PICTURE, SET_SCREENS = 2, 3, 251


class Viewer:
    """As much of a viewer as has screens (RFB 3.8). What the server shows it, is not looked at."""

    def __init__(self):
        self.wire = socket.socket(socket.AF_UNIX)
        self.wire.settimeout(20)
        self.wire.connect(SOCKET)
        self.wire.sendall(self.read(12))
        self.read(*self.read(1))
        self.wire.sendall(bytes([NO_SECRET]))
        assert self.read(4) == bytes(4)
        self.wire.sendall(b"\1")  # others may look on
        width, height, length = struct.unpack(">HH16xI", self.read(24))
        self.read(length)
        self.wire.sendall(struct.pack(">BxHi", SET_ENCODINGS, 1, SCREENS_OF_SEVERAL) +
                          struct.pack(">BBHHHH", ASK_FOR_PICTURE, 0, 0, 0, width, height))
        self.wire.settimeout(None)
        self.reader = threading.Thread(target=self.drain, daemon=True)
        self.reader.start()

    def read(self, length):
        got = b""
        while len(got) < length:
            more = self.wire.recv(length - len(got))
            assert more, "the server has hung up"
            got += more
        return got

    def drain(self):
        try:
            while self.wire.recv(65536):
                pass
        except OSError:
            pass  # the server has been killed

    def set_screens(self, *areas):
        """Left, top, width and height of each."""
        width = max(left + width for left, _, width, _ in areas)
        height = max(top + height for _, top, _, height in areas)
        self.wire.sendall(struct.pack(">BxHHBx", SET_SCREENS, width, height, len(areas)) + b"".join(
            struct.pack(">IHHHHI", number, *area, 0) for number, area in enumerate(areas)))

    def leave(self):
        try:
            self.wire.shutdown(socket.SHUT_RDWR)
        except OSError:
            pass  # the server has been quicker
        self.reader.join()
        self.wire.close()


class SeenFromAfar(Desktop):
    def start_display(self, screen):
        size, depth = screen.rsplit("x", 1)
        pathlib.Path(SOCKET).unlink(missing_ok=True)  # of one that was killed
        display = self.spawn("Xvnc", DISPLAY, "-geometry", size, "-depth", depth, "-SecurityTypes", "None",
                             "-rfbunixpath", SOCKET, "-rfbport", "-1", "-nolisten", "tcp")
        wait_until("the display", lambda: self.tool("xdpyinfo").returncode == 0)
        self.viewer = Viewer()
        return display

    def end(self):
        super().end()
        self.viewer.leave()

    def screens(self):
        """Left, top, width and height of each screen, as the X server has them."""
        found = []
        for line in self.tool("xrandr", "--listmonitors").stdout.splitlines()[1:]:
            size, left, top = line.split()[2].rsplit("+", 2)
            width, height = (side.split("/")[0] for side in size.split("x"))
            found.append(tuple(map(int, (left, top, width, height))))
        return sorted(found)
