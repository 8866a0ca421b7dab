#!/usr/bin/env python3
"""Compares the picture names in the sources with the manifests.

A name in the sources is what stands between ":/" and ".png" in a string
literal, also within a style sheet. A place marker such as %1 in it stands for
a number or for a text that some string literal of the sources holds. The check
fails when a name has no picture, and when a picture has no name.
"""

import argparse
import os
import pathlib
import re
import sys

sys.dont_write_bytecode = True

from render import PictureError, load_groups  # noqa: E402

SUFFIXES = {".h", ".hpp", ".cpp", ".cc", ".ui"}
TOKEN = re.compile(
    r"""
      (?P<comment>//(?:[^\n\\]|\\.|\\\n)*|/\*.*?\*/)
    | (?:u8|u|U|L)?R"(?P<delimiter>[^\s()\\]{0,16})\((?P<raw>.*?)\)(?P=delimiter)"
    | (?:u8|u|U|L)?"(?P<text>(?:[^"\\\n]|\\.)*)"
    | (?<![0-9A-Za-z_])'(?:[^'\\\n]|\\.)+'
    """, re.X | re.S)
ESCAPES = {"n": "\n", "t": "\t", "\n": "", "0": "\0"}
ESCAPE = re.compile(r"\\u([0-9A-Fa-f]{4})|\\x([0-9A-Fa-f]+)|\\(.)", re.S)
NAME = re.compile(r":/([^\"'(){};:]*?\.png)")
MARKER = re.compile(r"%L?\d\d?")


def unescape(text):
    def one(match):
        code = match.group(1) or match.group(2)
        if code:
            return chr(int(code, 16) & 0x10ffff)
        return ESCAPES.get(match.group(3), match.group(3))
    return ESCAPE.sub(one, text)


def literals(source):
    """The string literals of a source text with the line of each; neighbours are joined."""
    result, end = [], None
    for token in TOKEN.finditer(source):
        if token.group("comment") is not None:
            if end is not None and not source[end:token.start()].strip():
                end = token.end()
            continue
        if token.group("raw") is not None:
            text = token.group("raw")
        elif token.group("text") is not None:
            text = unescape(token.group("text"))
        else:
            end = None
            continue
        if result and end is not None and not source[end:token.start()].strip():
            result[-1] = (result[-1][0] + text, result[-1][1])
        else:
            result.append((text, source.count("\n", 0, token.start()) + 1))
        end = token.end()
    return result


def form_texts(source):
    """A form has no string literals: its text as a whole is searched."""
    source = re.sub(r"<!--.*?-->", "", source, flags=re.S)
    return [(line, number) for number, line in enumerate(source.split("\n"), 1)]


def read_sources(directories):
    """Names with the places where they stand, and all literals."""
    names, texts = {}, set()
    for directory in directories:
        path = pathlib.Path(directory)
        if not path.exists():
            raise PictureError("no directory %s" % directory)
        files = [path] if path.is_file() else sorted(
            file for file in path.rglob("*") if file.suffix in SUFFIXES)
        for file in files:
            source = file.read_text(encoding="utf-8", errors="replace")
            found = form_texts(source) if file.suffix == ".ui" else literals(source)
            for text, line in found:
                texts.add(text)
                for match in NAME.finditer(text):
                    names.setdefault(match.group(1), []).append("%s:%d" % (file, line))
    return names, texts


def fits(picture, parts, texts):
    """Whether values for the markers between the parts of a name give the picture."""
    if not picture.startswith(parts[0]):
        return False
    rest = picture[len(parts[0]):]
    if len(parts) == 1:
        return not rest
    return any((rest[:end].isdigit() or rest[:end] in texts) and fits(rest[end:], parts[1:], texts)
               for end in range(len(rest) + 1))


def matches(name, pictures, texts):
    """The pictures that a name of the sources stands for."""
    parts = MARKER.split(name)
    if len(parts) == 1:
        return {name} & pictures
    return {picture for picture in pictures if fits(picture, parts, texts)}


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("--sources", nargs="+", required=True, metavar="DIR")
    parser.add_argument("--manifest", nargs="+", required=True)
    parser.add_argument("--stamp", type=pathlib.Path, help="file to touch on success")
    arguments = parser.parse_args()
    try:
        pictures = {picture["name"] for group in load_groups(arguments.manifest)
                    for picture in group["pictures"]}
        names, texts = read_sources(arguments.sources)
    except (PictureError, OSError, ValueError, KeyError) as error:
        print("check.py: %s" % error, file=sys.stderr)
        return 1

    used, failures = set(), []
    for name in sorted(names):
        found = matches(name, pictures, texts)
        used |= found
        if not found:
            failures.append("no picture for \":/%s\", named at %s"
                            % (name, ", ".join(os.path.relpath(place) for place in names[name])))
    failures += ["no source names the picture \"%s\"" % name for name in sorted(pictures - used)]
    for failure in failures:
        print("check.py: " + failure, file=sys.stderr)
    if failures:
        print("check.py: %d faults" % len(failures), file=sys.stderr)
        return 1
    if arguments.stamp:
        arguments.stamp.parent.mkdir(parents=True, exist_ok=True)
        arguments.stamp.touch()
    print("%d names, %d pictures" % (len(names), len(pictures)))
    return 0


if __name__ == "__main__":
    sys.exit(main())
