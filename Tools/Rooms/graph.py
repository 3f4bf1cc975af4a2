# SPDX-License-Identifier: MIT
"""The rooms under Sources/ and what each one links, as the configured build wrote it down."""
from dataclasses import dataclass
from graphlib import TopologicalSorter
from pathlib import Path

SOURCES = Path(__file__).resolve().parents[2] / "Sources"


@dataclass(frozen=True)
class Room:
    name: str  # of the target: UIEditor
    folder: str  # under Sources/: UI/Editor
    links: frozenset  # names of the rooms that its CMakeLists.txt names


def read_rooms(build):
    """Every room by its name, from rooms.txt in the build folder. Raises when rooms link in a circle."""
    lines = [line.split("|") for line in (Path(build) / "rooms.txt").read_text().splitlines()]
    names = {head.split()[0] for head, _, _ in lines}
    rooms = {
        head.split()[0]: Room(*head.split(), frozenset((public + ";" + private).split(";")) & names)
        for head, public, private in lines
    }
    TopologicalSorter({room.name: room.links for room in rooms.values()}).prepare()
    return rooms
