#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Draws Resources/DemoPicture.bmp, Resources/ColourBars.bmp and Resources/DemoPictureCBars.png.

The demo picture has no symmetry: an operator sees at a glance when it is mirrored or turned.
Needs Python 3 and nothing else; takes some seconds. The build doesn't run it.
"""

import colorsys
import functools
import math
import struct
import zlib
from pathlib import Path

RESOURCES = Path(__file__).resolve().parents[2] / "Resources"
WIDTH, HEIGHT = 640, 360


def arc(x, y, radius, start, end, steps=14):
    points = []
    for step in range(steps + 1):
        angle = math.radians(start + (end - start) * step / steps)
        points.append((x + radius * math.cos(angle), y + radius * math.sin(angle)))
    return points


# Strokes of each letter, the baseline at 0 and the top of a capital at 1, and its width.
LETTERS = {
    "P": ([[(0, 0), (0, 1), (.28, 1)] + arc(.28, .74, .26, 90, -90) + [(0, .48)]], .54),
    "i": ([[(0, 0), (0, .62)], [(0, .9), (0, .91)]], 0),
    "x": ([[(0, 0), (.44, .62)], [(0, .62), (.44, 0)]], .44),
    "e": ([[(.02, .32), (.58, .32)] + arc(.3, .31, .29, 0, 318)], .58),
    "l": ([[(0, 0), (0, 1.02)]], 0),
    "W": ([[(0, 1), (.24, 0), (.48, .8), (.72, 0), (.96, 1)]], .96),
    "f": ([[(.14, 0), (.14, .82)] + arc(.34, .82, .2, 180, 75), [(0, .62), (.36, .62)]], .36),
    "t": ([[(.14, .88), (.14, .2)] + arc(.34, .2, .2, 180, 285), [(0, .62), (.36, .62)]], .38),
    "T": ([[(.36, 0), (.36, 1)], [(0, 1), (.72, 1)]], .72),
    "O": ([arc(.48, .5, .48, 0, 360, 32)], .96),
    "L": ([[(0, 1), (0, 0), (.5, 0)]], .5),
    "E": ([[(.52, 1), (0, 1), (0, 0), (.52, 0)], [(0, .52), (.44, .52)]], .52),
    "F": ([[(.52, 1), (0, 1), (0, 0)], [(0, .52), (.44, .52)]], .52),
}


def strokes_of(text, left, baseline, size, gap):
    """Line segments of the text in pixels."""
    segments = []
    for char in text:
        strokes, width = LETTERS[char]
        for stroke in strokes:
            points = [(left + x * size, baseline - y * size) for x, y in stroke]
            segments += list(zip(points, points[1:]))
        left += (width + gap) * size
    return segments


def distance(x, y, segment):
    (ax, ay), (bx, by) = segment
    dx, dy = bx - ax, by - ay
    length = dx * dx + dy * dy
    along = 0 if length == 0 else max(0, min(1, ((x - ax) * dx + (y - ay) * dy) / length))
    return math.hypot(x - ax - along * dx, y - ay - along * dy)


def blend(below, top, share):
    share = max(0.0, min(1.0, share))
    return tuple(b + (a - b) * share for b, a in zip(below, top))


def background(x, y):
    u, v = x / WIDTH, y / HEIGHT
    hue = (0.50 + 0.56 * u + 0.06 * math.sin(3.1 * v + 2 * u)) % 1
    value = 0.88 - 0.50 * v + 0.06 * math.sin(5 * u + 1)
    return colorsys.hsv_to_rgb(hue, 0.80 - 0.22 * (1 - v) ** 2, value)


def disc(colour, x, y):
    away = math.hypot(x - 500, y - 118)
    glow = math.exp(-max(0, away - 58) / 34) * 0.75
    colour = blend(colour, (1.0, 0.80, 0.38), glow)
    return blend(colour, blend((1.0, 0.97, 0.74), (1.0, 0.62, 0.22), (y - 60) / 118), 58.5 - away)


# Threads of the weave: height at the left edge, rise to the right, swing, phase, half width, hue.
THREADS = [
    (226, -60, 34, 0.2, 11, 0.50), (228, -64, 36, 2.1, 12, 0.90), (230, -58, 34, 4.2, 11, 0.13),
]


def middle_of(thread, x):
    height, rise, swing, phase, _, _ = thread
    return height + rise * x / WIDTH + swing * math.sin(x / 82 + phase)


def crossings(first, second):
    gaps = [middle_of(first, x) - middle_of(second, x) for x in range(-200, WIDTH + 200)]
    return [x - 200 for x in range(1, len(gaps)) if (gaps[x - 1] < 0) != (gaps[x] < 0)]


CROSSINGS = {(i, j): crossings(THREADS[i], THREADS[j])
             for i in range(len(THREADS)) for j in range(i)}


def above(i, j, x):
    """1 when thread i lies on thread j: as in cloth, they take turns from crossing to crossing."""
    if i < j:
        return -above(j, i, x)
    places = CROSSINGS[i, j]
    nearest = min(range(len(places)), key=lambda k: abs(places[k] - x), default=0)
    return 1 if (nearest + i + j) % 2 else -1


def weave(colour, x, y):
    near = []
    for index, thread in enumerate(THREADS):
        _, rise, swing, phase, half, _ = thread
        slope = rise / WIDTH + swing / 82 * math.cos(x / 82 + phase)
        away = abs(y - middle_of(thread, x)) / math.hypot(1, slope)
        if away < half + 10:
            near.append((index, away))
    near.sort(key=functools.cmp_to_key(lambda a, b: above(a[0], b[0], x)))
    for index, away in near:
        half, hue = THREADS[index][4:]
        shadow = math.exp(-max(0, away - half) / 3.5) * 0.38
        colour = blend(colour, (0.03, 0.03, 0.12), shadow)
        round_ = math.sqrt(max(0.0, 1 - (away / half) ** 2))
        thread = colorsys.hsv_to_rgb(hue, 0.74 - 0.25 * round_, 0.52 + 0.46 * round_)
        colour = blend(colour, thread, half + 0.5 - away)
    return colour


def draw_strokes(pixels, segments, half, ink, halo):
    points = [point for segment in segments for point in segment]
    margin = int(half + 4 * halo) + 2
    left, right = min(p[0] for p in points), max(p[0] for p in points)
    top, bottom = min(p[1] for p in points), max(p[1] for p in points)
    for y in range(max(0, int(top) - margin), min(HEIGHT, int(bottom) + margin)):
        for x in range(max(0, int(left) - margin), min(WIDTH, int(right) + margin)):
            away = min(distance(x + .5, y + .5, segment) for segment in segments)
            dark = math.exp(-max(0, away - half) / halo) * 0.55
            pixels[y][x] = blend(pixels[y][x], (0.04, 0.02, 0.14), dark)
            pixels[y][x] = blend(pixels[y][x], ink, half + 0.5 - away)


def demo_picture():
    pixels = [[weave(disc(background(x, y), x, y), x, y) for x in range(WIDTH)]
              for y in range(HEIGHT)]
    white = (1, 1, 1)
    draw_strokes(pixels, strokes_of("PixelWeft", 36, 334, 60, .24), 4.2, white, 6)
    mark = strokes_of("TOP", 306, 46, 17, .32)
    arrow = [((293, 46), (293, 30)), ((286, 36), (293, 29)), ((300, 36), (293, 29))]
    draw_strokes(pixels, mark + arrow, 1.7, white, 4)
    mark = strokes_of("LEFT", 42, 130, 17, .32)
    arrow = [((18, 121), (33, 121)), ((24, 114), (17, 121)), ((24, 128), (17, 121))]
    draw_strokes(pixels, mark + arrow, 1.7, white, 4)
    return [[tuple(int(max(0, min(1, part)) * 255 + .5) for part in pixel) for pixel in row]
            for row in pixels]


def colour_bars():
    """Eight full bars over a grey wedge and the three primaries fading from black: the eye finds
    a swapped colour or a dead channel at once."""
    full = [(255, 255, 255), (255, 255, 0), (0, 255, 255), (0, 255, 0), (255, 0, 255),
            (255, 0, 0), (0, 0, 255), (0, 0, 0)]
    rows = []
    for y in range(HEIGHT):
        row = []
        for x in range(WIDTH):
            ramp = x * 255 // (WIDTH - 1)
            if y < 216:
                row.append(full[x * 8 // WIDTH])
            elif y < 252:
                row.append((ramp, ramp, ramp))
            else:
                row.append(tuple(ramp if part == (y - 252) // 36 else 0 for part in range(3)))
        rows.append(row)
    return rows


def bitmap(rows):
    """24 bits, bottom row first; 640 pixels need no padding."""
    data = b"".join(bytes((b, g, r)) for row in reversed(rows) for r, g, b in row)
    info = struct.pack("<IiiHHIIiiII", 40, WIDTH, HEIGHT, 1, 24, 0, len(data), 2835, 2835, 0, 0)
    return b"BM" + struct.pack("<IHHI", 54 + len(data), 0, 0, 54) + info + data


def portable(rows):
    def chunk(kind, data):
        check = struct.pack(">I", zlib.crc32(kind + data))
        return struct.pack(">I", len(data)) + kind + data + check
    lines = b"".join(b"\0" + bytes(part for pixel in row for part in pixel) for row in rows)
    header = struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 2, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(lines, 9))
            + chunk(b"IEND", b""))


if __name__ == "__main__":
    (RESOURCES / "DemoPicture.bmp").write_bytes(bitmap(demo_picture()))
    bars = colour_bars()
    (RESOURCES / "ColourBars.bmp").write_bytes(bitmap(bars))
    (RESOURCES / "DemoPictureCBars.png").write_bytes(portable(bars))
