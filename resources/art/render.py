#!/usr/bin/env python3
"""Renders the pictures of the program from templates, glyphs and manifests.

A manifest lists groups of pictures. A picture names a template, a colour
scheme, a state and the glyphs that stand on it; what its group gives under
"defaults" holds for all of them. The result is two PNGs per picture, one of
exactly the size that the manifest gives and one of twice that, name@2x.png, and
a collection file for rcc. A picture with "once" has the first one alone.
"""

import argparse
import ast
import base64
import concurrent.futures
import hashlib
import json
import operator
import os
import pathlib
import re
import subprocess
import sys
import tempfile
from xml.sax.saxutils import escape, quoteattr

HERE = pathlib.Path(__file__).resolve().parent
GLYPH_SIDE = 80
WORKERS = 2
# Without row filters, which take longer to undo than to inflate what they save, and with the
# kinds of colours as they are.
OPTIPNG = ["optipng", "-quiet", "-force", "-f0", "-zc9", "-zm8", "-zs0", "-nc", "-nb", "-np"]

OPERATORS = {ast.Add: operator.add, ast.Sub: operator.sub, ast.Mult: operator.mul,
             ast.Div: operator.truediv}


class PictureError(Exception):
    """A manifest, template or glyph that cannot be used."""


# Colours -----------------------------------------------------------------

def darker(colour, share):
    return "#" + "".join("%02x" % round(int(colour[i:i + 2], 16) * (1 - share)) for i in (1, 3, 5))


def colours(scheme, state):
    """The names that templates and glyphs use for colours."""
    result = {"ink": "#ffffff"}
    result.update(scheme)
    if state == "pressed":
        result["body"] = darker(result["body"], 0.10)
        if "rim" in result:
            result["rim"] = darker(result["rim"], 0.10)
    result.setdefault("rim", darker(result["body"], 0.15))
    result.setdefault("wheel", result["dark"])
    result["ground"] = result["body"]
    result["dy"] = 1 if state == "pressed" else 0
    result["down"] = state == "pressed"
    return result


# Templates ---------------------------------------------------------------

def evaluate(expression, values):
    """Value of a placeholder: a name, or sums and products of names and numbers."""
    def visit(node):
        if isinstance(node, ast.Expression):
            return visit(node.body)
        if isinstance(node, ast.Constant):
            return node.value
        if isinstance(node, ast.Name):
            if node.id not in values:
                raise PictureError("unknown placeholder %r" % node.id)
            return values[node.id]
        if isinstance(node, ast.UnaryOp) and isinstance(node.op, ast.USub):
            return -visit(node.operand)
        if isinstance(node, ast.BinOp) and type(node.op) in OPERATORS:
            return OPERATORS[type(node.op)](visit(node.left), visit(node.right))
        raise PictureError("bad placeholder %r" % expression)

    value = visit(ast.parse(expression.strip(), mode="eval"))
    return "%g" % value if isinstance(value, float) else str(value)


def fill(text, values):
    """Fills sections {{#name}}..{{/name}}, {{^name}}..{{/name}} and placeholders."""
    section = re.compile(r"\{\{([#^])(\w+)\}\}(.*?)\{\{/\2\}\}", re.S)
    while section.search(text):
        text = section.sub(
            lambda m: m.group(3) if bool(values.get(m.group(2))) == (m.group(1) == "#") else "",
            text)
    return re.sub(r"\{\{([^{}]+)\}\}", lambda m: evaluate(m.group(1), values), text)


