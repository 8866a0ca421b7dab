#!/usr/bin/env python3
"""One program of all blocks in all their positions, and what the controller does when it runs.

How this was made: what stands here was worked out by hand from what each block promises - the
speed that a position of a block means, the wheels that a drive turns, the sound behind a picture,
the dots of a sign - and written down as tables of block and value on one side and the effect on
the controller on the other. Nothing of it comes from Tiler: neither its tables nor its text is
read here, nor any of the controller's. A few lines of Python count
on what effects leave behind: the four speeds and what a sensor said last.

    everyblock.py project FILE        writes the program as a project file
    everyblock.py pictures            tells which dots each picture of the panels is to show
    everyblock.py runs                names the runs, one a line
    everyblock.py expected RUN        shows what a run is expected to do
    everyblock.py run RUN KIT IMAGE   does a run of the compiled program and compares

Gates stand at the program's beginning: loops that are closed unless a run opens one by its
sensor. Behind them stands what never ends.
"""

import json
import pathlib
import subprocess
import sys
from xml.sax.saxutils import quoteattr

from everyblocktables import *
from tracecheck import Again, Comparison, Difference, Told, heard, show

# Written down apart from the table that the pictures and the runtime are made from.
FACES = {face["n"]: face for face in json.loads(
    (pathlib.Path(__file__).resolve().parents[1] / "toolchain" / "faces.json")
    .read_text("utf-8"))["faces"]}
# The choices of the face block; the last ones only a file can hold.
FACE_CHOICES = list(range(1, 13)) + [0, 13]

PORTS = {port: "motor %s (%d)" % (letter, port) for port, letter in enumerate("?ABCD?")}
DARK = [0] * 8


def dotted(*displays):
    return "".join("\n" + "  ".join(format(row, "08b").replace("0", ".").replace("1", "#")
                                    for row in rows) for rows in zip(*displays))


