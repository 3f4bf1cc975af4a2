# SPDX-License-Identifier: MIT
"""What every end-to-end test needs: a stage network, the program on it, and a view of the wire.

A test script ends with `stage.run()`. Called from outside as `script.py PIXELWEFT [CASE...]` it starts itself
again on the host "desk" of a private network (Tools/stage-net), where the program runs too; the nodes are on the
host "rig" at the other end of the cable. Nothing here shares code with the program: what the program must send is
written in the tests, and what it sends is read by an outside dissector.
"""

import contextlib
import ctypes
import os
import pathlib
import shutil
import signal
import socket
import struct
import subprocess
import sys
import tempfile
import threading
import time
import typing
import unittest

from document import write_picture

ROOT = pathlib.Path(__file__).resolve().parents[2]
STAGE_NET = ROOT / "Tools" / "stage-net"
ART_NET_PORT = 6454
DESK, RIG = "2.0.0.1", "2.0.0.10"
BROADCAST = "2.255.255.255"

_executable = None  # the PixelWeft that is tested; its rig and mode.xml lie beside it


def run():
    """Runs the script's cases on a stage and ends with status 0, 1, or 77 where there can be no stage."""
    global _executable
    if len(sys.argv) < 2:
        sys.exit("usage: " + os.path.basename(sys.argv[0]) + " PIXELWEFT [CASE...]")
    if "STAGE_NET" not in os.environ:
        if not shutil.which("tshark"):
            sys.exit("tshark is missing (Tools/packages.txt)")
        os.execv(STAGE_NET, [STAGE_NET, "-2", "desk", sys.executable, "-B", *sys.argv])
    _executable = pathlib.Path(sys.argv[1]).resolve()
    unittest.main(argv=[sys.argv[0], *sys.argv[2:]], verbosity=2)


def wait(condition, seconds, what):
    """The first true value of condition(), which is called until the time is over: then AssertionError."""
    end = time.monotonic() + seconds
    while not (value := condition()):
        if time.monotonic() > end:
            raise AssertionError(f"not within {seconds} s: {what() if callable(what) else what}")
        time.sleep(0.02)
    return value


# --- hosts -------------------------------------------------------------------------------------------------------


@contextlib.contextmanager
def standing_on(host):
    """Sockets that are opened inside belong to that host of the stage for good."""
    libc = ctypes.CDLL(None, use_errno=True)

    def enter(name):
        with open(f"/proc/{os.environ['STAGE_PID_' + name]}/ns/net", "rb") as network:
            if libc.setns(network.fileno(), 0x40000000) != 0:
                raise OSError(ctypes.get_errno(), "setns")

    enter(host)
    try:
        yield
    finally:
        enter("desk")


def on(host, *command, **options):
    """Runs a command on a host of the stage to its end; a status other than 0 is an error."""
    options = {"input": b""} | options
    return subprocess.run([STAGE_NET, host, *map(str, command)], check=True, **options)


def open_socket(host, address="", port=0):
    """A UDP socket on that host that may send to broadcast addresses."""
    with standing_on(host):
        opened = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    opened.setsockopt(socket.SOL_SOCKET, socket.SO_BROADCAST, 1)
    opened.bind((address, port))
    return opened


class Process:
    """A process of the test, on any host of the stage. Case.started() ends it with the test."""

    def __init__(self, command, **options):
        self.popen = subprocess.Popen(list(map(str, command)), stdin=subprocess.DEVNULL, **options)

    def running(self):
        return self.popen.poll() is None

    def end(self, how=signal.SIGTERM, seconds=20):
        """The exit status; negative is the signal that ended it."""
        if self.running():
            self.popen.send_signal(how)
        return self.status(seconds)

    def status(self, seconds=20):
        try:
            return self.popen.wait(seconds)
        except subprocess.TimeoutExpired:
            self.popen.kill()
            self.popen.wait()
            raise AssertionError(f"still running after {seconds} s: {self.popen.args}") from None


def add_addresses(host, addresses):
    """Gives the host's art0 further addresses, each for a node more."""
    lines = "".join(f"addr add {address}/8 dev art0\n" for address in addresses)
    on(host, "ip", "-batch", "-", input=lines.encode())


# --- the program -------------------------------------------------------------------------------------------------


