# SPDX-License-Identifier: MIT
"""What the whole program costs: `program_cpu.py PIXELWEFT SENDINGBENCHMARK [TURNS]`.

254 universes of 170 pixels at 40 frames a second leave the real executable by broadcast, with merging on, beside a
bare loop that samples as many pixels by a table and sends them. They run in turns of two seconds, one stopped while
the other goes on. For each turn: the CPU time of all threads of the process for each datagram, as the system counts
both; the result is the median of the ratios of neighbouring turns.
"""

import os
import pathlib
import signal
import statistics
import subprocess
import sys
import time

sys.path.append(str(pathlib.Path(__file__).resolve().parents[2] / "Tests" / "EndToEnd"))

import stage  # pylint: disable=wrong-import-position
from document import HEIGHT, WIDTH, Document  # pylint: disable=wrong-import-position

UNIVERSES, PIXELS = 254, 170
TURN = 2  # seconds


def sent_datagrams():
    """By this host so far."""
    lines = pathlib.Path("/proc/net/snmp").read_text().splitlines()
    names, values = [line.split() for line in lines if line.startswith("Udp:")]
    return int(values[names.index("OutDatagrams")])


def cpu_seconds(process):
    """Of all threads of a process: its clock by the numbering of Linux."""
    return time.clock_gettime(~process << 3 | 2)


def turn(process, frame):
    """One turn of a stopped process: CPU microseconds for each datagram, and frames of so many a second."""
    os.kill(process, signal.SIGCONT)
    time.sleep(0.2)
    began, cpu, sent = time.monotonic(), cpu_seconds(process), sent_datagrams()
    time.sleep(TURN)
    sent, cpu, seconds = sent_datagrams() - sent, cpu_seconds(process) - cpu, time.monotonic() - began
    os.kill(process, signal.SIGSTOP)
    return cpu * 1e6 / sent, sent / frame / seconds


def document():
    """The universe that is merged adds one packet to each frame."""
    show = Document(merging=dict(Enabled=1, FromStartSubnet=15, FromStartUniverse=15, ConsecutiveUniverses=1,
                                 ToStartSubnet=15, ToStartUniverse=14, MergerDMXSource="PixelWeft"))
    show.fixture("Bar", PIXELS, 1, "RGB", range(1, 3 * PIXELS, 3))
    for universe in range(UNIVERSES):
        show.element("Bar", 0, universe % HEIGHT, WIDTH, 1, universe=universe, channel=1)
    return show


def main():
    executable, benchmark = (pathlib.Path(path).resolve() for path in sys.argv[1:3])
    turns = int(sys.argv[3]) if len(sys.argv) > 3 else 15
    home = stage.Home()
    home.use_test_picture()
    home.put_document(document())
    listener = stage.open_socket("rig", port=stage.ART_NET_PORT)  # nobody is refused
    program = stage.Program(home, executable=executable)
    try:
        program.wait_for_log("Entering Using local socket state")
        time.sleep(3)
        with subprocess.Popen([benchmark, "bare", str(UNIVERSES), str(PIXELS)]) as bare:
            time.sleep(1)
            for process in (program.popen.pid, bare.pid):
                os.kill(process, signal.SIGSTOP)
            pairs = [(turn(bare.pid, UNIVERSES), turn(program.popen.pid, UNIVERSES + 1)) for _ in range(turns)]
            os.kill(bare.pid, signal.SIGCONT)
            bare.terminate()
        os.kill(program.popen.pid, signal.SIGCONT)
        for what, results in zip(("bare loop", "program"), zip(*pairs)):
            cost, rate = (statistics.median(values) for values in zip(*results))
            print(f"{what:9} {cost:5.2f} us a packet, {rate:5.1f} frames/s")
        ratios = sorted(ours[0] / theirs[0] for theirs, ours in pairs)
        print(f"the program costs {statistics.median(ratios):.2f} times the bare loop "
              f"({ratios[0]:.2f} to {ratios[-1]:.2f})")
    finally:
        program.end()
        listener.close()
        home.remove()


if __name__ == "__main__":
    if len(sys.argv) not in (3, 4):
        sys.exit("usage: program_cpu.py PIXELWEFT SENDINGBENCHMARK [TURNS]")
    if "STAGE_NET" not in os.environ:
        os.execv(stage.STAGE_NET, [stage.STAGE_NET, "-2", "desk", sys.executable, "-B", *sys.argv])
    main()
