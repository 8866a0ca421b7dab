#!/usr/bin/env python3
"""Writes runtime/symbols.c and runtime/faces.c from the table of LED dots, which Tiler's pictures
are made from too; with --check only compares them."""

import json
import pathlib
import sys

FOLDER = pathlib.Path(__file__).resolve().parent
TABLE = FOLDER.parent / "resources" / "art" / "leds.json"


def c_rows(values):
    if len(values) != 8 or not all(0 <= value <= 255 for value in values):
        raise ValueError("a display has eight rows of one byte each")
    return "{ " + ", ".join("0x%02X" % value for value in values) + " }"


def symbols_text(symbols):
    if list(symbols) != [str(number) for number in range(len(symbols))]:
        raise ValueError("the symbols must be numbered from 0")
    lines = ['#include "symbols.h"', "",
             "/* Made from leds.json. The numbers are part of every program: the order must never "
             "change. */",
             "const uint8_t symbols[SYMBOL_COUNT][8] = {"]
    for number, symbol in symbols.items():
        rows = [int(row, 16) for row in symbol["rows"].split(",")]
        lines.append("\t%s,\t/* %s  %s */" % (c_rows(rows), number, symbol["name"]))
    return "\n".join(lines + ["};", ""])


def faces_text(faces):
    def dots(rows):
        return c_rows([int(row.replace(".", "0").replace("#", "1"), 2) for row in rows])

    lines = ['#include "faces.h"', "", "/* Made from leds.json. */",
             "const struct face faces[FACE_COUNT] = {"]
    for face in faces:
        lines += ['\t{ "%s",' % face["name"], "\t  %s," % dots(face["left"]),
                  "\t  %s }," % dots(face["right"])]
    return "\n".join(lines + ["};", ""])


def main():
    table = json.loads(TABLE.read_text("utf-8"))
    texts = {"symbols.c": symbols_text(table["symbols"]), "faces.c": faces_text(table["faces"])}
    for name, text in texts.items():
        target = FOLDER / "runtime" / name
        if "--check" not in sys.argv[1:]:
            target.write_text(text, "utf-8")
        elif target.read_text("utf-8") != text:
            sys.exit("%s is not what leds.json tells: run make_leds.py" % name)


if __name__ == "__main__":
    main()