class Home:
    """Folders of one user of the program, empty at first."""

    def __init__(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="pixelweft-"))
        self.data = self.folder / "data"
        self.config = self.folder / "config"
        for folder in (self.folder, self.data, self.config):
            folder.mkdir(exist_ok=True)
        self.log = self.data / "LoomTap2" / "PixelWeftLog.txt"
        self.document = self.data / "LoomTap2" / "PixelWeft" / "mapping.wfm"
        self.settings = self.config / "Zentri" / "PixelWeft3.conf"

    def put_document(self, document, path=None):
        path = path or self.document
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(document.to_bytes())

    def put_settings(self, **keys):
        self.settings.parent.mkdir(parents=True, exist_ok=True)
        self.settings.write_text("[General]\n" + "".join(f"{key}={value}\n" for key, value in keys.items()))

    def use_test_picture(self):
        """The program shows the test picture and sends on the network 2.X.X.X."""
        picture = self.folder / "picture.bmp"
        write_picture(picture)
        self.put_settings(visualFile=picture, usrImgFile=picture, imgSelVal=2, network="2.X.X.X")

    def remove(self):
        shutil.rmtree(self.folder, ignore_errors=True)


class Program(Process):
    """The real executable on the host "desk", as an ordinary user without any right over the network."""

    def __init__(self, home, executable=None, log=None, said="said.txt", platform="offscreen", arguments=()):
        self.log = log or home.log
        self.said = home.folder / said
        self._older_log = self.log.stat().st_ino if self.log.exists() else None
        of_the_user = ("XDG_", "DISPLAY", "WAYLAND_DISPLAY")
        environment = {key: value for key, value in os.environ.items() if not key.startswith(of_the_user)} | {
            "HOME": str(home.folder),
            "XDG_DATA_HOME": str(home.data),
            "XDG_CONFIG_HOME": str(home.config),
            "XDG_CACHE_HOME": str(home.folder / "cache"),
            "QT_QPA_PLATFORM": platform,
            "LC_ALL": "C.UTF-8",
            "LANGUAGE": "en",
        }
        with open(self.said, "ab") as said:
            super().__init__([STAGE_NET, "-u", "desk", executable or _executable, *arguments], env=environment,
                             stdout=said, stderr=said, cwd=home.folder)

    def log_text(self):
        """The log of this run, not of the one before."""
        with contextlib.suppress(FileNotFoundError):
            if self.log.stat().st_ino != self._older_log:
                return self.log.read_text(encoding="utf-8", errors="replace")
        return ""

    def wait_for_log(self, text, seconds=20, count=1):
        wait(lambda: self.log_text().count(text) >= count or not self.running(), seconds,
             lambda: f"'{text}' in the log:\n{self.log_text()}")
        if self.log_text().count(text) < count:
            raise AssertionError(f"ended without '{text}' in the log:\n{self.log_text()}{self.said.read_text()}")


def beside_program(name):
    """Another executable of the same build."""
    return _executable.parent / name


def copy_of_program(folder, mode=None):
    """The executable in a folder of its own, with a mode.xml of that value or with none."""
    copy = pathlib.Path(shutil.copy(_executable, folder))
    if mode:
        (folder / "mode.xml").write_text(f'<Mode value="{mode}" />\n')
    return copy


# --- the wire ----------------------------------------------------------------------------------------------------


KINDS = {0x2000: "poll", 0x2100: "reply", 0x5000: "dmx"}


class Packet(typing.NamedTuple):
    """One Art-Net packet as the dissector read it; `payload` is what UDP carried."""

    time: float
    source: str
    source_port: int
    destination: str
    kind: str  # of KINDS
    universe: int
    length: int
    malformed: bool
    payload: bytes

    @property
    def channels(self):
        return self.payload[18:]


