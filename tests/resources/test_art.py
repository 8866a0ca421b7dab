#!/usr/bin/env python3
"""Tests of the scripts that make the pictures and compare their names with the sources, each run from
a copy of its own, beside pictures of its own."""

import json
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

ART = pathlib.Path(__file__).resolve().parents[2] / "resources" / "art"

SCHEME = {"base": "#123456", "body": "#406080", "accent": "#ffd84d", "dark": "#0b1620"}
PLATE = ('<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {{w}} {{h}}"><!-- {{nobody}} -->'
         '<rect width="{{w - 1}}" height="{{2 * h / 4}}" fill="{{body}}"/>{{#down}}<g/>{{/down}}{{content}}</svg>')


class ArtCase(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory(prefix="art-")
        self.addCleanup(temporary.cleanup)
        self.root = pathlib.Path(temporary.name) / "小明 的家" / "Tiler & (2)"
        self.art = self.root / "art"
        self.out = self.root / "out 图"
        for script in ("render.py", "check.py"):
            self.art.mkdir(parents=True, exist_ok=True)
            shutil.copy(ART / script, self.art)
        self.write("art/palette.json", json.dumps({"plain": SCHEME}))
        self.write("art/leds.json", json.dumps({"symbols": {}, "faces": []}))
        self.write("art/templates/plate.svg", PLATE)
        self.write("art/glyphs/dot.svg", '<svg viewBox="0 0 80 80"><circle r="9"/></svg>')
        self.manifest = self.root / "所有 pictures.json"
        self.pictures({"name": "a.png"}, {"name": "block/b & c.png", "state": "pressed"})

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, "utf-8")
        return path

    def pictures(self, *pictures, **defaults):
        defaults = {"size": [20, 10], "scheme": "plain", "template": "plate",
                    "glyphs": [["dot", 1, 1, 8, 8]], **defaults}
        self.write(self.manifest.name, json.dumps(
            {"groups": [{"title": "all", "defaults": defaults, "pictures": pictures}]}))

    def run_script(self, name, *arguments):
        return subprocess.run([sys.executable, "-B", self.art / name, *arguments, "--manifest", self.manifest],
                              cwd=self.root.parent, capture_output=True, text=True, timeout=60)


@unittest.skipUnless(shutil.which("rsvg-convert") and shutil.which("optipng"), "no tools for pictures")
class RenderTest(ArtCase):
    def render(self):
        """What the script says: how many files there are, and how many it rendered."""
        result = self.run_script("render.py", "--out", self.out, "--qrc", self.root / "all.qrc")
        self.assertEqual(result.returncode, 0, result.stderr)
        return tuple(map(int, re.fullmatch(r"(\d+) files, (\d+) rendered\n", result.stdout).groups()))

    def fails(self, message):
        result = self.run_script("render.py", "--out", self.out)
        self.assertEqual(result.returncode, 1, result.stdout)
        self.assertIn(message, result.stderr)

    def files(self):
        return sorted(path.relative_to(self.out).as_posix() for path in self.out.rglob("*.png"))

    def size(self, name):
        """Width and height out of the head of a PNG."""
        data = (self.out / name).read_bytes()
        self.assertEqual(data[:8], b"\x89PNG\r\n\x1a\n")
        return int.from_bytes(data[16:20], "big"), int.from_bytes(data[20:24], "big")

    def test_each_picture_has_its_size_and_only_changed_ones_are_rendered(self):
        self.assertEqual(self.render(), (4, 4))
        self.assertEqual(self.files(), ["a.png", "a@2x.png", "block/b & c.png", "block/b & c@2x.png"])
        self.assertEqual(self.size("block/b & c.png"), (20, 10))
        self.assertEqual(self.size("block/b & c@2x.png"), (40, 20))
        self.assertEqual(self.render(), (4, 0))
        self.pictures({"name": "a.png", "size": [30, 11]}, {"name": "block/b & c.png", "state": "pressed"})
        self.assertEqual(self.render(), (4, 2))
        self.assertEqual(self.size("a.png"), (30, 11))
        self.assertEqual(self.size("a@2x.png"), (60, 22))

    def test_a_picture_is_rendered_anew_in_another_size(self):
        self.write("art/templates/fixed.svg", '<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 20 10"/>')
        self.pictures({"name": "a.png", "template": "fixed"})
        self.assertEqual(self.render(), (2, 2))
        self.pictures({"name": "a.png", "template": "fixed", "size": [40, 20]})
        self.assertEqual(self.render(), (2, 2))
        self.assertEqual(self.size("a.png"), (40, 20))

    def test_a_picture_of_its_own_for_each_size_has_one_file(self):
        self.pictures({"name": "a.png", "once": 1}, {"name": "b.png"})
        self.assertEqual(self.render(), (3, 3))
        self.assertEqual(self.files(), ["a.png", "b.png", "b@2x.png"])

    def test_a_picture_that_is_gone_comes_back(self):
        self.render()
        (self.out / "a.png").unlink()
        self.assertEqual(self.render(), (4, 1))
        self.assertEqual(self.files(), ["a.png", "a@2x.png", "block/b & c.png", "block/b & c@2x.png"])

    def test_a_picture_that_nobody_wants_any_more_goes(self):
        self.render()
        self.pictures({"name": "a.png"})
        self.assertEqual(self.render(), (2, 0))
        self.assertEqual(self.files(), ["a.png", "a@2x.png"])

    def test_the_collection_changes_with_the_pictures_alone(self):
        self.render()
        collection = self.root / "all.qrc"
        text, time = collection.read_text("utf-8"), collection.stat().st_mtime_ns
        self.assertIn('<file alias="block/b &amp; c.png">out 图/block/b &amp; c.png</file>', text)
        self.render()
        self.assertEqual(collection.stat().st_mtime_ns, time)
        self.write("art/glyphs/dot.svg", '<svg viewBox="0 0 80 80"><circle r="10"/></svg>')
        self.assertEqual(self.render(), (4, 4))
        self.assertNotEqual(collection.read_text("utf-8"), text)

    def test_a_state_has_its_own_look(self):
        self.pictures({"name": "a.png"}, {"name": "b.png", "state": "pressed"}, {"name": "c.png"})
        self.render()
        a, b, c = ((self.out / name).read_bytes() for name in ("a.png", "b.png", "c.png"))
        self.assertNotEqual(a, b)
        self.assertEqual(a, c)

    def test_mistakes_are_told(self):
        for picture, message in (({"name": "a.png", "template": "none"}, "none.svg"),
                                 ({"name": "a.png", "scheme": "none"}, "a.png: 'none'"),
                                 ({"name": "a.png", "glyphs": [["none", 0, 0, 8, 8]]}, "none.svg")):
            with self.subTest(picture=picture):
                self.pictures(picture)
                self.fails(message)
        self.pictures({"name": "a.png"}, {"name": "a.png"})
        self.fails("a.png stands twice")
        self.pictures({"name": "a.png"})
        for text, message in (("{{nobody}}", "unknown placeholder 'nobody'"), ("{{w ** 2}}", "bad placeholder")):
            with self.subTest(text=text):
                self.write("art/templates/plate.svg", PLATE.replace("{{content}}", text))
                self.fails(message)


