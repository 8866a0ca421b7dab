#!/usr/bin/env python3
"""What the main program of a stored project does, its sensors never changing.

    follow.py PROJECT SECONDS

The first line tells the sensors for the emulated controller's command line: for each the value
that lets the first block that asks it go on. The second tells how it ends: "returns" if the lines
that follow are all, "endless" if it goes on for ever like this, "unknown" if it isn't followed
further. The others are as the controller tells them, without times, dots of displays and names of
faces. Nothing is followed beyond the controller's time in seconds.
"""

import sys
import xml.etree.ElementTree

from robotmodel import RELATIONS, Robot, effects

# A task that calls more often than this without a wait isn't heard any more.
HEARD_CALLS = 100
MOST_LINES, MOST_BLOCKS = 400, 20000


class Block:
    def __init__(self, element):
        self.kind = int(element.get("id"))
        self.attributes = element.attrib
        self.body = [Block(child) for child in element.findall("left/module")]


class Over(Exception):
    pass


class Follower(Robot):
    def __init__(self, sensors, limit):
        super().__init__({})
        self.sensors, self.limit = sensors, limit
        self.lines, self.end = ["start"], "returns"
        self.calls = self.blocks = self.time = 0

    def stop(self):
        self.end = "unknown" if self.end == "returns" else self.end
        raise Over

    def tell(self, text, wait=0.0, due=None):
        self.calls += 1
        if self.calls > HEARD_CALLS or len(self.lines) >= MOST_LINES:
            self.stop()
        self.lines.append(text)

    def wait(self, time):
        if time > 0:
            self.calls = 0
        self.tell("wait %g s" % time)
        self.time += time
        # Near the limit it hangs on the time that the calls take.
        if self.time >= self.limit - 1:
            self.stop()

    def value(self, kind, port):
        return self.sensors.get((kind, port), super().value(kind, port))

    def sensor(self, kind, port, value, due=None):
        line = "%s %d -> %d" % (kind, port, value)
        # Told once, for it never changes.
        if line not in self.lines:
            self.lines.append(line)

    def show(self, port, what, *rows):
        words = what.split()
        self.tell("display %s %s" % (port, " ".join(words[:2])))

    def endlessly(self, effect, does_something=True):
        self.end = "endless"
        while does_something:
            lines = len(self.lines)
            effect()
            does_something = len(self.lines) > lines
        self.stop()

    def repeat(self, count, effect):
        for _ in range(count):
            effect()

    def do(self, block):
        self.blocks += 1
        if self.blocks > MOST_BLOCKS:
            self.stop()
        super().do(block)


def values_that_let_pass(project):
    values = {}
    for element in project.iter("module"):
        for effect in effects(int(element.get("id")), element.attrib):
            if "while" in effect:
                kind, port, relation, limit = effect[effect.index("while") + 1:]
                free = [value for value in {"touch": (0, 1), "analogue": (300, 1000)}[kind]
                        if not RELATIONS[relation](value, int(limit))]
                values.setdefault((kind, int(port)), free[0])
    return values


def main(path, limit):
    # What follows the document is the action data.
    text = open(path, "rb").read()
    project = xml.etree.ElementTree.fromstring(text[:text.rindex(b"</vantrel>") + 10])
    sensors = values_that_let_pass(project)
    follower = Follower(sensors, float(limit))
    chain = next(base for base in project.findall("basenode") if base.find("module").get("id") == "0")
    try:
        follower.chain([Block(element) for element in chain.findall("module")[1:]])
        follower.lines.append("end")
    except Over:
        pass
    print(" ".join("--sensor %s:%d=%d@0" % (*sensor, value) for sensor, value in sensors.items()))
    print(follower.end)
    print("\n".join(follower.lines))


if __name__ == "__main__":
    main(*sys.argv[1:])
