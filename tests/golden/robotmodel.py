"""What blocks do to the controller, as tests/data/blocks.json tells it, and a robot that follows."""

import json
import math
import operator
import pathlib
import re
import sys

from tracecheck import Again, Told

_TESTS = pathlib.Path(__file__).resolve().parents[1]
KINDS = {kind["id"]: kind for kind in json.loads(
    (_TESTS / "data" / "blocks.json").read_text("utf-8"))["blocks"]}
# Written down apart from the table that the pictures and the runtime are made from.
FACES = {face["n"]: face for face in json.loads(
    (_TESTS / "toolchain" / "faces.json").read_text("utf-8"))["faces"]}

MOTORS = {port: "motor %s (%d)" % (letter, port) for port, letter in enumerate("?ABCD?")}
DARK = [0] * 8
# What a sensor says that no run has told of.
CLOSED = {"touch": 0, "analogue": 1000}
RELATIONS = {"==": operator.eq, "!=": operator.ne, ">": operator.gt, "<": operator.lt}


def whole(text):
    """A number as an attribute holds it; what is none counts as 0."""
    return int(text) if re.fullmatch(r"[+-]?\d+", str(text)) else 0


def seconds(text):
    try:
        return float(text)
    except ValueError:
        return 0.0


def number(kind, attributes, name):
    """What an attribute says, or a number that the block makes of one."""
    rule = kind.get("numbers", {}).get(name)
    if not rule:
        return whole(attributes.get(name, ""))
    value = whole(attributes.get(rule["by"], ""))
    if str(value) in rule or "else" in rule:
        return rule.get(str(value), rule.get("else"))
    return math.trunc(value * rule.get("times", 1) / rule.get("over", 1)) + rule.get("plus", 0)


def effects(block, attributes):
    """What a block does, in words, the names in braces replaced by what its attributes say."""
    kind = KINDS[block]

    def said(match):
        name, sort = match.group(1, 2)
        return "%g" % seconds(attributes.get(name, "")) if sort else str(number(kind, attributes, name))
    return [re.sub(r"\{(\w+)(:g)?\}", said, effect).split() for effect in kind["does"]]


def choices(kind):
    """The attributes that a block can be given: when new, and by each choice that isn't typed."""
    told = [kind.get("new", "")]
    for choice in kind.get("choices", []):
        if not any(way.startswith("keys") for way in choice["give"]):
            spans = [range(choice[name][0], choice[name][1] + 1) if name in choice else (0,)
                     for name in "ij"]
            told += [re.sub(r"\{([^}]+)\}", lambda sum: str(eval(sum[1], {"i": i, "j": j})),
                            choice["attributes"]) for i in spans[0] for j in spans[1]]
    return [dict(word.split("=") for word in attributes.split()) for attributes in told]


def dotted(*displays):
    return "".join("\n" + "  ".join(format(row, "08b").replace("0", ".").replace("1", "#")
                                    for row in rows) for rows in zip(*displays))


class Robot:
    """Follows the effects of blocks and writes down what the controller is heard to do."""

    def __init__(self, symbols):
        self.symbols = symbols
        self.speed = {port: 50 for port in MOTORS}
        self.read = {}
        self.told = [Told("start")]

    def tell(self, text, wait=0.0, due=None):
        self.told.append(Told(text, wait, due))

    def motor(self, port, speed):
        self.tell("%s speed %d" % (MOTORS[port], speed))

    def wait(self, time):
        self.tell("wait %g s" % time, max(time, 0))

    def sensor(self, kind, port, value, due=None):
        """A reading is told when it is the first or differs from the one before."""
        if self.read.get((kind, port)) != value:
            self.tell("%s %d -> %d" % (kind, port, value), due=due)
        self.read[kind, port] = value

    def holds(self, kind, port, relation, limit):
        """Whether a condition keeps a loop going, the sensor being what it was."""
        value = self.value(kind, port)
        self.sensor(kind, port, value)
        return RELATIONS[relation](value, limit)

    def value(self, kind, port):
        return self.read.get((kind, port), CLOSED[kind])

    def show(self, port, what, *rows):
        self.tell("display %s %s" % (port, what) + dotted(*rows))

    def again(self, effect, cut=False):
        """Whatever is done here comes one or more times."""
        outside, self.told = self.told, []
        effect()
        self.told = outside + [Again(self.told, cut)]

    def endlessly(self, effect, does_something=True):
        if does_something:
            self.again(effect, cut=True)

    def repeat(self, count, effect):
        if count > 1000:
            # No run gets to the end of these.
            self.again(effect, cut=True)
        else:
            for _ in range(count):
                effect()

    def chain(self, blocks):
        for block in blocks:
            self.do(block)

    def do(self, block):
        """A block has a kind, attributes and a body."""
        for effect in effects(block.kind, block.attributes):
            self.act(effect, lambda: self.chain(block.body), bool(block.body))

    def act(self, effect, body, has_body):
        verb, values = effect[0], effect[1:]
        if verb == "motor":
            port, speed = int(values[0]), values[1]
            own = self.speed[port]
            self.motor(port, {"speed": own, "-speed": -own}[speed] if "speed" in speed else int(speed))
        elif verb == "speeds":
            self.speed = dict.fromkeys(self.speed, int(values[0]))
        elif verb in ("clockwise", "anticlockwise"):
            # The sign stays for good.
            port = int(values[0])
            self.speed[port] = abs(self.speed[port]) * (-1 if verb == "clockwise" else 1)
            self.motor(port, self.speed[port])
        elif verb == "wait" and values[0] != "while":
            self.wait(float(values[0]))
        elif verb == "servo":
            self.tell("servo %s speed 716 position %s" % tuple(values))
        elif verb == "sound":
            self.tell("sound " + values[0])
        elif verb == "symbol":
            known = self.symbols.get(int(values[1]))
            self.show(values[0], "symbol " + values[1] + ("" if known else " unknown"), known or DARK)
        elif verb == "dark":
            self.show(values[0], "custom", DARK)
        elif verb == "face":
            face = FACES.get(int(values[0]), {"name": "unknown", "rows": (DARK, DARK)})
            self.show("2 3", "emoji %s %s" % (values[0], face["name"]), *face["rows"])
        elif verb == "repeat":
            self.repeat(int(values[0]) if has_body else 0, body)
        elif verb == "forever":
            self.endlessly(body, has_body)
        elif "while" in effect:
            waits = verb == "wait"
            kind, port, relation, limit = values[1:] if waits else values
            if self.holds(kind, int(port), relation, int(limit)):
                self.endlessly((lambda: self.wait(0.1)) if waits else body, waits or has_body)
        else:
            sys.exit("Robot.act() of %s doesn't know \"%s\"" % (__file__, " ".join(effect)))