class Art:
    """Templates, glyphs, colour schemes and LED rows, read once."""

    def __init__(self, root):
        self.root = root
        self.schemes = json.loads((root / "palette.json").read_text(encoding="utf-8"))
        self.leds = json.loads((root / "leds.json").read_text(encoding="utf-8"))
        self._texts = {}

    def template(self, name):
        return self._text("templates", name)

    def glyph(self, name):
        """The content of a glyph file without its svg element."""
        match = re.search(r"<svg[^>]*>(.*)</svg>", self._text("glyphs", name), re.S)
        if not match:
            raise PictureError("glyph %s has no svg element" % name)
        return match.group(1)

    def _text(self, kind, name):
        path = self.root / kind / (name + ".svg")
        if path not in self._texts:
            if not path.exists():
                raise PictureError("no file %s" % path)
            text = path.read_text(encoding="utf-8")
            self._texts[path] = re.sub(r"<!--.*?-->", "", text, flags=re.S)
        return self._texts[path]

    def rows(self, reference):
        """Eight row bytes of "led:NUMBER", "led:off", "face:INDEX:left" or ":right"."""
        kind, _, rest = reference.partition(":")
        if kind == "face":
            index, _, side = rest.partition(":")
            return [row_value(row) for row in self.leds["faces"][int(index)][side]]
        if rest == "off":
            return [0] * 8
        return [int(part, 16) for part in self.leds["symbols"][rest]["rows"].split(",")]


def row_value(row):
    return int("".join("1" if dot == "#" else "0" for dot in row), 2)


def led_panel(art, rows, side, values):
    """One display: a dark panel with 8 by 8 dots, the highest bit at the left. All dots are equal:
    their pitch is a whole number of pixels."""
    pitch = (side - 2) // 8
    first = (side - 7 * pitch) / 2
    dots = ['<circle cx="%g" cy="%g" r="%g" fill="%s"/>' % (
        first + pitch * column, first + pitch * line, 0.44 * pitch,
        "#ffb300" if bits >> (7 - column) & 1 else "#24384a")
        for line, bits in enumerate(rows) for column in range(8)]
    return fill(art.template("led"), dict(values, side=side, first=first, dots="".join(dots)))


def display(art, reference, side, values):
    """A display that shows a symbol, or a dark one with its lid closed."""
    panel = led_panel(art, art.rows(reference), side, values)
    if reference != "led:off":
        return panel
    lid = fill(art.glyph("lid"), values)
    return panel + '<g transform="scale(%g)">%s</g>' % (side / GLYPH_SIDE, lid)


def robot_face(art, reference, values):
    """The two displays of a face, in the outline of a robot's head of 76 by 48."""
    sides = [reference + ":left", reference + ":right"] if reference != "face:off" else ["led:off"] * 2
    eyes = "".join('<g transform="translate(%d 10)">%s</g>' % (x, display(art, side, 34, values))
                   for x, side in zip((3, 39), sides))
    return fill(art.template("face"), dict(values, eyes=eyes))


def glyph_group(art, item, values):
    """One glyph, drawn into its box."""
    name, x, y, width, height = item[:5]
    options = item[5] if len(item) > 5 else {}
    values = dict(values, **{key: values.get(value, value) if isinstance(value, str) else value
                             for key, value in options.items() if key != "mirror"})
    field = (GLYPH_SIDE, GLYPH_SIDE)
    if name.startswith("led:"):
        content, field = display(art, name, width, values), (width, height)
    elif name.startswith("face:"):
        content, field = robot_face(art, name, values), (76, 48)
    else:
        content = fill(art.glyph(name), values)
    mirror = {"x": "translate(%d 0) scale(-1 1)" % GLYPH_SIDE,
              "y": "translate(0 %d) scale(1 -1)" % GLYPH_SIDE}.get(options.get("mirror"), "")
    return ('<g transform="translate(%g %g) scale(%g %g) %s" fill="none" stroke="%s" '
            'stroke-width="5" stroke-linecap="round" stroke-linejoin="round" opacity="%s">%s</g>'
            % (x, y, width / field[0], height / field[1], mirror, values["ink"],
               values.get("opacity", 1), content))


# Manifests ---------------------------------------------------------------

def load_groups(manifests):
    """The groups of all manifests, their pictures with the defaults and the parts filled in."""
    groups, seen = [], {}
    for manifest in manifests:
        with open(manifest, encoding="utf-8") as file:
            content = json.load(file)
        parts = content.get("parts", {})
        for group in content["groups"]:
            pictures = []
            for entry in group["pictures"]:
                picture = dict(group.get("defaults", {}), **entry)
                name = picture["name"]
                if name in seen:
                    raise PictureError("%s stands twice: %s and %s" % (name, seen[name], manifest))
                seen[name] = manifest
                picture["parts"] = [part for key in picture.get("parts", "").split()
                                    for part in parts[key]]
                pictures.append(picture)
            groups.append(dict(group, pictures=pictures))
    return groups


