#!/usr/bin/env python3
"""One program of all blocks in all their positions, and what the controller does when it runs.

What a block does comes from tests/data/blocks.json, which was worked out by hand from what each
block promises. Nothing of it comes from Tiler: neither its tables nor its text is read here, nor any of
the controller's. robotmodel.py counts on what effects leave
behind: the four speeds and what a sensor said last.

    everyblock.py project FILE        writes the program as a project file
    everyblock.py pictures            tells which dots each picture of the panels is to show
    everyblock.py runs                names the runs, one a line
    everyblock.py expected RUN        shows what a run is expected to do
    everyblock.py run RUN KIT IMAGE   does a run of the compiled program and compares

Gates stand at the program's beginning: loops that are closed unless a run opens one by its
sensor. Behind them stands what never ends.
"""

import pathlib
import subprocess
import sys
from xml.sax.saxutils import quoteattr

from everyblocktables import *
from robotmodel import CLOSED, FACES, KINDS, Robot, choices, number
from tracecheck import Again, Comparison, Difference, Told, heard, show

# The choices of the face block; the last ones only a file can hold.
FACE_CHOICES = list(range(1, 13)) + [0, 13]


class Block:
    def __init__(self, kind, body=(), **attributes):
        self.kind, self.body, self.attributes = kind, list(body), attributes

    def xml(self):
        own = "".join(" %s=%s" % (name, quoteattr(str(value)))
                      for name, value in self.attributes.items())
        inside = "".join(block.xml() for block in self.body)
        return '<module x="0" y="0" id="%d" ownid="0" moduleKey="0"%s>%s</module>\n' % (
            self.kind, own, "<left>%s</left>" % inside if self.body else "")


