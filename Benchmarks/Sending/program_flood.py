# SPDX-License-Identifier: MIT
"""How a flood moves the frames of the whole program, as a rig sees them: `program_flood.py PIXELWEFT SENDINGBENCHMARK`.

32 universes at 40 frames a second leave the real executable by broadcast, before, during and after ten seconds
of 100,000 forged packets a second (polls, replies of ever new nodes, DMX that nobody asked for, garbage). The
times are those of the rig's system. Wants a quiet machine of two processors or more: one is busy with the flood.
"""

import os
import pathlib
import socket
import statistics
import struct
import subprocess
import sys
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parents[2] / "Tests" / "EndToEnd"))

import stage  # pylint: disable=wrong-import-position
from document import Document  # pylint: disable=wrong-import-position

UNIVERSES = 32
TICK = 0.025
BOUND = 0.003
SO_TIMESTAMPNS, SO_RCVBUFFORCE = 35, 33


def ear():
    """A socket on the rig that notes when each datagram came in."""
    with stage.standing_on("rig"):
        listener = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        listener.setsockopt(socket.SOL_SOCKET, SO_RCVBUFFORCE, 1 << 23)
    listener.setsockopt(socket.SOL_SOCKET, SO_TIMESTAMPNS, 1)
    listener.bind(("", stage.ART_NET_PORT))
    listener.settimeout(0.2)
    return listener


def listen(listener, seconds):
    """When universe 0 came in, by the system's clock, and how many ArtDmx there were of all."""
    times, count = [], 0
    end = time.monotonic() + seconds
    while time.monotonic() < end:
        try:
            packet, extra, _, source = listener.recvmsg(2048, 64)
        except TimeoutError:
            continue
        if source[0] != stage.DESK or packet[8:10] != b"\0\x50":
            continue
        count += 1
        if packet[14:16] == b"\0\0":
            second, nanosecond = struct.unpack("=qq", extra[0][2][:16])
            times.append(second + nanosecond / 1e9)
    return times, count


def report(what, times, count, seconds):
    moves = sorted(abs(later - earlier - TICK) for earlier, later in zip(times, times[1:]))
    within = sum(move <= BOUND for move in moves) / len(moves)
    print(f"{what:9} {len(times) / seconds:5.1f} frames/s, {count / seconds / UNIVERSES:5.1f} for each universe; "
          f"moved by {statistics.median(moves) * 1e3:.2f} ms (median), {moves[len(moves) * 99 // 100] * 1e3:.2f} ms "
          f"(99 of 100), {moves[-1] * 1e3:.2f} ms (worst); {within:.2%} within {BOUND * 1e3:.0f} ms")


def memory(program):
    status = pathlib.Path(f"/proc/{program.popen.pid}/status").read_text()
    return int(status.split("VmRSS:")[1].split()[0])


def main():
    home = stage.Home()
    home.put_settings(network="2.X.X.X")
    document = Document(merging=dict(Enabled=1, FromStartSubnet=4, FromStartUniverse=0, ConsecutiveUniverses=1,
                                     ToStartSubnet=5, ToStartUniverse=0, MergerDMXSource="PixelWeft"))
    document.fixture("Strip", 4, 1, "RGB", [1, 4, 7, 10])
    for universe in range(UNIVERSES):
        document.element("Strip", 2, 1, 4, 1, universe=universe, channel=500)
    home.put_document(document)
    listener = ear()
    program = stage.Program(home, executable=pathlib.Path(sys.argv[1]).resolve())
    try:
        program.wait_for_log("Entering Using local socket state")
        listen(listener, 3)
        report("quiet", *listen(listener, 10), 10)
        lines, before = program.log_text().count("\n"), memory(program)
        with subprocess.Popen([sys.argv[2], "flood", "11"]) as flood:
            listen(listener, 0.5)
            report("flooded", *listen(listener, 10), 10)
            after = memory(program)
            flood.wait()
        print(f"{(program.log_text().count(chr(10)) - lines) / 11:.1f} log lines a second, "
              f"{after - before:+d} KiB of memory in the flood")
        listen(listener, 1)
        report("afterwards", *listen(listener, 10), 10)
    finally:
        program.end()
        home.remove()


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit("usage: program_flood.py PIXELWEFT SENDINGBENCHMARK")
    if "STAGE_NET" not in os.environ:
        os.execv(stage.STAGE_NET, [stage.STAGE_NET, "-2", "desk", sys.executable, "-B", *sys.argv])
    main()