class Wire:
    """tshark on an adapter of a host: all Art-Net packets that pass there, once it captures."""

    FIELDS = ("frame.time_epoch", "ip.src", "udp.srcport", "ip.dst", "artnet.header.opcode", "artnet.output.universe",
              "artnet.output.length", "_ws.malformed", "udp.payload")

    def __init__(self, host="rig", adapter="art0"):
        command = [STAGE_NET, host, "tshark", "-n", "-l", "-Q", "-i", adapter, "-f", f"udp port {ART_NET_PORT}", "-T",
                   "fields"]
        for field in self.FIELDS:
            command += ["-e", field]
        self._process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                         stderr=subprocess.DEVNULL, text=True)
        self._packets = []
        self._captures = threading.Event()
        threading.Thread(target=self._read, daemon=True).start()

    def wait_until_it_captures(self, host, adapter):
        """It does when it hears what is sent on its own host."""
        network = {"art0": BROADCAST, "art1": "10.255.255.255"}[adapter]
        with open_socket(host) as probe:
            wait(lambda: probe.sendto(b"probe", (network, ART_NET_PORT)) and self._captures.wait(0.1), 30,
                 f"tshark captures on {host} {adapter}")

    def _read(self):
        for line in self._process.stdout:
            time_, source, port, destination, opcode, universe, length, malformed, payload = line.rstrip(
                "\n").split("\t")
            if not opcode:
                self._captures.set()
                continue
            kind = KINDS.get(int(opcode, 0), opcode)
            self._packets.append(
                Packet(float(time_), source, int(port), destination, kind, int(universe or "-1"), int(length or "-1"),
                       bool(malformed), bytes.fromhex(payload)))

    def packets(self, which=None, since=0.0):
        """Those for which which(packet) holds; `since` is a time as time.time() gives it."""
        return [packet for packet in self._packets[:] if packet.time >= since and (not which or which(packet))]

    def wait_for(self, count, which, seconds, what, since=0.0):
        wait(lambda: len(self.packets(which, since)) >= count, seconds,
             lambda: f"{count} of: {what}; there were {len(self.packets(which, since))}")
        return self.packets(which, since)

    def end(self):
        self._process.terminate()
        self._process.wait()
        self._process.stdout.close()


def from_program(packet):
    """A filter: sent by the program's machine."""
    return packet.source in (DESK, "10.0.0.1")


def dmx(universe=None, to=None):
    """A filter: ArtDmx of the program, of that universe, to that address."""
    return lambda p: (p.kind == "dmx" and from_program(p) and universe in (None, p.universe) and to in
                      (None, p.destination))


def send_dmx(sender, to, universe, channels):
    """ArtDmx from a socket of the test, written from the published layout."""
    head = b"Art-Net\0" + struct.pack("<HBBBBHBB", 0x5000, 0, 14, 0, 0, universe, len(channels) >> 8,
                                      len(channels) & 255)
    sender.sendto(head + bytes(channels), (to, ART_NET_PORT))


class Case(unittest.TestCase):
    """A case with a home of its own. Each process and socket that it starts ends with it, by its own id."""

    def setUp(self):
        self.home = Home()
        self.addCleanup(self.home.remove)

    def tearDown(self):
        errors = self._outcome.result.errors + self._outcome.result.failures
        if any(test is self for test, _ in errors):
            said = self.home.folder / "said.txt"
            for text in (self.home.log, said):
                if text.exists():
                    lines = text.read_text(errors="replace").splitlines()[-40:]
                    print(f"--- {text.name}, its end:", *lines, sep="\n", file=sys.stderr)

    def started(self, process):
        self.addCleanup(process.end, signal.SIGKILL)
        return process

    def start(self, **options):
        """The program."""
        return self.started(Program(self.home, **options))

    def rig(self, *arguments):
        """The rig (Tools/Rig) on the host "rig", with the arguments of its command line."""
        return self.started(Process([STAGE_NET, "rig", beside_program("rig"), *arguments]))

    def watch(self, host="rig", adapter="art0"):
        wire = Wire(host, adapter)
        self.addCleanup(wire.end)
        wire.wait_until_it_captures(host, adapter)
        return wire

    def socket_on(self, host, address="", port=0):
        opened = open_socket(host, address, port)
        self.addCleanup(opened.close)
        opened.settimeout(5)
        return opened

    def assertRate(self, packets, wanted):
        """So many a second. A busy machine may be late or leave one out, but what comes keeps to a grid of that rate:
        where the rate is a little off, packets come to lie anywhere in its period."""
        found = (len(packets) - 1) / (packets[-1].time - packets[0].time)
        self.assertTrue(0.65 * wanted <= found <= 1.15 * wanted,
                        f"{found:.1f} packets a second instead of about {wanted}")
        phases = [(packet.time - packets[0].time) * wanted % 1 for packet in packets]
        together = max(sum((phase - start) % 1 <= 0.4 for phase in phases) for start in phases) / len(phases)
        self.assertGreater(together, 0.7, f"the share within 4 tenths of the period of {1000 / wanted:.0f} ms")