class Program:
    """The chain of blocks, each put down together with what it does."""

    def __init__(self):
        self.blocks = []
        self.effects = []
        self.values = []
        self.gates = []

    def put(self, block, *effects):
        """A block, and what it does if that is another thing than the robot's model says."""
        self.blocks.append(block)
        self.effects.extend(effects or [lambda robot: robot.do(block)])

    def gate(self, kind, port, body):
        """A loop that only the run of its own enters, never to leave it."""
        value, name = {"touch": (1, UNTIL_TOUCH), "analogue": (499, UNTIL_INFRARED)}[kind]
        before = list(self.effects)

        def opened(robot):
            for effect in before:
                effect(robot)
            robot.sensor(kind, port, value)
            robot.chain(body)
            # Nothing is heard of what follows the longest waits.
            longest = [place for place, line in enumerate(robot.told)
                       if isinstance(line, Told) and line.wait > 1000]
            del robot.told[longest[0] + 1 if longest else len(robot.told):]

        self.gates.append(("%s %d" % (kind, port), ["%s:%d=%d" % (kind, port, value)], opened))
        self.put(Block(name, body, port=port, bInfread=0))

    def pause(self, seconds=0.01):
        self.put(Block(WAIT, n=seconds))

    # What never ends.

    def all_gates(self):
        text = LONGEST
        doors = [("touch", port) for port in range(1, 6)] + [("analogue", port) for port in range(1, 6)]
        bodies = [[Block(kind, n=text)] for kind in (WAIT, *TIMED_DRIVES)] + [
            [Block(MOTOR_CLOCKWISE_TIME, n=3, time=text)],
            [Block(MOTOR_ANTICLOCKWISE_TIME, n=0, time=text)],
            [Block(WAIT, n=LONGEST_WITH_POINT)],
            [Block(COUNTED, [Block(WAIT, n=0.1)], n=999999)],
            # Nothing in it and nothing behind it.
            [Block(TRAFFIC, n=2), Block(ENDLESS)]]
        for door, body in zip(doors, bodies):
            self.gate(*door, body)

    # Sensors: while a block waits for its port, the ports before it are through already and those
    # after it are not, so each block must look at its own.

    def all_sensors(self):
        self.pause(1)
        time = 1.0
        for kind, waits, until, rounds in (
                ("touch", WAIT_TOUCH, UNTIL_TOUCH, ((1, 0, 1), (0, 1, 0))),
                # 500 ends both loops; one more or less holds them.
                ("analogue", WAIT_INFRARED, UNTIL_INFRARED, ((1, 501, 500), (0, 499, 500)))):
            for condition, hold, free in rounds:
                for sort in (waits, until):
                    time = self.sensor_round(kind, sort, condition, hold, free, time)
        # New loops, with nothing in them.
        for kind, sort, port, hold, free in (("touch", UNTIL_TOUCH, 5, 0, 1),
                                             ("analogue", UNTIL_INFRARED, 4, 501, 500)):
            self.value(kind, port, hold, time + 0.1)
            self.value(kind, port, free, time + 0.6)
            self.pause(0.3)
            self.put(Block(sort, port=port, bInfread=1), *self.reading(kind, port, hold),
                     *self.reading(kind, port, free, time + 0.6))
            time += 0.65
        # Ports and conditions that only a file can hold; a condition other than 1 is the second.
        self.put(Block(UNTIL_TOUCH, port=0, bInfread=0))
        self.put(Block(WAIT_TOUCH, port=6, bInfread=2))
        self.put(Block(WAIT_INFRARED, port=-1, bInfread="true"))
        self.put(Block(UNTIL_INFRARED, port=99))

    def sensor_round(self, kind, sort, condition, hold, free, time):
        for port in range(1, 6):
            self.value(kind, port, hold, time + 0.1)
        self.pause(0.3)
        time += 0.3
        for port in range(1, 6):
            time += 0.35
            self.value(kind, port, free, time)
            if sort in (WAIT_TOUCH, WAIT_INFRARED):
                body, turn = [], [Block(WAIT, n=0.1)]
            else:
                body = turn = [Block(ANIMAL, n=port), Block(WAIT, n="0.05")]
            self.put(Block(sort, body, port=port, bInfread=condition),
                     *self.reading(kind, port, hold),
                     lambda robot, turn=turn: robot.again(lambda: robot.chain(turn)),
                     *self.reading(kind, port, free, time))
        return time + 0.1

    def value(self, kind, port, value, time):
        if dict((entry[:2], entry[2]) for entry in self.values).get(
                (kind, port), CLOSED[kind]) != value:
            self.values.append((kind, port, value, time))

    @staticmethod
    def reading(kind, port, value, due=None):
        return [lambda robot: robot.sensor(kind, port, value, due)]

    # Motors.

    def all_drives(self):
        def plain():
            for kind in (*DRIVES, STOP):
                self.put(Block(kind))

        plain()
        for position in (0, 1, 2, 3, -1):
            self.put(Block(SPEED, n=position))
            plain()
            self.pause()
        self.put(Block(SPEED, n="fast"))
        self.put(Block(SPEED, n=0))
        plain()
        self.put(Block(SPEED, n=2))
        for text in TIMES:
            for kind in (*TIMED_DRIVES, WAIT):
                self.put(Block(kind, n=text))
            self.pause()

    def all_motors(self):
        for position in (0, 1, 2):
            self.put(Block(SPEED, n=position))
            for index in range(4):
                self.put(Block(MOTOR_CLOCKWISE, n=index))
                # A drive hears the other sign from here on.
                self.put(Block(FORWARD))
                self.put(Block(TURN_LEFT))
                self.put(Block(MOTOR_CLOCKWISE, n=index))
                self.put(Block(MOTOR_ANTICLOCKWISE, n=index))
                self.put(Block(BACKWARD))
                self.put(Block(MOTOR_STOP, n=index))
            self.pause()
        for index in range(4):
            self.put(Block(MOTOR_CLOCKWISE_TIME, n=index, time="1"))
            self.put(Block(MOTOR_ANTICLOCKWISE_TIME, n=index, time="1"))
        for text in TIMES:
            self.put(Block(MOTOR_ANTICLOCKWISE_TIME, n=1, time=text))
            self.put(Block(MOTOR_CLOCKWISE_TIME, n=2, time=text))
        for index in (4, -1, "C"):
            self.put(Block(MOTOR_STOP, n=index))
        self.pause()

    def all_servos(self):
        for servo in range(1, 19):
            self.put(Block(SERVO, servoId=servo, angle=0))
        for angle in ANGLES:
            self.put(Block(SERVO, servoId=7, angle=angle))
        for servo in (0, 19, -1):
            self.put(Block(SERVO, servoId=servo, angle=150))
        self.pause()

    # Sounds and displays.

    def all_sounds(self):
        for kind, choices in SOUNDS.items():
            for choice in choices:
                self.put(Block(kind, n=choice))
        self.pause()

    def all_displays(self):
        for port in (2, 3):
            for kind, places in SIGNS.items():
                for place in places:
                    self.put(Block(kind, port=port, n=place))
                self.pause()
                self.put(Block(CLOSE_ONE, port=port))
        for choice in FACE_CHOICES:
            self.put(Block(FACE, n=choice))
        self.put(Block(CLOSE_BOTH))
        # Ports that only a file can hold.
        self.put(Block(LETTER, port=7, n=0))
        self.put(Block(DIGIT, n=4))
        self.put(Block(CLOSE_ONE, port=-3))
        self.pause()

    # Loops.

    def all_counts(self):
        for count in (10, 1, 2, 25, 0, -5, "", -2147483647, "ten"):
            self.put(Block(COUNTED, [Block(PIANO, n=7)], n=count))
        # Nothing in them.
        for count in (0, 10, 100):
            self.put(Block(COUNTED, n=count))
        self.pause()

        # The same counter in one another: each loop counts its own.
        self.put(Block(COUNTED, [
            Block(COUNTED, [
                Block(HELLO, n=2),
                Block(COUNTED, [Block(MOTOR_STOP, n=2)], n=4),
                Block(SIGN, port=3, n=12)], n=2),
            Block(HELLO, n=3)], n=3))
        self.put(Block(WAIT, n=0.01))

        # All four loops and both waiting blocks in one another, those that sensors end passed
        # over; behind each of them goes what follows.
        self.put(Block(COUNTED, [
            Block(UNTIL_TOUCH, [Block(ENDLESS, [Block(FORWARD)])], port=3, bInfread=0),
            Block(HELLO, n=4),
            Block(UNTIL_INFRARED, [Block(COUNTED, [Block(STOP)], n=2)], port=2, bInfread=1),
            Block(WAIT_TOUCH, port=1, bInfread=0),
            Block(WAIT_INFRARED, port=5, bInfread=0),
            Block(BACKWARD)], n=1))
        self.put(Block(WAIT, n=0.5))

    # What has no place of its own above.

    def all_others(self):
        here = set()

        def look(blocks):
            for block in blocks:
                here.add(block.kind)
                look(block.body)
        look(self.blocks)
        for kind in KINDS.values():
            if kind["category"] >= 0 and kind["id"] not in here:
                for attributes in choices(kind):
                    self.put(Block(kind["id"], **attributes))

    def for_ever(self):
        self.put(Block(ENDLESS, [Block(COUNTED, [Block(ANIMAL, n=3)], n=2), Block(WAIT, n=0.5)]))

    def xml(self):
        return ('<!DOCTYPE vantrel>\n<vantrel version="1.1.2" company="Korvane" app="vantrel.exe" '
                'downname="everyblock">\n<basenode>\n'
                '<module x="100" y="200" id="%d" ownid="0" moduleKey="1"/>\n%s</basenode>\n</vantrel>\n'
                % (MAIN, "".join(block.xml() for block in self.blocks)))


