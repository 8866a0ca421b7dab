#!/usr/bin/env python3
"""Tests of the scripts in tools/, each run from a copy of its own, beside sources of its own."""

import json
import os
import pathlib
import shutil
import subprocess
import tempfile
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]

CLEAN = "int twice(int p_number) { return 2 * p_number; }\n"


class ScriptCase(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory(prefix="tools-")
        self.addCleanup(temporary.cleanup)
        self.root = pathlib.Path(temporary.name) / "小明 的家" / "Tiler (2)"
        shutil.copytree(ROOT / "tools", self.root / "tools")

    def write(self, name, text):
        path = self.root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, "utf-8")
        return path

    def run_script(self, name, *arguments, **variables):
        """From another folder: no script may rely on the one that it is called in."""
        return subprocess.run([self.root / "tools" / name, *arguments], cwd=self.root.parent,
                              env=dict(os.environ, **variables), capture_output=True, text=True,
                              timeout=120)

    def passes(self, name, *arguments):
        result = self.run_script(name, *arguments)
        self.assertEqual(result.returncode, 0, result.stdout + result.stderr)
        return result.stdout

    def fails(self, message, name, *arguments):
        result = self.run_script(name, *arguments)
        self.assertNotEqual(result.returncode, 0, result.stdout)
        self.assertIn(message, result.stdout + result.stderr)


def needs(program):
    return unittest.skipUnless(shutil.which(program), program + " is not installed")


@needs("clang-format")
class FormatTest(ScriptCase):
    def setUp(self):
        super().setUp()
        shutil.copy(ROOT / ".clang-format", self.root)
        for folder in ("module", "actions", "logging", "tests", "benchmarks"):
            self.write(folder + "/clean.cpp", CLEAN)

    def test_clean_sources_pass(self):
        self.passes("check-format.sh")

    def test_a_source_of_another_form_is_told_and_put_in_order(self):
        for name in ("module/deep/odd.cpp", "tests/odd.h"):
            with self.subTest(name=name):
                path = self.write(name, "int   odd( int p_number ){return p_number;}\n")
                self.fails(name, "check-format.sh")
                self.passes("check-format.sh", "--fix")
                self.assertEqual(path.read_text("utf-8"), "int odd(int p_number) { return p_number; }\n")
                self.passes("check-format.sh")

    def test_a_trait_on_purpose_has_one_form(self):
        self.write("logging/clean.cpp", "// Meant: both, the design has it so.\n" + CLEAN)
        self.passes("check-format.sh")
        for comment in ("// This is meant so.", "// Meant so.", "// Left out on purpose."):
            with self.subTest(comment=comment):
                self.write("logging/clean.cpp", comment + "\n" + CLEAN)
                self.fails("logging/clean.cpp", "check-format.sh")


class IncludesTest(ScriptCase):
    TABLE = ("| Floor | Room | Holds | Needs |\n|---|---|---|---|\n"
             "| 0 | `module/source/base/` | | |\n"
             "| 1 | `module/source/text/` | | `module/source/base/` |\n")

    def setUp(self):
        super().setUp()
        self.write("docs/architecture.md", self.TABLE)
        for folder in ("actions", "logging"):
            (self.root / folder).mkdir()
        self.write("module/source/base/CMakeLists.txt", "tiler_room(tiler_base\n  SOURCES base.cpp)\n")
        self.write("module/source/text/CMakeLists.txt",
                   "tiler_room(tiler_text\n  SOURCES text.cpp\n  NEEDS tiler_base)\n")
        self.write("module/source/base/base.h", "#pragma once\n")
        self.write("module/source/base/base.cpp", '#include "base/base.h"\n')
        self.write("module/source/text/text.h", "#pragma once\n")
        self.write("module/source/text/text.cpp", '#include "text/text.h"\n\n#include "base/base.h"\n')

    def test_what_the_table_says_passes(self):
        self.assertIn("4 sources in 2 rooms", self.passes("check-includes.py"))

    def test_an_include_upwards_is_told(self):
        self.write("module/source/base/base.cpp", '#include "text/text.h"\n')
        self.fails("module/source/base/base.cpp:1: module/source/base does not need module/source/text",
                   "check-includes.py")

    def test_an_include_without_its_room_is_told(self):
        self.write("module/source/base/base.cpp", '#include "base.h"\n')
        self.fails("does not say its room", "check-includes.py")

    def test_a_need_that_nothing_includes_or_links_is_told(self):
        self.write("module/source/text/text.cpp", '#include "text/text.h"\n')
        self.fails("includes nothing of it", "check-includes.py")
        self.write("module/source/text/text.cpp", '#include "base/base.h"\n')
        self.write("module/source/text/CMakeLists.txt", "tiler_room(tiler_text\n  SOURCES text.cpp)\n")
        self.fails("doesn't link module/source/base", "check-includes.py")

    def test_a_floor_that_needs_a_higher_one_is_told(self):
        self.write("docs/architecture.md", self.TABLE.replace("| 0 |", "| 2 |"))
        self.fails("on a higher floor", "check-includes.py")