def part_group(art, part):
    """A picture within a picture, at its place."""
    content = re.search(r"<svg[^>]*>(.*)</svg>", compose(art, part), re.S).group(1)
    return '<g transform="translate(%g %g)">%s</g>' % (*part["at"], content)


def compose(art, picture):
    """The SVG text of a picture."""
    width, height = picture["size"]
    values = {"w": width, "h": height}
    try:
        values.update(colours(art.schemes[picture["scheme"]], picture.get("state", "normal")))
        values.update(picture.get("set", {}))
        values["content"] = "".join(glyph_group(art, item, values)
                                    for item in picture.get("glyphs", []))
        text = fill(art.template(picture["template"]), values)
        parts = "".join(part_group(art, part) for part in picture.get("parts", []))
        return text.replace("</svg>", parts + "</svg>")
    except (KeyError, IndexError, PictureError) as error:
        raise PictureError("%s: %s" % (picture.get("name", "part"), error)) from error


# Output ------------------------------------------------------------------

def rasterize(rsvg, svg, width, height, target):
    target.parent.mkdir(parents=True, exist_ok=True)
    temporary = target.with_name(target.name + ".part")
    done = subprocess.run([rsvg, "-w", str(width), "-h", str(height), "-o", str(temporary)],
                          input=svg.encode("utf-8"), stderr=subprocess.PIPE, check=False)
    if done.returncode == 0:
        done = subprocess.run(OPTIPNG + [str(temporary)], stderr=subprocess.PIPE, check=False)
    if done.returncode != 0:
        raise PictureError("%s: %s" % (target.name, done.stderr.decode(errors="replace").strip()))
    os.replace(temporary, target)


def files_of(picture):
    """The names of a picture's files, each with how many pixels a unit takes in it."""
    name = picture["name"]
    yield name, 1
    if not picture.get("once"):
        stem, suffix = os.path.splitext(name)
        yield stem + "@2x" + suffix, 2


def write_if_changed(path, text):
    if path.exists() and path.read_text(encoding="utf-8") == text:
        return
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_text(text, encoding="utf-8")


def render_all(art, groups, out, rsvg):
    """Renders what has changed and returns the files rendered, and all with their digests."""
    cache_path = out / ".rendered.json"
    cache = json.loads(cache_path.read_text()) if cache_path.exists() else {}
    wanted, jobs = {}, []
    for group in groups:
        for picture in group["pictures"]:
            svg = compose(art, picture)
            for name, factor in files_of(picture):
                width, height = (factor * side for side in picture["size"])
                digest = hashlib.sha256(
                    ("%s %d %d " % (" ".join(OPTIPNG), width, height) + svg).encode()).hexdigest()
                wanted[name] = digest
                if cache.get(name) != digest or not (out / name).exists():
                    jobs.append((name, svg, width, height))
    for name in set(cache) - set(wanted):
        (out / name).unlink(missing_ok=True)

    known = {name: digest for name, digest in cache.items() if wanted.get(name) == digest}
    try:
        with concurrent.futures.ThreadPoolExecutor(WORKERS) as pool:
            futures = {pool.submit(rasterize, rsvg, svg, width, height, out / name): name
                       for name, svg, width, height in jobs}
            for future in concurrent.futures.as_completed(futures):
                future.result()
                known[futures[future]] = wanted[futures[future]]
    finally:
        out.mkdir(parents=True, exist_ok=True)
        write_if_changed(cache_path, json.dumps(known, indent=0, sort_keys=True))
    return [job[0] for job in jobs], wanted


def write_collection(path, out, wanted):
    """The collection file. Its digest makes rcc run again when a picture changes."""
    digest = hashlib.sha256(json.dumps(wanted, sort_keys=True).encode()).hexdigest()
    lines = ["<!-- %s -->" % digest, "<RCC>", '<qresource prefix="/">']
    for name in sorted(wanted):
        file = os.path.relpath(out / name, path.parent)
        lines.append("<file alias=%s>%s</file>" % (quoteattr(name), escape(file)))
    lines += ["</qresource>", "</RCC>", ""]
    write_if_changed(path, "\n".join(lines))


