"""What each room of the front end can include, asked of the compiler that builds it: rooms_test.py
COMPILE_COMMANDS SOURCE_FOLDER."""

import json
import pathlib
import shlex
import subprocess
import sys
import unittest

COMMANDS = json.loads(pathlib.Path(sys.argv[1]).read_text())
FRONT_END = pathlib.Path(sys.argv[2])

START_UP, INTERFACE = ".", "authorization/interface"
ROOMS = [START_UP, "authorization", INTERFACE, "display", "model", "session", "trial", "window"]
# The rooms that each one sees beside itself.
SEEN = {
    START_UP: {INTERFACE},
    "authorization": {INTERFACE, "display"},
    "display": set(),
    "model": set(),
    "session": {"display", "model", "window"},
    "trial": {"authorization", INTERFACE},
    "window": {"model"},
}
# The libraries of the system that none but these rooms use.
USERS = {
    "/qt6/": {"window", "session"},
    "/polkit-1/": {"authorization"},
    "/xcb/": {"display"},
}
# These see all the rooms that they put together.
PROGRAMS = ("TavConfiguration.cpp", "TavConfigurationTrial.cpp")


def headers(room):
    return sorted(header.name for header in (FRONT_END / room).glob("*.h"))


def commands(room):
    """The compiler's calls for the sources of the room, without what they write."""
    for entry in COMMANDS:
        file = pathlib.Path(entry["file"])
        if file.parent == FRONT_END / room and file.name not in PROGRAMS:
            words = shlex.split(entry["command"])
            kept = words[:words.index("-o")] + words[words.index("-c"):]
            yield [w for w in kept if w != "-c"], entry["directory"]


def run(command, folder, text=""):
    done = subprocess.run(command, cwd=folder, input=text, capture_output=True, text=True)
    if done.returncode != 0:
        sys.exit(done.stderr)
    return done.stdout


def includable(room, names):
    """Those of the headers that a source of the room can include."""
    command, folder = next(commands(room))
    question = "".join(f'#if __has_include("{n}")\nseen {n}\n#endif\n' for n in names)
    answer = run([*command[:-1], "-E", "-x", "c++", "-"], folder, question)
    return {line.split()[1] for line in answer.splitlines() if line.startswith("seen ")}


class Rooms(unittest.TestCase):
    def test_each_room_is_known_and_has_sources(self):
        folders = {str(h.parent.relative_to(FRONT_END)) for h in FRONT_END.rglob("*.h")}
        self.assertEqual(folders, set(ROOMS))
        for room in SEEN:
            self.assertTrue(list(commands(room)), room)

    def test_each_room_can_include_its_own_headers_and_those_of_the_rooms_it_links_to(self):
        for room, seen in SEEN.items():
            for other in ROOMS:
                with self.subTest(room=room, other=other):
                    expected = headers(other) if other == room or other in seen else []
                    self.assertEqual(sorted(includable(room, headers(other))), expected)

    def test_no_room_comes_to_a_library_of_the_system_that_is_not_its_own(self):
        for room in SEEN:
            for command, folder in commands(room):
                files = run([*command, "-M"], folder).replace("\\\n", " ").split()
                self.assertTrue([f for f in files if f.endswith(".cpp")], "no dependencies")
                for library, users in USERS.items():
                    with self.subTest(source=command[-1], library=library):
                        found = [f for f in files if library in f]
                        self.assertEqual(found if room not in users else [], [])


unittest.main(argv=sys.argv[:1])
