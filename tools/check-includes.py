#!/usr/bin/env python3
"""Holds the sources against the table of rooms in docs/architecture.md.

Each row of that table names a room's folder, its floor and the rooms that it needs. An include in
quotation marks says the room. It may go to the own room and to those that are needed; what is
needed stands on a lower floor, or on the same one and not in a circle. A room that is needed is
included somewhere and linked, and one that is linked is in the table, so that the table tells just
what is there.
"""

import pathlib
import re
import sys

root = pathlib.Path(__file__).resolve().parent.parent
roots = [root / "module/source", root / "module", root]
errors = []


def fail(text):
    errors.append(text)


class Room:
    def __init__(self, folder, floor, needs):
        self.folder = folder
        self.floor = floor
        self.needs = needs
        self.used = set()
        self.library = ""
        self.links = set()


def read_table():
    """The rooms by folder, out of the one table whose head has the columns."""
    rooms = {}
    in_table = False
    for line in (root / "docs/architecture.md").read_text(encoding="utf-8").splitlines():
        cells = [cell.strip() for cell in line.strip().strip("|").split("|")]
        if cells[:2] == ["Floor", "Room"]:
            in_table = True
        elif in_table and not line.startswith("|"):
            break
        elif in_table and cells[0].isdigit():
            folder = cells[1].strip("`").rstrip("/")
            needs = {name.rstrip("/") for name in re.findall(r"`([^`]+)`", cells[3])}
            rooms[folder] = Room(folder, int(cells[0]), needs)
    if not rooms:
        sys.exit("check-includes.py: docs/architecture.md has no table of rooms")
    return rooms


def room_of(rooms, path):
    """The room that a file stands in: the innermost folder that the table knows."""
    if path.as_posix() in rooms:
        return rooms[path.as_posix()]
    for folder in path.parents:
        if folder.as_posix() in rooms:
            return rooms[folder.as_posix()]
    return None


def find(include):
    for folder in roots:
        if (folder / include).is_file():
            return (folder / include).relative_to(root)
    return None


def read_libraries(rooms):
    """What CMake links: a room's libraries by its folder."""
    by_library = {}
    texts = {}
    for room in rooms.values():
        listing = root / room.folder / "CMakeLists.txt"
        if not listing.is_file():
            continue
        match = re.search(r"tiler_room\((\w+)(.*?)\)\s*$", listing.read_text(), re.S | re.M)
        if match:
            room.library = match.group(1)
            by_library[room.library] = room
            texts[room.library] = match.group(2).split("NEEDS")[-1]
    for library, text in texts.items():
        room = by_library[library]
        for name in re.findall(r"\btiler_\w+", text):
            if name not in by_library:
                fail(f"{room.folder}/CMakeLists.txt: {name} is no room of the table")
            else:
                room.links.add(by_library[name].folder)


def check_sources(rooms):
    count = 0
    for top in ("module", "actions", "logging"):
        for path in sorted((root / top).rglob("*")):
            if path.suffix not in (".h", ".cpp"):
                continue
            count += 1
            here = path.relative_to(root)
            room = room_of(rooms, here)
            if room is None:
                fail(f"{here}: stands in no room of the table")
                continue
            for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
                match = re.match(r'\s*#\s*include\s*"([^"]+)"', line)
                if not match or match.group(1).endswith(".moc"):
                    continue
                included = find(match.group(1))
                if included is None:
                    fail(f'{here}:{number}: "{match.group(1)}" does not say its room')
                    continue
                other = room_of(rooms, included)
                if other is None:
                    fail(f"{here}:{number}: {included} stands in no room of the table")
                elif other is not room:
                    room.used.add(other.folder)
                    if other.folder not in room.needs:
                        fail(f"{here}:{number}: {room.folder} does not need {other.folder}")
    return count


def check_floors(rooms):
    for room in rooms.values():
        for need in sorted(room.needs):
            if need not in rooms:
                fail(f"docs/architecture.md: {room.folder} needs {need}, which is no room")
            elif rooms[need].floor > room.floor:
                fail(f"docs/architecture.md: {room.folder} needs {need} on a higher floor")
            if need in rooms and need not in room.used:
                fail(f"docs/architecture.md: {room.folder} needs {need}, but includes nothing of it")
        if room.library:
            for need in sorted(room.links - room.needs):
                fail(f"{room.folder}/CMakeLists.txt: links {need}, which the table doesn't say")
            for need in sorted(room.needs - room.links):
                fail(f"{room.folder}/CMakeLists.txt: doesn't link {need}, which the table says")
    # A circle can only be among rooms of one floor.
    done = set()

    def walk(folder, path):
        if folder in path:
            fail("docs/architecture.md: a circle: " + " - ".join(path[path.index(folder):] + [folder]))
            return
        if folder in done or folder not in rooms:
            return
        for need in sorted(rooms[folder].needs):
            walk(need, path + [folder])
        done.add(folder)

    for folder in rooms:
        walk(folder, [])


def main():
    rooms = read_table()
    read_libraries(rooms)
    count = check_sources(rooms)
    check_floors(rooms)
    for error in errors:
        print(error, file=sys.stderr)
    if errors:
        sys.exit(1)
    print(f"{count} sources in {len(rooms)} rooms include what the table says.")


main()