def everything():
    program = Program()
    program.all_gates()
    program.all_sensors()
    program.all_drives()
    program.all_motors()
    program.all_servos()
    program.all_sounds()
    program.all_displays()
    program.all_counts()
    program.all_others()
    program.for_ever()
    return program


def runs(program):
    """Name, sensors and expected lines of each run, and how many seconds it takes."""
    whole = Robot(SYMBOLS)
    for effect in program.effects:
        effect(whole)
    last_wait = sum(line.wait for line in whole.told if isinstance(line, Told))
    last_value = max(entry[3] for entry in program.values)
    sensors = ["%s:%d=%d@%.3f" % entry for entry in program.values]
    result = {"whole": (sensors, whole.told, round(last_wait + last_value + 5))}
    for name, opened_by, effects in program.gates:
        robot = Robot(SYMBOLS)
        effects(robot)
        result[name] = (opened_by, robot.told, 0.5)
    shown = {line.text.split()[3] for line in whole.told
             if isinstance(line, Told) and " symbol " in line.text}
    assert set(map(str, SYMBOLS)) <= shown, "a sign is missing"
    for _, told, _ in result.values():
        told.append(Told("limit reached"))
        calls = 0
        for line in told:
            # More calls than these between two waits the controller doesn't tell.
            calls = 0 if isinstance(line, Again) or line.wait > 0 else calls + 1
            assert calls < 100, line.text
    return result


def run(name, kit, image):
    sensors, expected, limit = runs(everything())[name]
    options = [option for sensor in sensors for option in ("--sensor", sensor)]
    result = subprocess.run(
        [pathlib.Path(kit) / "run-on-emulator", "--bare", "--limit", str(limit), *options, image],
        capture_output=True, text=True)
    # 3: the limit was reached.
    if result.returncode != 3 or result.stderr:
        print("exit code %d\n%s%s" % (result.returncode, result.stderr, result.stdout[-2000:]))
        return 1
    try:
        Comparison(heard(result.stdout)).whole(expected)
    except Difference as difference:
        print(difference)
        return 1
    return 0


def pictures():
    """"1/0.png 006c9282..." for each picture of the expression panels; faces have two displays."""
    panels = {1: SIGN, 2: ARITHMETIC, 3: DIGIT, 4: LETTER}
    for panel, kind in panels.items():
        # Those that only a file can hold have no picture.
        count = {SIGN: 13, ARITHMETIC: 5, DIGIT: 10, LETTER: 26}[kind]
        for place in range(count):
            symbol = number(KINDS[kind], {"n": place}, "symbol")
            yield "%d/%d.png %s" % (panel, place, bytes(SYMBOLS[symbol]).hex())
    for place, face in sorted(FACES.items()):
        yield "5/%d.png %s %s" % ((place - 1, *(bytes(rows).hex() for rows in face["rows"])))


def main(arguments):
    task = arguments[0] if arguments else ""
    if task == "project" and len(arguments) == 2:
        pathlib.Path(arguments[1]).write_text(everything().xml(), "utf-8")
    elif task == "pictures":
        print("\n".join(pictures()))
    elif task == "runs":
        print("\n".join(runs(everything())))
    elif task == "expected" and len(arguments) == 2:
        show(runs(everything())[arguments[1]][1])
    elif task == "run" and len(arguments) == 4:
        return run(*arguments[1:])
    else:
        print(__doc__, file=sys.stderr)
        return 2
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
