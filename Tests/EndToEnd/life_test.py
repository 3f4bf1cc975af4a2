# SPDX-License-Identifier: MIT
"""How the program starts and ends, and where it keeps its files."""

import re
import signal
import subprocess
import sys
import time

import screen
import stage
from document import STRIP, strip_document
from stage import BROADCAST, dmx

HISTORY = "loghistory"
LOG = "PixelWeftLog.txt"


class Life(stage.Case):

    def setUp(self):
        super().setUp()
        self.home.use_test_picture()

    def history(self):
        folder = self.home.log.parent / HISTORY
        return {path.name: path.read_text() for path in folder.iterdir()}

    def test_a_second_start_disturbs_nothing(self):
        self.home.put_document(strip_document())
        wire = self.watch()
        first = self.start()
        wire.wait_for(5, dmx(0, BROADCAST), 30, "frames of the first")
        names = {path.name for path in self.home.log.parent.rglob("*")}

        again = time.time()
        second = self.start(said="second.txt")
        self.assertEqual(0, second.status(seconds=10))
        self.assertEqual("", second.said.read_text(), "it ends without a word")
        self.assertEqual(names, {path.name for path in self.home.log.parent.rglob("*")})
        self.assertEqual({}, self.history(), "the log of the first is not moved to the history")
        frames = wire.wait_for(15, dmx(0), 10, "further frames", since=again)
        self.assertLess(max(b.time - a.time for a, b in zip(frames, frames[1:])), 1, "no frame is missing")
        self.assertTrue(first.running())

        # When the first has ended, however that was, the next may start.
        first.end(signal.SIGKILL)
        third = time.time()
        self.start()
        wire.wait_for(5, dmx(0), 30, "frames of the third", since=third)

    def test_files_go_to_the_program_that_runs_or_starts(self):
        """It asks about each, and of a stranger's message it only says in the log that there was one."""
        self.home.put_document(strip_document())
        names = ["starting.wfm", "Ünser Plan.WFM"]
        for universe, name in enumerate(names, 1):
            self.home.put_document(strip_document(universe=universe), self.home.folder / name)
        wire = self.watch()
        first = self.start(platform=screen.PLATFORM, arguments=["-artnetdebug", names[0], "--", "none.txt"])
        window = screen.Screen()
        self.addCleanup(window.close)

        def agree(universe):
            first.wait_for_log("Asking whether to import", count=universe)
            window.settle()
            window.press("Tab")
            window.tap("Return")
            wire.wait_for(1, dmx(universe, BROADCAST), 20, f"frames of universe {universe}")

        agree(1)
        to_program = ("import socket, sys\ns = socket.socket(socket.AF_UNIX, socket.SOCK_DGRAM)\n"
                      "s.sendto(sys.stdin.buffer.read(), b'\\0Global\\\\PixelWeft')")
        head, file = b"PixelWeft opens\0", bytes(self.home.folder / names[1]) + b"\0"
        ours, stranger = [sys.executable, "-c", to_program], ["setpriv", "--reuid", "1234", "--clear-groups"]
        messages = [(ours, b""), (ours, b"junk"), (ours, head[:-1]), (ours, head + file[:-1]), (ours, head + file[1:]),
                    (ours, head + b"/etc/passwd\0" + file), (ours, (head + file).ljust(70000, b"\0")),
                    (ours, head + bytes(60000)), (stranger + ours, head + file)]
        for count, (command, message) in enumerate(messages, 1):
            subprocess.run(command, input=message, check=True)
            first.wait_for_log("is not of a start of this program", count=count)

        opened = self.home.document.read_bytes()
        window.tap("Control", "s")
        stage.wait(lambda: self.home.document.read_bytes() != opened, 20, "the imported mapping is saved")
        second = self.start(said="second.txt", arguments=[names[1]])
        self.assertEqual((0, ""), (second.status(seconds=10), second.said.read_text()))
        agree(2)

        # One that hangs holds up no other start, however many come.
        first.popen.send_signal(signal.SIGSTOP)
        for _ in range(15):
            self.assertEqual(0, self.start(said="second.txt", arguments=[names[0]]).status(seconds=5))
        first.popen.send_signal(signal.SIGCONT)

    def test_what_it_says_of_itself(self):
        """Also beside one that runs, and without a display."""
        version = re.search(r"project.* VERSION ([0-9.]+)", (stage.ROOT / "CMakeLists.txt").read_text())[1]
        for argument, said in (("--version", f"pixelweft {version}\n"), ("--help", "Usage: pixelweft ")):
            program = self.start(platform="none", said=argument, arguments=[argument])
            self.assertEqual(0, program.status())
            self.assertTrue(program.said.read_text().startswith(said))

    def test_a_signal_ends_it_in_order_and_the_log_keeps_its_history(self):
        self.home.put_document(strip_document())
        logs = []
        for how in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            program = self.start()
            program.wait_for_log("Entering Using local socket state")
            self.assertIn("*" * 50, program.log_text())
            self.assertEqual({f"{LOG}.{n + 1}": text for n, text in enumerate(reversed(logs))}, self.history())
            self.assertEqual(0, program.end(how))
            self.assertIn("Destroying local ArtNet client", program.log_text())
            logs.append(program.log_text())

    def test_without_a_mode_it_does_not_start(self):
        program = self.start(executable=stage.copy_of_program(self.home.folder))
        self.assertNotEqual(0, program.status())
        self.assertIn("Cannot determine application mode(mode.xml might be missing).", program.said.read_text())
        self.assertEqual([], list(self.home.data.rglob("*")), "nothing was written")

    def test_beside_a_host_with_preferences(self):
        library = self.home.folder / "Library of the show"
        self.home.put_document(strip_document(), library / "PixelWeft" / "mapping.wfm")
        host = self.home.data / "Zentri ReelCommand 5"
        host.mkdir()
        (host / "Zentri ReelCommand_preferences.xml").write_text(
            f'<RMS_Preferences><DATA DMXINTERFACE="ArtNet" LIBRARYROOTFOLDER="{library}" /></RMS_Preferences>')
        wire = self.watch()
        program = self.start(executable=stage.copy_of_program(self.home.folder, "RC"), log=host / LOG)
        frames = wire.wait_for(5, dmx(0), 30, "frames of the document in the host's library")
        self.assertEqual({STRIP}, {p.channels for p in frames})
        program.wait_for_log("Entering Using local socket state")
        self.assertFalse(self.home.document.exists())

    def test_the_first_run_writes_a_document(self):
        self.home.settings.unlink()
        wire = self.watch("rig", "art1")
        program = self.start()
        wire.wait_for(1, lambda p: p.kind == "poll" and p.destination == "10.255.255.255", 30,
                      "polls on the first of the networks")
        raw = self.home.document.read_bytes()
        self.assertEqual(b"\xff\xfe", raw[:2])
        text = raw[2:].decode("utf-16-le")
        self.assertEqual(170, text.count("<LEDFixture "), "the document carries the whole library")
        self.assertTrue((self.home.data / "Zentri PixelWeft2" / "LEDFixtureLib.wfl").exists())
        self.assertEqual(
            '<UniverseMerging Enabled="0" FromStartSubnet="0" FromStartUniverse="0" ConsecutiveUniverses="1" '
            'ToStartSubnet="1" ToStartUniverse="0" MergerDMXSource="PixelWeft" />\n<ManualNetworkNodes />\n'
            '<Mapping name="Untitled" version="1.0" resolution="100,100" autoUnicast="0" network="10.0.0.1" />\n',
            text.split("</LEDFixtureLibrary>\n")[1])

        # And the next run reads it as it was.
        self.assertEqual(0, program.end())
        second = self.start()
        second.wait_for_log("Entering Using local socket state")
        self.assertEqual(raw, self.home.document.read_bytes())


if __name__ == "__main__":
    stage.run()