@needs("clang-tidy")
class TidyTest(ScriptCase):
    def setUp(self):
        super().setUp()
        shutil.copy(ROOT / ".clang-tidy", self.root)
        for folder in ("actions", "logging"):
            (self.root / folder).mkdir()
        self.source = self.write("module/source/base/clean.cpp", CLEAN)
        self.write("module/source/base/elsewhere.cpp", "#error for another system\n")
        self.build = self.root / "build 构建"
        self.write("build 构建/compile_commands.json", json.dumps([
            {"directory": str(self.build), "file": str(self.source),
             "command": "c++ -std=c++17 -c '%s'" % self.source}], ensure_ascii=False))

    def test_only_what_is_built_and_has_changed_is_looked_at(self):
        self.assertIn("1 sources looked at.", self.passes("check-tidy.sh", self.build))
        # With a program that fails, a source that was looked at once more would be told.
        shim = self.write("shims/clang-tidy", "#!/bin/sh\nexit 1\n")
        shim.chmod(0o755)
        path = "%s:%s" % (shim.parent, os.environ["PATH"])
        self.assertEqual(self.run_script("check-tidy.sh", self.build, PATH=path).returncode, 0)
        self.source.write_text(CLEAN + CLEAN.replace("twice", "again"), "utf-8")
        self.assertNotEqual(self.run_script("check-tidy.sh", self.build, PATH=path).returncode, 0)

    def test_a_finding_is_told(self):
        self.source.write_text("int* nothing() { return 0; }\n", "utf-8")
        self.fails("clang-tidy: module/source/base/clean.cpp", "check-tidy.sh", self.build)

    def test_a_build_without_a_list_is_told(self):
        (self.build / "compile_commands.json").write_text("[]", "utf-8")
        self.fails("has no list of sources", "check-tidy.sh", self.build)


@needs("x86_64-w64-mingw32-g++-posix")
class WindowsTest(ScriptCase):
    def test_what_is_windows_own_is_compiled(self):
        self.write("module/source/base/windowsthing.cpp",
                   "#include <windows.h>\n\nDWORD ticks() { return GetTickCount(); }\n")
        self.write("module/source/base/clean.cpp", "#error not looked at\n")
        self.assertIn("1 sources compiled", self.passes("check-windows.sh"))
        self.write("logging/other.cpp", "#ifdef Q_OS_WIN\n#endif\n#ifdef _WIN32\nint ticks() { return GetTicks(); }\n#endif\n")
        self.fails("Not for Windows: logging/other.cpp", "check-windows.sh")