class Robot:
    """Follows the effects of blocks and writes down what the controller is heard to do."""

    def __init__(self):
        self.speed = {1: 50, 2: 50, 3: 50, 4: 50}
        self.read = {}
        self.told = [Told("start")]

    def motor(self, port, speed):
        self.told.append(Told("%s speed %d" % (PORTS[port], speed)))

    def drive(self, signs):
        for sign in signs.split():
            port = int(sign[0])
            self.motor(port, self.speed[port] if sign[1] == "+" else -self.speed[port])

    def wait(self, seconds):
        self.told.append(Told("wait %g s" % seconds, max(seconds, 0)))

    def sensor(self, kind, port, value, due=None):
        """A reading is told when it is the first or differs from the one before."""
        if self.read.get((kind, port)) != value:
            self.told.append(Told("%s %d -> %d" % (kind, port, value), due=due))
        self.read[kind, port] = value

    def servo(self, number, position):
        self.told.append(Told("servo %d speed 716 position %d" % (number, position)))

    def sound(self, number):
        self.told.append(Told("sound %d" % number))

    def symbol(self, port, number):
        known = number in SYMBOLS
        self.told.append(Told("display %d symbol %d%s" % (port, number, "" if known else " unknown")
                              + dotted(SYMBOLS[number] if known else DARK)))

    def dark(self, port):
        self.told.append(Told("display %d custom" % port + dotted(DARK)))

    def face(self, number):
        known = FACES.get(number)
        left, right = known["rows"] if known else (DARK, DARK)
        self.told.append(Told("display 2 3 emoji %d %s" % (number, known["name"] if known else "unknown")
                              + dotted(left, right)))

    def again(self, effects, cut=False):
        """Whatever is done here comes one or more times."""
        outside, self.told = self.told, []
        effects()
        self.told = outside + [Again(self.told, cut)]


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
        self.blocks.append(block)
        self.effects.extend(effects)

    def gate(self, kind, port, body, effects, cut=False):
        """A loop that only the run of its own enters, never to leave it."""
        value, name = {"touch": (1, UNTIL_TOUCH), "analogue": (499, UNTIL_INFRARED)}[kind]
        closed = {"touch": 0, "analogue": 1000}[kind]
        before = list(self.effects)

        def opened(robot):
            for effect in before:
                effect(robot)
            robot.sensor(kind, port, value)
            for effect in effects:
                effect(robot)

        self.gates.append(("%s %d" % (kind, port), ["%s:%d=%d" % (kind, port, value)], opened))
        self.put(Block(name, body, port=port, bInfread=0),
                 lambda robot: robot.sensor(kind, port, closed))

    def pause(self, seconds=0.01):
        self.put(Block(WAIT, n=seconds), lambda robot: robot.wait(seconds))

    # What never ends.

    def all_gates(self):
        text, long = LONGEST
        timed = [(WAIT, None)] + list(TIMED_DRIVES.items())
        doors = [("touch", port) for port in range(1, 6)] + [("analogue", port) for port in range(1, 6)]
        doors = iter(doors)
        for kind, signs in timed:
            self.gate(*next(doors), [Block(kind, n=text)],
                      ([lambda robot, signs=signs: robot.drive(signs)] if signs else [])
                      + [lambda robot: robot.wait(long)])
        self.gate(*next(doors), [Block(MOTOR_CLOCKWISE_TIME, n=3, time=text)],
                  [lambda robot: robot.motor(4, -50), lambda robot: robot.wait(long)])
        self.gate(*next(doors), [Block(MOTOR_ANTICLOCKWISE_TIME, n=0, time=text)],
                  [lambda robot: robot.motor(1, 50), lambda robot: robot.wait(long)])
        self.gate(*next(doors), [Block(WAIT, n=LONGEST_WITH_POINT[0])],
                  [lambda robot: robot.wait(LONGEST_WITH_POINT[1])])
        self.gate(*next(doors), [Block(COUNTED, [Block(WAIT, n=0.1)], n=999999)],
                  [lambda robot: robot.again(lambda: robot.wait(0.1), cut=True)])
        # Nothing in it and nothing behind it.
        self.gate(*next(doors), [Block(TRAFFIC, n=2), Block(ENDLESS)],
                  [lambda robot: robot.sound(13)])

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
        self.put(Block(UNTIL_TOUCH, port=0, bInfread=0), *self.reading("touch", 0, 0))
        self.put(Block(WAIT_TOUCH, port=6, bInfread=2), *self.reading("touch", 6, 0))
        self.put(Block(WAIT_INFRARED, port=-1, bInfread="true"), *self.reading("analogue", -1, 1000))
        self.put(Block(UNTIL_INFRARED, port=99), *self.reading("analogue", 99, 1000))

    def sensor_round(self, kind, sort, condition, hold, free, time):
        for port in range(1, 6):
            self.value(kind, port, hold, time + 0.1)
        self.pause(0.3)
        time += 0.3
        for port in range(1, 6):
            time += 0.35
            self.value(kind, port, free, time)
            if sort in (WAIT_TOUCH, WAIT_INFRARED):
                body, inside = [], lambda robot: robot.wait(0.1)
            else:
                body = [Block(ANIMAL, n=port), Block(WAIT, n="0.05")]
                inside = lambda robot, port=port: (robot.sound(5 + port), robot.wait(0.05))
            self.put(Block(sort, body, port=port, bInfread=condition),
                     *self.reading(kind, port, hold),
                     lambda robot, inside=inside: robot.again(lambda: inside(robot)),
                     *self.reading(kind, port, free, time))
        return time + 0.1

    def value(self, kind, port, value, time):
        if dict((entry[:2], entry[2]) for entry in self.values).get(
                (kind, port), {"touch": 0, "analogue": 1000}[kind]) != value:
            self.values.append((kind, port, value, time))

    @staticmethod
    def reading(kind, port, value, due=None):
        return [lambda robot: robot.sensor(kind, port, value, due)]

    # Motors.

    def speed(self, position, **attributes):
        def change(robot):
            robot.speed = dict.fromkeys(robot.speed, SPEEDS[position])
        self.put(Block(SPEED, **(attributes or {"n": position})), change)

    def all_drives(self):
        def plain():
            for kind, signs in DRIVES.items():
                self.put(Block(kind), lambda robot, signs=signs: robot.drive(signs))
            self.put(Block(STOP), lambda robot: [robot.motor(port, 0) for port in range(1, 5)])

        plain()
        for position in SPEEDS:
            self.speed(position)
            plain()
            self.pause()
        self.speed(0, n="fast")
        self.speed(0)
        plain()
        self.speed(2)
        for text, seconds in TIMES.items():
            for kind, signs in TIMED_DRIVES.items():
                self.put(Block(kind, n=text), lambda robot, signs=signs: robot.drive(signs),
                         lambda robot, seconds=seconds: robot.wait(seconds),
                         lambda robot: (robot.motor(1, 0), robot.motor(2, 0)))
            self.put(Block(WAIT, n=text), lambda robot, seconds=seconds: robot.wait(seconds))
            self.pause()

    def motor(self, kind, port, text="1", seconds=1):
        clockwise = kind in (MOTOR_CLOCKWISE, MOTOR_CLOCKWISE_TIME)
        timed = kind in (MOTOR_CLOCKWISE_TIME, MOTOR_ANTICLOCKWISE_TIME)

        def turn(robot):
            # The sign stays for good.
            robot.speed[port] = -abs(robot.speed[port]) if clockwise else abs(robot.speed[port])
            robot.motor(port, robot.speed[port])
            if timed:
                robot.wait(seconds)
                robot.motor(port, 0)
        self.put(Block(kind, n=port - 1, **({"time": text} if timed else {})), turn)

    def all_motors(self):
        for position in (0, 1, 2):
            self.speed(position)
            for port in range(1, 5):
                self.motor(MOTOR_CLOCKWISE, port)
                # A drive hears the other sign from here on.
                self.put(Block(FORWARD), lambda robot: robot.drive("1+ 2-"))
                self.put(Block(TURN_LEFT), lambda robot: robot.drive("1- 2-"))
                self.motor(MOTOR_CLOCKWISE, port)
                self.motor(MOTOR_ANTICLOCKWISE, port)
                self.put(Block(BACKWARD), lambda robot: robot.drive("1- 2+"))
                self.put(Block(MOTOR_STOP, n=port - 1), lambda robot, port=port: robot.motor(port, 0))
            self.pause()
        for port in range(1, 5):
            self.motor(MOTOR_CLOCKWISE_TIME, port)
            self.motor(MOTOR_ANTICLOCKWISE_TIME, port)
        for text, seconds in TIMES.items():
            self.motor(MOTOR_ANTICLOCKWISE_TIME, 2, text, seconds)
            self.motor(MOTOR_CLOCKWISE_TIME, 3, text, seconds)
        for index in (4, -1):
            self.put(Block(MOTOR_STOP, n=index), lambda robot, port=index + 1: robot.motor(port, 0))
        self.put(Block(MOTOR_STOP, n="C"), lambda robot: robot.motor(1, 0))
        self.pause()

    def all_servos(self):
        for number in range(1, 19):
            self.put(Block(SERVO, servoId=number, angle=0),
                     lambda robot, number=number: robot.servo(number, 512))
        for angle, position in ANGLES.items():
            self.put(Block(SERVO, servoId=7, angle=angle),
                     lambda robot, position=position: robot.servo(7, position))
        for number in (0, 19, -1):
            self.put(Block(SERVO, servoId=number, angle=150),
                     lambda robot, number=number: robot.servo(number, 68))
        self.pause()

    # Sounds and displays.

    def all_sounds(self):
        for kind, sounds in SOUNDS.items():
            for choice, sound in sounds.items():
                self.put(Block(kind, n=choice), lambda robot, sound=sound: robot.sound(sound))
        self.pause()

    def all_displays(self):
        for port in (2, 3):
            for kind, signs in SIGNS.items():
                for place, number in signs.items():
                    self.put(Block(kind, port=port, n=place),
                             lambda robot, port=port, number=number: robot.symbol(port, number))
                self.pause()
                self.put(Block(CLOSE_ONE, port=port), lambda robot, port=port: robot.dark(port))
        for choice in FACE_CHOICES:
            self.put(Block(FACE, n=choice), lambda robot, choice=choice: robot.face(choice))
        self.put(Block(CLOSE_BOTH), lambda robot: (robot.dark(2), robot.dark(3)))
        # Ports that only a file can hold.
        self.put(Block(LETTER, port=7, n=0), lambda robot: robot.symbol(7, 19))
        self.put(Block(DIGIT, n=4), lambda robot: robot.symbol(0, 13))
        self.put(Block(CLOSE_ONE, port=-3), lambda robot: robot.dark(-3))
        self.pause()

    # Loops.

    def all_counts(self):
        def sound(robot, number, times):
            for _ in range(times):
                robot.sound(number)

        for count, rounds in ((10, 10), (1, 1), (2, 2), (25, 25), (0, 0), (-5, 0), ("", 0),
                              (-2147483647, 0), ("ten", 0)):
            self.put(Block(COUNTED, [Block(PIANO, n=7)], n=count),
                     lambda robot, rounds=rounds: sound(robot, 19, rounds))
        # Nothing in them.
        for count in (0, 10, 100):
            self.put(Block(COUNTED, n=count))
        self.pause()

        # The same counter in one another: each loop counts its own.
        def nested(robot):
            for _ in range(3):
                for _ in range(2):
                    robot.sound(1)
                    for _ in range(4):
                        robot.motor(3, 0)
                    robot.symbol(3, 52)
                robot.sound(2)
            robot.wait(0.01)
        self.put(Block(COUNTED, [
            Block(COUNTED, [
                Block(HELLO, n=2),
                Block(COUNTED, [Block(MOTOR_STOP, n=2)], n=4),
                Block(SIGN, port=3, n=12)], n=2),
            Block(HELLO, n=3)], n=3))
        self.put(Block(WAIT, n=0.01), nested)

        # All four loops and both waiting blocks in one another, those that sensors end passed
        # over; behind each of them goes what follows.
        def mixed(robot):
            robot.sensor("touch", 3, 0)
            robot.sound(3)
            robot.sensor("analogue", 2, 500)
            robot.sensor("touch", 1, 0)
            robot.sensor("analogue", 5, 500)
            robot.drive("1- 2+")
            robot.wait(0.5)
        self.put(Block(COUNTED, [
            Block(UNTIL_TOUCH, [Block(ENDLESS, [Block(FORWARD)])], port=3, bInfread=0),
            Block(HELLO, n=4),
            Block(UNTIL_INFRARED, [Block(COUNTED, [Block(STOP)], n=2)], port=2, bInfread=1),
            Block(WAIT_TOUCH, port=1, bInfread=0),
            Block(WAIT_INFRARED, port=5, bInfread=0),
            Block(BACKWARD)], n=1))
        self.put(Block(WAIT, n=0.5), mixed)

    def for_ever(self):
        def turn(robot):
            for _ in range(2):
                robot.sound(8)
            robot.wait(0.5)
        self.put(Block(ENDLESS, [Block(COUNTED, [Block(ANIMAL, n=3)], n=2), Block(WAIT, n=0.5)]),
                 lambda robot: robot.again(lambda: turn(robot), cut=True))

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
    program.for_ever()
    return program


def runs(program):
    """Name, sensors and expected lines of each run, and how many seconds it takes."""
    whole = Robot()
    for effect in program.effects:
        effect(whole)
    last_wait = sum(line.wait for line in whole.told if isinstance(line, Told))
    last_value = max(entry[3] for entry in program.values)
    sensors = ["%s:%d=%d@%.3f" % entry for entry in program.values]
    result = {"whole": (sensors, whole.told, round(last_wait + last_value + 5))}
    for name, opened_by, effects in program.gates:
        robot = Robot()
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
            yield "%d/%d.png %s" % (panel, place, bytes(SYMBOLS[SIGNS[kind][place]]).hex())
    for number, face in sorted(FACES.items()):
        yield "5/%d.png %s %s" % ((number - 1, *(bytes(rows).hex() for rows in face["rows"])))


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