def contact_sheet(groups, out, target, rsvg, scale):
    """All pictures, grouped and labelled, on the ground on which each group stands."""
    width, margin, label = 1600, 16, 14
    parts, top = [], margin
    for group in groups:
        title_top = top
        top += 30
        x, line, start, cells = margin + 8, 0, top, []
        for picture in group["pictures"]:
            picture_width, picture_height = (side * scale for side in picture["size"])
            shrink = min(1.0, 420 / picture_width)
            picture_width, picture_height = picture_width * shrink, picture_height * shrink
            name = picture["name"]
            cell = max(picture_width, 5.2 * len(name)) + 12
            if x + cell > width - margin:
                x, top, line = margin + 8, top + line, 0
            data = base64.b64encode((out / name).read_bytes()).decode()
            cells.append('<image x="%g" y="%g" width="%g" height="%g" '
                         'xlink:href="data:image/png;base64,%s"/>'
                         % (x, top + 8, picture_width, picture_height, data))
            cells.append('<text x="%g" y="%g" font-size="9" fill="%s">%s</text>'
                         % (x, top + picture_height + 20, group.get("label", "#333333"),
                            escape(name)))
            x += cell
            line = max(line, picture_height + 14 + label)
        top += line + 6
        parts.append('<text x="%d" y="%d" font-size="16" font-weight="bold" fill="#222">%s</text>'
                     % (margin, title_top + 20, escape(group["title"])))
        parts.append('<rect x="%d" y="%d" width="%d" height="%g" fill="%s"/>'
                     % (margin, start, width - 2 * margin, top - start,
                        group.get("ground", "#f3f9fc")))
        parts += cells
        top += 10
    svg = ('<svg xmlns="http://www.w3.org/2000/svg" xmlns:xlink="http://www.w3.org/1999/xlink" '
           'width="%d" height="%d" font-family="sans-serif"><rect width="100%%" height="100%%" '
           'fill="#ffffff"/>%s</svg>' % (width, top + margin, "".join(parts)))
    with tempfile.NamedTemporaryFile("w", suffix=".svg", encoding="utf-8") as file:
        file.write(svg)
        file.flush()
        target.parent.mkdir(parents=True, exist_ok=True)
        subprocess.run([rsvg, "--unlimited", "-o", str(target), file.name], check=True)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("--manifest", nargs="+", default=[str(HERE / "pictures.json")])
    parser.add_argument("--out", type=pathlib.Path, help="directory for the pictures")
    parser.add_argument("--qrc", type=pathlib.Path, help="collection file to write")
    parser.add_argument("--rsvg", default="rsvg-convert", help="the rsvg-convert command")
    parser.add_argument("--list", action="store_true", help="print the output names and stop")
    parser.add_argument("--contact-sheet", type=pathlib.Path, help="lay all pictures out on one")
    parser.add_argument("--scale", type=float, default=1.0, help="scale on the contact sheet")
    arguments = parser.parse_args()

    try:
        groups = load_groups(arguments.manifest)
        if arguments.list:
            for group in groups:
                for picture in group["pictures"]:
                    for name, _ in files_of(picture):
                        print(name)
            return 0
        if arguments.out is None:
            parser.error("--out is needed")
        out = arguments.out.resolve()
        rendered, wanted = render_all(Art(HERE), groups, out, arguments.rsvg)
        if arguments.qrc:
            write_collection(arguments.qrc.resolve(), out, wanted)
        if arguments.contact_sheet:
            contact_sheet(groups, out, arguments.contact_sheet.resolve(), arguments.rsvg,
                          arguments.scale)
    except (PictureError, OSError, ValueError, KeyError, subprocess.CalledProcessError) as error:
        print("render.py: %s" % error, file=sys.stderr)
        return 1
    print("%d files, %d rendered" % (len(wanted), len(rendered)))
    return 0


if __name__ == "__main__":
    sys.exit(main())