class CheckTest(ArtCase):
    def setUp(self):
        super().setUp()
        self.pictures({"name": "a.png"}, {"name": "n/1.png"}, {"name": "n/12.png"}, {"name": "n/left_pre.png"})
        self.source("const char* all[] = {\":/a.png\", \":/n/%1.png\", \":/n/%1_pre.png\", \"left\"};\n")

    def source(self, text, name="source/a.cpp"):
        self.write(name, text)

    def check(self):
        return self.run_script("check.py", "--sources", self.root / "source", "--stamp", self.root / "stamps" / "ok")

    def passes(self):
        result = self.check()
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertTrue((self.root / "stamps" / "ok").exists())

    def fails(self, *messages):
        result = self.check()
        self.assertEqual(result.returncode, 1, result.stdout)
        self.assertFalse((self.root / "stamps" / "ok").exists())
        for message in messages:
            self.assertIn(message, result.stderr)
        self.assertIn("check.py: %d faults" % len(messages), result.stderr)

    def test_names_and_pictures_that_fit_pass(self):
        self.passes()

    def test_a_name_without_a_picture_is_told_with_its_place(self):
        self.source("\n\nauto text = \"border-image: url(:/none.png);\";\n", "source/deep/b.h")
        self.fails("no picture for \":/none.png\", named at ")
        self.assertIn("b.h:3", self.check().stderr)

    def test_a_picture_that_no_source_names_is_told(self):
        self.source("auto all = {\":/a.png\", \":/n/%1.png\"}; // \":/n/left_pre.png\"\n/* \":/n/left_pre.png\" */\n")
        self.fails("no source names the picture \"n/left_pre.png\"")

    def test_a_marker_stands_for_numbers_and_texts_of_the_sources(self):
        self.pictures({"name": "a.png"}, {"name": "n/x.png"}, {"name": "n/right_pre.png"}, {"name": "n/4.png"})
        self.fails("no picture for \":/n/%1_pre.png\"", "\"n/x.png\"", "\"n/right_pre.png\"")

    def test_a_name_may_be_put_together_and_written_in_other_ways(self):
        self.source("auto all = {u8\":/a\" /* so */\n  \".png\", R\"(:/n/%1.png)\", \":\\x2fn/%1\"\n\"_pre.png\", \"left\"};\n"
                    "const char quote = '\"';\n")
        self.passes()

    def test_a_form_is_looked_at_as_a_whole(self):
        self.source("auto all = {\":/n/%1.png\", \":/n/%1_pre.png\", \"left\"};\n")
        self.source("<ui><string>:/a.png</string><!-- :/none.png --></ui>\n", "source/window.ui")
        self.passes()

    def test_a_folder_that_is_not_there_is_told(self):
        shutil.rmtree(self.root / "source")
        result = self.check()
        self.assertEqual(result.returncode, 1)
        self.assertIn("no directory", result.stderr)


if __name__ == "__main__":
    unittest.main()
