#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""arrows.py BUILD-FOLDER: judges the includes of Sources/.

A room includes only the rooms that its CMakeLists.txt names, and names no other; every include of ours names
its room; no circle between rooms or between units. A unit is a header with its source. A source without a
header of its own belongs to the units whose members it defines."""
import re
import sys
from graphlib import CycleError, TopologicalSorter

from graph import SOURCES, read_rooms

rooms = read_rooms(sys.argv[1])  # raises for a circle of rooms
room_of = {room.folder: room for room in rooms.values()}
faults, units, used = [], {}, {name: set() for name in rooms}


def room_at(path):
    """The room of a path under Sources/."""
    parts = path.split("/")
    return next((room_of[f] for n in range(len(parts), 0, -1) if (f := "/".join(parts[:n])) in room_of), None)


for file in sorted(path for path in SOURCES.rglob("*") if path.suffix in (".h", ".cpp")):
    path, text = str(file.relative_to(SOURCES)), file.read_text()
    room, includes = room_at(path), re.findall(r'^#include "(.*)"', text, re.M)
    for include in includes:
        if not (target := room_at(include)):
            faults.append(f"{path}: \"{include}\" does not name its room")
        elif target != room:
            used[room.name].add(target.name)
            if target.name not in room.links:
                faults.append(f"{path}: {room.name} includes \"{include}\" and does not link {target.name}")
    owners = [path.rsplit(".", 1)[0]]
    if not file.with_suffix(".h").exists():
        members = set(re.findall(r"^(?:\w.*[\s*&])?(\w+)::~?\w+\(", text, re.M))
        headers = [include[:-2] for include in includes]
        owners = [h for h in headers if h.rsplit("/", 1)[-1] in members and room_at(h) == room] or owners
    for owner in owners:
        units.setdefault(owner, set()).update(include[:-2] for include in includes if include[:-2] != owner)

for room in rooms.values():
    faults += [f"{room.folder}: links {name} and includes nothing of it" for name in room.links - used[room.name]]
while True:  # each circle that is found is reported and cut at one arrow, to find the next
    try:
        TopologicalSorter(units).prepare()
        break
    except CycleError as error:
        circle = error.args[1][::-1]  # graphlib tells it from the used unit to its user
        faults.append("units in a circle: " + " -> ".join(circle))
        units[circle[0]].discard(circle[1])
print("\n".join(faults) or f"{len(units)} units in {len(rooms)} rooms: no forbidden arrow, no circle.")
sys.exit(bool(faults))
