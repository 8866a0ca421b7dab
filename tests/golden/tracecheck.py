"""What a trace of the controller is expected to hold, and the comparison."""

import re


class Told:
    """A line of the trace: its text, how long the controller then waits, and when it is due."""

    def __init__(self, text, wait=0.0, due=None):
        self.text, self.wait, self.due = text, wait, due


class Again:
    """Lines that come one or more times in turn; the last turn may be cut off."""

    def __init__(self, lines, cut=False):
        self.lines, self.cut = lines, cut


def heard(trace):
    """Lines of a trace as (seconds, text); rows of pictures follow their line."""
    lines = []
    for line in trace.splitlines():
        match = re.fullmatch(r"\[ *(\d+\.\d{3})\] (.+)", line)
        if match:
            lines.append([float(match[1]), match[2]])
        else:
            lines[-1][1] += "\n" + line.strip()
    return lines


# How much later than due a line may come, for what the controller reckons and writes meanwhile.
SLACK = 0.03
# How often a loop that waits for a sensor looks at it at least.
LOOK = 0.1


class Difference(Exception):
    pass


class Comparison:
    def __init__(self, lines):
        self.lines, self.place, self.earliest = lines, 0, 0.0

    def fits(self, told):
        return self.place < len(self.lines) and self.lines[self.place][1] == told.text

    def take(self, told):
        if not self.fits(told):
            there = self.lines[self.place][1] if self.place < len(self.lines) else "nothing"
            raise Difference("line %d: expected\n%s\nbut there is\n%s\nbehind\n%s" % (
                self.place + 1, told.text, there,
                "\n".join("[%.3f] %s" % tuple(line) for line in self.lines[:self.place][-5:])))
        time = self.lines[self.place][0]
        if told.due is not None:
            early, late = told.due, told.due + LOOK + SLACK
        else:
            early, late = self.earliest - 0.002, self.earliest + SLACK
        if told.text != "limit reached" and not early <= time <= late:
            raise Difference("line %d: %s comes at %.3f s instead of %.3f to %.3f" % (
                self.place + 1, told.text, time, early, late))
        self.earliest = time + told.wait
        self.place += 1

    def again(self, item):
        turns = 0
        while self.fits(item.lines[0]):
            for told in item.lines:
                if item.cut and turns > 0 and self.place == len(self.lines) - 1:
                    return
                self.take(told)
            turns += 1
        if turns == 0:
            self.take(item.lines[0])

    def whole(self, expected):
        for item in expected:
            if isinstance(item, Again):
                self.again(item)
                # What follows may be told by a sensor that changed meanwhile.
                self.earliest = self.lines[self.place][0] if self.place < len(self.lines) else 0.0
            else:
                self.take(item)
        if self.place < len(self.lines):
            raise Difference("line %d: %s is too much" % (self.place + 1, self.lines[self.place][1]))


def show(told, indent=""):
    for item in told:
        if isinstance(item, Again):
            print(indent + "again and again:")
            show(item.lines, indent + "    ")
        else:
            print(indent + item.text.replace("\n", "\n    " + indent)
                  + (", due at %.2f s" % item.due if item.due is not None else ""))
