#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""picture.py BUILD-FOLDER [--check]: draws Docs/pictures/rooms.svg from what the build links.

An arrow goes down from a room to one that it links. Arrows that follow from a longer way down are left out. --check writes nothing and fails when the picture is not what would be drawn."""
import sys
from html import escape
from pathlib import Path

from graph import SOURCES, read_rooms

BOX, LANE, GAP, ROW, HEIGHT, MARGIN = 120, 12, 24, 86, 34, 24
PICTURE = SOURCES.parent / "Docs" / "pictures" / "rooms.svg"


def direct_arrows(rooms):
    """(upper, lower) for each link that no longer way gives too."""

    def below(name):
        return set().union(*({low} | below(low) for low in rooms[name].links))

    return sorted(
        (name, low)
        for name, room in rooms.items()
        for low in room.links
        if not any(low in below(other) for other in room.links if other != low)
    )


def rows_of(rooms, arrows):
    """The row of each room, 0 at the top: a room stands right below the lowest one that links it."""
    users = {name: [upper for upper, lower in arrows if lower == name] for name in rooms}

    def row(name):
        return 1 + max((row(user) for user in users[name]), default=-1)

    return {name: row(name) for name in rooms}


def places(rooms, arrows):
    """The centre of each room's box, and for each arrow the points between the boxes that it runs through."""
    row = rows_of(rooms, arrows)
    ways = {}  # an arrow over several rows has a place of its own in each row between
    for upper, lower in arrows:
        ways[upper, lower] = [(upper, lower, n) for n in range(row[upper] + 1, row[lower])]
    row |= {stop: stop[2] for way in ways.values() for stop in way}
    rows = [sorted((name for name in row if row[name] == n), key=str) for n in range(max(row.values()) + 1)]
    tied = {name: set() for name in row}
    for (upper, lower), way in ways.items():
        for a, b in zip([upper, *way], [*way, lower]):
            tied[a].add(b)
            tied[b].add(a)
    x = {}

    def spread(names):
        widths = [BOX if name in rooms else LANE for name in names]
        left = -(sum(widths) + GAP * (len(names) - 1)) / 2
        for name, width in zip(names, widths):
            x[name] = left + width / 2
            left += width + GAP

    for names in rows:
        spread(names)
    for n in range(40):  # settles long before
        for names in rows if n % 2 else rows[::-1]:
            names.sort(key=lambda name: (sum(x[other] for other in tied[name]) / len(tied[name]), str(name)))
            spread(names)
    shift = MARGIN - min(x[name] - BOX / 2 for name in x)
    place = {name: (x[name] + shift, MARGIN + ROW * row[name] + HEIGHT / 2) for name in row}
    return {name: place[name] for name in rooms}, {arrow: [place[s] for s in way] for arrow, way in ways.items()}


def curve(start, stops, end):
    """From the lower edge of one box to the upper edge of another, straight down past the boxes between."""
    bend = (ROW - HEIGHT) * 0.6
    x, y = start[0], start[1] + HEIGHT / 2
    path = f"M{x:.0f} {y:.0f}"
    for next_x, next_y in [*stops, end]:
        top = next_y - HEIGHT / 2
        path += f"C{x:.0f} {y + bend:.0f} {next_x:.0f} {top - bend:.0f} {next_x:.0f} {top:.0f}"
        x, y = next_x, next_y + HEIGHT / 2
        if (next_x, next_y) != end:
            path += f"V{y:.0f}"
    return path


def drawing(rooms):
    arrows = direct_arrows(rooms)
    place, ways = places(rooms, arrows)
    width = max(x for x, _ in place.values()) + BOX / 2 + MARGIN
    height = max(y for _, y in place.values()) + HEIGHT / 2 + MARGIN
    lines = [
        f'<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {width:.0f} {height:.0f}"'
        ' font-family="sans-serif" font-size="13">',
        "<title>The rooms and what each one links</title>",
        '<defs><marker id="head" viewBox="0 0 8 8" refX="8" refY="4" markerWidth="8" markerHeight="8"'
        ' orient="auto"><path d="M0 0L8 4L0 8z" fill="#567"/></marker></defs>',
        f'<rect width="{width:.0f}" height="{height:.0f}" fill="#fff"/>',
    ]
    for (upper, lower), stops in ways.items():
        path = curve(place[upper], stops, place[lower])
        lines.append(f'<path d="{path}" fill="none" stroke="#567" marker-end="url(#head)"/>')
    for name, (x, y) in sorted(place.items()):
        lines.append(
            f'<rect x="{x - BOX / 2:.0f}" y="{y - HEIGHT / 2:.0f}" width="{BOX}" height="{HEIGHT}" rx="5"'
            ' fill="#eef3f8" stroke="#567"/>'
        )
        lines.append(
            f'<text x="{x:.0f}" y="{y + 5:.0f}" text-anchor="middle">{escape(rooms[name].folder)}</text>'
        )
    return "\n".join([*lines, "</svg>", ""])


svg = drawing(read_rooms(sys.argv[1]))
if sys.argv[2:] != ["--check"]:
    PICTURE.write_text(svg)
elif not PICTURE.exists() or PICTURE.read_text() != svg:
    sys.exit(f"{PICTURE.name} is not up to date: run Tools/Rooms/picture.py {sys.argv[1]}")