class FaultsTest(ScriptCase):
    """A project of one function and one test of it."""

    FAULTS = [
        {"name": "three times", "old": "2 *", "new": "3 *"},
        {"name": "the other way", "old": "2 * p_number", "new": "p_number * 2"},
        {"name": "no end", "old": ";"},
        {"name": "twice nothing", "old": "2 *", "new": "2 + 0 *", "tests": "nobody"},
        {"name": "another text", "old": "return", "new": "return +", "equivalent": "The sign does nothing."},
    ]

    def setUp(self):
        super().setUp()
        self.write("CMakeLists.txt",
                   "cmake_minimum_required(VERSION 3.16)\nproject(twice LANGUAGES CXX)\nenable_testing()\n"
                   "add_executable(twicetest module/twice.cpp tests/twicetest.cpp)\n"
                   "add_test(NAME twicetest COMMAND twicetest)\n")
        self.source = self.write("module/twice.cpp", CLEAN)
        self.write("tests/twicetest.cpp", "int twice(int);\n\nint main() { return twice(4) == 8 ? 0 : 1; }\n")
        self.build = self.root / "build 构建"
        subprocess.run(["cmake", "-G", "Ninja", "-S", self.root, "-B", self.build], check=True,
                       capture_output=True)
        subprocess.run(["cmake", "--build", self.build], check=True, capture_output=True)
        self.put_faults(self.FAULTS)

    def put_faults(self, faults):
        self.write("tests/faults/base.json", json.dumps(
            {"module/twice.cpp": [{"tests": "twicetest", **fault} for fault in faults]}))

    def test_each_fault_is_tried_and_told_and_the_source_put_back(self):
        result = self.run_script("try-faults.py", self.build)
        self.assertEqual(result.returncode, 1, result.stderr)
        for line in ("base: three times: noticed (", "base: the other way: survived (",
                     "base: no end: does not build (", "base: twice nothing: no such test (",
                     "base: 1 of 4 noticed, 1 can't be seen\n"):
            self.assertIn(line, result.stdout)
        self.assertNotIn("another text", result.stdout)
        self.assertEqual(self.source.read_text("utf-8"), CLEAN)

    def test_a_result_holds_until_the_fault_or_the_file_changes(self):
        self.put_faults(self.FAULTS[:1])
        tried = "three times: noticed"
        self.assertIn(tried, self.passes("try-faults.py", self.build))
        again = self.passes("try-faults.py", self.build)
        self.assertNotIn(tried, again)
        self.assertIn("base: 1 of 1 noticed", again)
        self.assertIn(tried, self.passes("try-faults.py", self.build, "--again"))
        self.source.write_text("// Changed.\n" + CLEAN, "utf-8")
        self.assertIn(tried, self.passes("try-faults.py", self.build))
        self.put_faults([dict(self.FAULTS[0], new="4 *")])
        self.assertIn(tried, self.passes("try-faults.py", self.build))

    def test_a_survivor_is_tried_again(self):
        self.put_faults([dict(self.FAULTS[0], old="p_number;", new="p_number + 0;")])
        self.assertEqual(self.run_script("try-faults.py", self.build).returncode, 1)
        # As it would be with a better test.
        self.write("tests/twicetest.cpp", "int main() { return 1; }\n")
        self.assertIn("three times: noticed", self.passes("try-faults.py", self.build))

    def test_only_some_are_tried(self):
        told = self.run_script("try-faults.py", self.build, "--only", "three|other").stdout
        self.assertIn("base: 1 of 2 noticed", told)

    def test_a_survivor_with_its_reason_survives_all_the_same(self):
        self.put_faults([self.FAULTS[0], dict(self.FAULTS[1], survives="Both are the same.")])
        result = self.run_script("try-faults.py", self.build)
        self.assertEqual(result.returncode, 1)
        self.assertIn("base: 1 of 2 noticed", result.stdout)
        self.assertIn("  the other way: survived: Both are the same.\n", result.stdout)

    def test_a_fault_that_has_no_place_is_told(self):
        for old in ("p_number", "nowhere"):
            with self.subTest(old=old):
                self.put_faults([{"name": "lost", "old": old}])
                result = self.run_script("try-faults.py", self.build)
                self.assertNotEqual(result.returncode, 0)
                self.assertIn("the old text of \"lost\" stands %d times" % CLEAN.count(old), result.stderr)

    def test_a_fault_that_lacks_something_or_stands_twice_is_told(self):
        twice = self.write("tests/faults/text.json", '{"module/twice.cpp": [], "module/twice.cpp": []}')
        self.fails("something stands twice among module/twice.cpp", "try-faults.py", self.build)
        twice.unlink()
        self.put_faults([{"name": "half", "new": "2 *"}])
        self.fails("half lacks or can't have old", "try-faults.py", self.build)
        self.put_faults([dict(self.FAULTS[0], now="4 *")])
        self.fails("three times lacks or can't have now", "try-faults.py", self.build)
        self.put_faults(self.FAULTS[:1] * 2)
        self.fails("\"three times\" stands twice", "try-faults.py", self.build)


if __name__ == "__main__":
    unittest.main()
