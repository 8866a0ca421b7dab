#!/usr/bin/env python3
"""Writes runtime/faces.c from faces.json; with --check only compares them."""

import json
import pathlib
import sys

FOLDER = pathlib.Path(__file__).resolve().parent
TARGET = FOLDER / "runtime" / "faces.c"


def c_text(faces):
    def rows(values):
        if len(values) != 8 or not all(0 <= value <= 255 for value in values):
            raise ValueError("a face needs eight bytes for each display")
        return "{ " + ", ".join("0x%02X" % value for value in values) + " }"

    lines = ['#include "faces.h"', "", "/* Made from faces.json. */",
             "const struct face faces[FACE_COUNT] = {"]
    for number, face in enumerate(faces, 1):
        if face["n"] != number:
            raise ValueError("the faces must be numbered from 1")
        left, right = face["rows"]
        lines += ['\t{ "%s",' % face["name"], "\t  %s," % rows(left), "\t  %s }," % rows(right)]
    return "\n".join(lines + ["};", ""])


def main():
    text = c_text(json.loads((FOLDER / "faces.json").read_text("utf-8"))["faces"])
    if "--check" in sys.argv[1:]:
        if TARGET.read_text("utf-8") != text:
            sys.exit("faces.c is not what faces.json tells")
    else:
        TARGET.write_text(text, "utf-8")


if __name__ == "__main__":
    main()
