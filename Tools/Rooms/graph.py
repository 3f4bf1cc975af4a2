# SPDX-License-Identifier: MIT
"""The rooms under Sources/ and what each one links, as the configured build wrote it down."""
from dataclasses import dataclass
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[2] / "Sources"


@dataclass(frozen=True)
class Room:
    name: str  # of the target: UIEditor
    folder: str  # under Sources/: UI/Editor
    links: frozenset  # names of the rooms that its CMakeLists.txt names


def read_rooms(build):
    """Every room by its name, from rooms.txt in the build folder."""
    lines = [line.split("|") for line in (Path(build) / "rooms.txt").read_text().splitlines()]
    names = {head.split()[0] for head, _, _ in lines}
    return {
        head.split()[0]: Room(*head.split(), frozenset((public + ";" + private).split(";")) & names)
        for head, public, private in lines
    }


def floors(rooms):
    """The floor of each room: one above the highest room that it links. Raises when rooms link in a circle."""
    found = {}

    def floor(name, above=()):
        if name in above:
            raise ValueError("rooms link in a circle: " + " -> ".join((*above, name)))
        if name not in found:
            found[name] = 1 + max((floor(low, (*above, name)) for low in rooms[name].links), default=-1)
        return found[name]

    for name in rooms:
        floor(name)
    return found
