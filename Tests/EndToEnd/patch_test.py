# SPDX-License-Identifier: MIT
"""pixelweft-patch as scripts use it: its table is read by Python's csv, its sheets by pdftotext, and neither by any
of its own code. Called as `patch_test.py PIXELWEFT-PATCH [CASE...]`. It needs no network."""

import csv
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

from document import HEIGHT, WIDTH, Document

ROOT = pathlib.Path(__file__).resolve().parents[2]
MERGING = dict(Enabled=1, FromStartSubnet=0, FromStartUniverse=4, ConsecutiveUniverses=2, ToStartSubnet=1,
               ToStartUniverse=4)
LONG = "Mothers-in-law of the left balcony, second row, " * 3 + "Schlussstein"

_program = None


class Patch(unittest.TestCase):

    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)
        (self.folder / "home").mkdir()

    def run_tool(self, *arguments, status=0):
        home = str(self.folder / "home")
        environment = dict(PATH=os.environ["PATH"], LC_ALL="C.UTF-8", HOME=home, XDG_DATA_HOME=home + "/data",
                           XDG_CONFIG_HOME=home + "/config")
        # Options of a sanitizer that the program may be built with.
        environment.update((name, value) for name, value in os.environ.items() if name.endswith("SAN_OPTIONS"))
        ran = subprocess.run([_program, *map(str, arguments)], env=environment, cwd=self.folder, capture_output=True,
                             timeout=60)
        self.assertEqual(status, ran.returncode, ran)
        self.assertEqual([], list((self.folder / "home").iterdir()), "nothing is written but what is asked for")
        return ran

    def put(self, document, name="show.wfm"):
        (self.folder / name).write_bytes(document if isinstance(document, bytes) else document.to_bytes())
        return name

    def rows(self, document):
        self.run_tool(self.put(document), "--csv", "patch.csv")
        with open(self.folder / "patch.csv", newline="", encoding="utf-8") as file:
            return list(csv.DictReader(file, strict=True))

    def pages(self, *options, name="show.wfm"):
        self.run_tool(name, "--pdf", "patch.pdf", *options)
        text = subprocess.run(["pdftotext", "-layout", "patch.pdf", "-"], cwd=self.folder, check=True,
                              capture_output=True, text=True).stdout
        return text.split("\f")[:-1]

    def test_the_table_has_what_the_document_has(self):
        texts = ["ELAR-1", 'He said "left", twice', "=SUM(A1)", "-1 spare; +X", "Bühne, Gasse 2 ♪", "a\nb", "#"]
        document = Document(merging=MERGING)
        document.fixture("Bar, long", 4, 2, "RGB", [1, 4, 7, 10, 13, 16, 19, 22], channel_count=30)
        document.fixture("Nothing", 1, 1, "RGB", [0])
        # Universe and channel, then universe and channels as they come out, and the node there.
        sent = [("1", "4", "20"), ("1", "5", "21"), ("0", "3", "3"), ("0", "6", "6"), ("15", "15", "255")]
        places = [(4, 1, ""), (5, 100, "2.0.0.10"), (3, 490, "2.0.0.10"), (6, 513, ""), (255, 1, ""), (4, 31, ""),
                  (0, 1, "")]
        for i, (text, (universe, channel, node)) in enumerate(zip(texts, places)):
            document.element("Nothing" if text == "#" else "Bar, long", x=1 + i, y=2.25, width=4, height=1.5,
                             universe=universe, channel=channel, to=node or "Auto", node_name="Left" if node else "",
                             rotation=45 * i, flip_horizontal=i % 2 == 1, flip_vertical=i == 2, description=text)
        rows = self.rows(document)
        self.assertEqual(texts, [row["description"] for row in rows])
        self.assertEqual([str(n + 1) for n in range(7)], [row["number"] for row in rows])
        self.assertEqual([("Test", "Bar, long", "4", "2", "30")] * 6 + [("Test", "Nothing", "1", "1", "0")],
                         [tuple(row[key] for key in ("manufacturer", "product", "pixel_columns", "pixel_rows",
                                                     "channels")) for row in rows])
        for i, (row, (universe, channel, node)) in enumerate(zip(rows, places)):
            last = str(channel + 29) if i < 6 else ""
            self.assertEqual((str(universe // 16), str(universe % 16), str(universe), str(channel), last,
                              node or "Auto", "Left" if node else ""),
                             tuple(row[key] for key in ("subnet", "universe", "port_address", "first_channel",
                                                        "last_channel", "node", "node_name")))
            self.assertEqual((f"{2 * (1 + i + 2)}", "6", "8", "3", str(45 * i), str(i % 2), str(int(i == 2))),
                             tuple(row[key] for key in ("centre_x", "centre_y", "width", "height", "rotation",
                                                        "flip_horizontal", "flip_vertical")))
        self.assertEqual([("1", "4", "20", "1", "30", "Auto"), ("1", "5", "21", "100", "129", "Auto"),
                          ("0", "3", "3", "490", "512", "2.0.0.10"), ("",) * 6, ("15", "15", "255", "1", "30", "Auto"),
                          ("1", "4", "20", "31", "60", "Auto"), ("",) * 6],
                         [tuple(row[f"sent_{key}"] for key in ("subnet", "universe", "port_address", "first_channel",
                                                               "last_channel", "node")) for row in rows])
        self.assertEqual(7 + 1, (self.folder / "patch.csv").read_bytes().count(b"\r\n"), "RFC 4180 ends lines so")

        same = self.run_tool("show.wfm", "--csv", "-").stdout
        self.assertEqual((self.folder / "patch.csv").read_bytes(), same)

    def test_numbers_have_a_point_and_what_they_need(self):
        document = Document()
        document.fixture("Strip", 4, 1, "RGB", [1, 4, 7, 10])
        document.element("Strip", x=0.0625, y=-3, width=1 / 3, height=1, universe=0, channel=1, rotation=33)
        row = self.rows(document)[0]
        self.assertEqual(["0.458", "-5", "0.667", "2", "33"],
                         [row[key] for key in ("centre_x", "centre_y", "width", "height", "rotation")])

    def rig(self, count, per_universe=10):
        """Strips of 12 channels, and the runs of channels that stay free on each full universe."""
        document = Document()
        document.fixture("Strip", 4, 1, "RGB", [1, 4, 7, 10])
        for i in range(count):
            document.element("Strip", x=i % 4 * 4, y=i // 4 * HEIGHT * 4 / count, width=4, height=3 * HEIGHT / count,
                             universe=i // per_universe, channel=20 * (i % per_universe) + 1)
        return document, "Free: " + ", ".join(f"{20 * n + 13} - {20 * n + 20}" for n in range(per_universe - 1)) + \
            f", {20 * per_universe - 7} - 512"

    def test_the_sheets_can_be_read_and_searched(self):
        document, free = self.rig(120)
        document.element("Strip", 0, 0, 4, 1, universe=2, channel=1, to="2.0.0.10", node_name="Stage left",
                         description=LONG)
        document.element("Strip", 40, 0, 4, 1, universe=0, channel=5)
        self.put(document, "Main stage.wfm")
        pages = self.pages(name="Main stage.wfm")
        for number, page in enumerate(pages, 1):
            self.assertIn(f"{number}/{len(pages)}", page.replace(" ", ""))
            self.assertIn("Main stage", page.splitlines()[0], "each page says of which document it is")
        text = " ".join(" ".join(pages).split())
        self.assertIn("Elements: 122", text)
        self.assertIn(free, text)
        self.assertIn("Not on the canvas: 122", text)
        self.assertRegex(text, r"2\.0\.0\.10 +Stage left +1 +of the patch")
        for universe in range(12):
            self.assertIn(f"Universe 0/{universe} ({universe}) to all nodes (Auto)", text)
        self.assertIn("Universe 0/2 (2) to Stage left (2.0.0.10)", text)
        # By universe and by element, each with its number: the first of universe 0/1 is the eleventh.
        self.assertRegex(text, r"1 - 12 +11 +Strip-11 +Test Strip +4x1")
        self.assertRegex(text, r"11 +Strip-11 +Test Strip +12 +0/1/1 +Auto")
        self.assertRegex(text, r"5 - 16 ! +122")
        for word in set(LONG.split()):
            self.assertIn(word, text, "a long name goes on in the next line")

    def test_a_free_channel_is_free_for_whoever_receives_it(self):
        document = self.strips((0, 1, "Auto"), (0, 12, "2.0.0.10"), (0, 101, "2.0.0.11"), (1, 1, "Auto"),
                               (4, 31, "2.0.0.10"), merging=MERGING)
        self.put(document)
        pages = [page for page in self.pages() if "By universe" in page]
        text = " ".join(" ".join(pages).split())
        for universe, note, rows in (
            ("0/0 (0) to 2.0.0.10", "Free: 24 - 512 (489 channels) ! shares", "12 - 23 ! 2"),
            ("0/0 (0) to 2.0.0.11", "Free: 13 - 100, 113 - 512 (488 channels) Channels", "101 - 112 3"),
            ("0/0 (0) to all nodes (Auto)", "Free: 24 - 100, 113 - 512 (477 channels) ! shares", "1 - 12 ! 1"),
            ("0/1 (1) to all nodes (Auto)", "Free: 13 - 512 (500 channels) Channels", "1 - 12 4"),
            ("1/4 (20) to all nodes (Auto)", "Merged: the other channels have what is received Channels", "31 - 42 5"),
            ("1/5 (21) to all nodes (Auto)", "Merged: the other channels have what is received", ""),
        ):
            with self.subTest(universe):
                table = text.split(f"Universe {universe} ")[1].split(" Universe ")[0]
                self.assertTrue(table.startswith(note), table)
                self.assertIn(rows, table)

    def test_a_heading_stays_with_its_table(self):
        """The note of free channels takes several lines, and comes to the foot of a page somewhere."""
        for rows in range(20, 36):
            document = Document()
            document.fixture("Dot", 1, 1, "RGB", [1])
            for i in range(rows):
                document.element("Dot", 0, 0, 1, 1, universe=0, channel=1 + 3 * i)
            for i in range(40):
                document.element("Dot", 0, 0, 1, 1, universe=1, channel=1 + 12 * i)
            self.put(document)
            for page in self.pages():
                lines = [line for line in page.splitlines() if line.strip()]
                last = max((n for n, line in enumerate(lines) if line.startswith("Universe 0/")), default=None)
                if last is None:
                    continue
                self.assertTrue(any(re.match(r" *\d+ ?- ?\d+ +\d+ +Dot", line) for line in lines[last:]), lines[last:])

    def test_every_number_is_in_the_drawing_however_many(self):
        for count in (12, 120, 900):
            with self.subTest(count=count):
                self.put(self.rig(count)[0])
                drawing = [page for page in self.pages() if re.search(r"^ *Layout +\d+ ?/ ?\d+$", page, re.M)]
                seen = {int(n) for page in drawing for n in re.findall(r"(?<![\w/])\d+(?![\w/])", page)}
                self.assertEqual(set(), set(range(1, count + 1)) - seen)

    def test_the_drawing_shows_where_the_first_pixel_is(self):
        document = Document()
        document.fixture("First", 4, 2, "R", [1, 2, 3, 4, 5, 6, 7, 8])
        document.fixture("Last", 4, 2, "R", [8, 7, 6, 5, 4, 3, 2, 1])
        # Product, rotation (clockwise), flips, and the place of that pixel about the centre.
        cases = [("First", 0, False, False, (-1.5, -0.5)), ("First", 0, True, False, (1.5, -0.5)),
                 ("First", 0, False, True, (-1.5, 0.5)), ("First", 90, False, False, (0.5, -1.5)),
                 ("First", 180, True, False, (-1.5, 0.5)), ("Last", 90, False, True, (0.5, 1.5))]
        centres = [(x, y) for y in (2, 6) for x in (2.5, 8, 13.5)]
        for n, ((product, rotation, horizontal, vertical, _), (x, y)) in enumerate(zip(cases, centres)):
            document.element(product, x - 2, y - 1, 4, 2, 0, 1 + 8 * n, rotation=rotation, flip_horizontal=horizontal,
                             flip_vertical=vertical)
        self.put(document)
        self.pages()
        subprocess.run("pdftoppm -r 100 -f 2 -l 2 -gray patch.pdf page".split(), cwd=self.folder, check=True)
        _, size, _, pixels = next(self.folder.glob("page*.pgm")).read_bytes().split(b"\n", 3)
        width, height = map(int, size.split())

        def is_dark(x, y):
            return pixels[round(y) * width + round(x)] < 128

        # The frame of the canvas, which is twice as wide as high.
        middle = [x for x in range(width) if is_dark(x, height * 0.5)]
        left, scale = middle[0], (middle[-1] - middle[0]) / WIDTH
        top = next(y for y in range(height // 2, 0, -1) if is_dark(left + 6, y))
        for (_, rotation, *flips, (dx, dy)), (x, y) in zip(cases, centres):
            for sign in (1, -1):
                self.assertEqual(sign == 1, is_dark(left + (x + sign * dx) * scale, top + (y + sign * dy) * scale),
                                 (rotation, flips, sign))

    def test_the_paper_is_what_is_asked_for(self):
        self.put(self.rig(4)[0])
        for options, size in (([], "595 x 842"), (["--paper", "A4"], "595 x 842"),
                              (["--paper", "letter"], "612 x 792")):
            self.pages(*options)
            said = subprocess.run(["pdfinfo", "patch.pdf"], cwd=self.folder, check=True, capture_output=True,
                                  text=True).stdout
            self.assertRegex(re.sub(r"\.\d+", "", said), f"Page size: +{size}")

    def strips(self, *patched, place=(0, 0, 4), product="Strip", cells=(1, 4, 7, 10), **options):
        """Strips on these universes, channels and nodes, at the same x, y and width."""
        document = Document(**options)
        document.fixture(product, len(cells), 1, "RGB", cells)
        x, y, width = place
        for universe, channel, to in patched:
            document.element(product, x, y, width, height=1, universe=universe, channel=channel, to=to)
        return document.to_bytes()

    def test_each_problem_has_a_line_and_the_status_tells_hints_apart(self):
        first, one, other = (0, 1, "Auto"), (0, 1, "2.0.0.10"), (0, 13, "2.0.0.11")
        for line, document in (
            ("", self.strips()),
            ("", self.strips(first, (0, 13, "Auto"))),
            ("Fault: Begins on channel 513, outside of channels 1 to 512 of universe 0/0. Nothing of it is sent. "
             "(Strip-1)", self.strips((0, 513, "Auto"))),
            ("Fault: Reaches beyond universe 0/0: channels 504 to 515, of 512. What lies beyond 512 is not sent. "
             "(Strip-1)", self.strips((0, 504, "Auto"))),
            ("Fault: The end of universe 0/0 splits a pixel on channels 511 to 513. That pixel has a wrong colour, and "
             "what lies beyond 512 is not sent. (Strip-1)", self.strips((0, 508, "Auto"))),
            ("Caution: Channels 12 to 12 of universe 0/0 are written by 2 elements. Of two on one channel, only one is "
             "right. (Strip-1, Strip-2)", self.strips(first, (0, 12, "Auto"))),
            ("Fault: Universe 0/0 has elements with node Auto, and others with node 2.0.0.11. A node that gets both "
             "shows two pictures in turn: it flickers. (Strip-1, Strip-2)", self.strips(first, other)),
            ("Caution: 11 universes go to all nodes, 40 times a second. Each node must take in all of them, and slow "
             "ones fall behind. Choose auto-unicast in the preferences, or nodes for the elements.",
             self.strips(*((universe, 1, "Auto") for universe in range(6, 15)), merging=MERGING)),
            ("Caution: Patched into universe 1/4, on which the merger sends. They overwrite what the merger puts "
             "there. (Strip-1)", self.strips((20, 1, "Auto"), merging=MERGING)),
            ("Caution: Universe 0/4 is merged: its elements cannot have node 2.0.0.10. They are sent on universe 1/4 "
             "to all nodes, or to those that announce it. (Strip-1)", self.strips((4, 1, "2.0.0.10"), merging=MERGING)),
            ("Hint: Universe 0/4 is merged and sent on universe 1/4. Its elements are laid on what is received. "
             "(Strip-1)", self.strips((4, 1, "Auto"), merging=MERGING)),
            ("Hint: Universe 0/0 goes to several nodes: 2.0.0.10, 2.0.0.11. Each gets its own elements. All is well "
             "if it is meant so. (Strip-1, Strip-2)", self.strips(one, other)),
            ('Caution: "Color Block" has changed in the library. These elements are sent as it was before. '
             "(Color Block-1)", self.strips(first, product="Color Block", cells=(1, 4))),
            ("Caution: Lies beside the canvas. All of its pixels are black. (Strip-1)",
             self.strips(first, place=(-10, 0, 4))),
            ("Hint: Hangs over the edge of the canvas. Its pixels beside the canvas are black. (Strip-1)",
             self.strips(first, place=(-2, 0, 4))),
            ("Caution: Is smaller on the canvas than its 4 × 1 pixels. Neighbouring pixels show the same. (Strip-1)",
             self.strips(first, place=(0, 0, 1))),
        ):
            with self.subTest(line):
                status = 1 if line.startswith(("Fault", "Caution")) else 0
                said = self.run_tool(self.put(document), "--check", status=status).stdout.decode()
                self.assertEqual(line + "\n" if line else "", said)
        broken = self.strips(first, (0, 13, "Auto")).replace('channel="13"'.encode("utf-16-le"),
                                                             'channel="xx"'.encode("utf-16-le"))
        self.assertIn(b"Strip-2", self.run_tool(self.put(broken), "--check", status=1).stdout)
        demo = ROOT / "Resources" / "DemoMapping.wfm"
        self.assertEqual(b"", self.run_tool(demo).stdout, "a document alone is checked")
        # A table on the standard output stays a table.
        both = self.run_tool(self.put(self.strips((0, 510, "Auto"))), "--csv", "-", "--check", status=1)
        self.assertEqual(2, both.stdout.count(b"\r\n"))
        self.assertIn(b"Strip-1", both.stderr)
        self.assertNotIn(b"Fault", both.stdout)

    def test_what_it_cannot_do_it_says_and_leaves_no_half_file(self):
        self.put(self.rig(4)[0])
        self.put(b"nothing of ours", "broken.wfm")
        (self.folder / "folder").mkdir()
        (self.folder / "old.csv").write_text("old")
        for arguments, words in (
            (["missing.wfm"], "missing.wfm can't be read"),
            (["broken.wfm", "--csv", "old.csv"], "broken.wfm can't be read"),
            (["show.wfm", "--csv", "no/such/folder/patch.csv"], "folder is gone"),
            (["show.wfm", "--pdf", "folder"], "folder can't be written"),
            (["show.wfm", "--csv", "/dev/full"], "No space left"),
            ([], "Name one document"),
            (["show.wfm", "broken.wfm"], "Name one document"),
            (["show.wfm", "--paper", "A3"], "A4 or letter"),
            (["show.wfm", "--csv", ""], "--csv needs"),
            (["show.wfm", "--svg", "x"], "svg"),
        ):
            with self.subTest(arguments=arguments):
                said = self.run_tool(*arguments, status=2)
                self.assertIn(words, said.stderr.decode())
                self.assertEqual(b"", said.stdout)
        self.assertEqual("old", (self.folder / "old.csv").read_text())
        self.assertEqual({"home", "folder", "old.csv", "show.wfm", "broken.wfm"},
                         {path.name for path in self.folder.iterdir()})
        self.run_tool("show.wfm", "--csv", "/dev/null")
        self.assertTrue(pathlib.Path("/dev/null").is_char_device(), "a device is not replaced by a file")
        self.assertIn(b"--pdf", self.run_tool("--help").stdout)
        self.assertRegex(self.run_tool("--version").stdout, rb"\d+\.\d+")


if __name__ == "__main__":
    if len(sys.argv) < 2:
        sys.exit("usage: patch_test.py PIXELWEFT-PATCH [CASE...]")
    _program = pathlib.Path(sys.argv[1]).resolve()
    unittest.main(argv=[sys.argv[0], *sys.argv[2:]], verbosity=2)
