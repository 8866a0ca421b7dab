#!/usr/bin/env python3
"""Tests of the layout of the kit and of compiling with it."""

import filecmp
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unittest

from kitcase import ENDED, EVERY_CALL, SOURCE, Kit, KitCase, all_files, program, put_tool, task

PREFIX = "../../../example/user_main.c:"


class LayoutTest(unittest.TestCase):
    def test_build_tree_and_installation_hold_the_same(self):
        with tempfile.TemporaryDirectory(prefix="toolchain-") as folder:
            folder = pathlib.Path(folder)
            (folder / "CMakeLists.txt").write_text(
                'cmake_minimum_required(VERSION 3.16)\nproject(layout LANGUAGES NONE)\n'
                'add_subdirectory("%s" kit)\n'
                'tiler_lay_out_kit("${CMAKE_BINARY_DIR}/bin/gcc")\n' % SOURCE)
            for command in (["-S", folder, "-B", folder / "build"],
                            ["--build", folder / "build"],
                            ["--install", folder / "build", "--prefix", folder / "prefix"]):
                subprocess.run(["cmake", *command], check=True, capture_output=True)
            built, installed = folder / "build" / "bin" / "gcc", folder / "prefix" / "gcc"

            files = all_files(built)
            self.assertEqual(files, all_files(installed))
            for name in ("example/vantrel.h", "example/user_main.c", "example/build/gcc/makefile",
                         "example/build/gcc/make.exe", "example/build/gcc/objects",
                         "runtime/startup.S", "runtime/controller.ld", "run-on-emulator"):
                self.assertIn(name, files)
            plain = [name for name in files if (built / name).is_file()]
            self.assertEqual(filecmp.cmpfiles(built, installed, plain, shallow=False)[1:], ([], []))
            for name in ("example/build/gcc/make.exe", "run-on-emulator"):
                self.assertTrue(os.access(built / name, os.X_OK))
                self.assertTrue(os.access(installed / name, os.X_OK))

            # What the program wrote stays when the kit is laid out again; what make would take for
            # newer than its source doesn't.
            (built / "example" / "user_main.c").write_text("mine")
            objects = built / "example" / "build" / "gcc" / "objects" / "runtime"
            whole = (objects / "all.o").read_bytes()
            (objects / "all.o").write_text("made from other sources")
            Kit.lay_out(built)
            self.assertEqual((built / "example" / "user_main.c").read_text(), "mine")
            self.assertEqual((objects / "all.o").read_bytes(), whole)

            kit = Kit(installed)
            self.assertEqual(kit.make().returncode, 0)

    def test_a_kit_that_is_laid_out_again_has_no_older_runtime(self):
        with tempfile.TemporaryDirectory(prefix="toolchain-") as folder:
            kit = Kit.lay_out(pathlib.Path(folder) / "gcc")
            calls = kit.root / "runtime" / "calls.c"
            calls.write_text(calls.read_text("utf-8").replace('"custom"', '"another"'), "utf-8")
            text = program("disp_custom(2,(LedMaritx){{1,2,3,4,5,6,7,8}});\n")
            for told in ("another", "custom"):
                self.assertEqual(kit.make(text=text).returncode, 0)
                result = subprocess.run([kit.root / "run-on-emulator", "--bare", kit.bin("program")],
                                        capture_output=True, text=True, timeout=60)
                self.assertIn("display 2 %s\n" % told, result.stdout)
                Kit.lay_out(kit.root)

    def test_dots_are_those_of_the_table(self):
        result = subprocess.run([sys.executable, SOURCE / "make_leds.py", "--check"])
        self.assertEqual(result.returncode, 0)

    def test_another_table_makes_other_dots(self):
        with tempfile.TemporaryDirectory(prefix="toolchain-") as folder:
            root = pathlib.Path(folder) / "机器人 编程"
            for name in ("toolchain/make_leds.py", "toolchain/runtime/symbols.c",
                         "toolchain/runtime/faces.c", "resources/art/leds.json"):
                (root / name).parent.mkdir(parents=True, exist_ok=True)
                shutil.copy(SOURCE.parent / name, root / name)
            table = root / "resources" / "art" / "leds.json"

            def leds(*options):
                return subprocess.run([sys.executable, root / "toolchain" / "make_leds.py", *options],
                                      capture_output=True, text=True)

            def change(turn):
                content = json.loads(table.read_text("utf-8"))
                turn(content)
                table.write_text(json.dumps(content), "utf-8")

            def dots():
                return [(root / "toolchain" / "runtime" / name).read_text("utf-8")
                        for name in ("symbols.c", "faces.c")]

            before = dots()
            self.assertEqual(leds("--check").returncode, 0)
            self.assertEqual(leds().returncode, 0)
            self.assertEqual(dots(), before)

            change(lambda content: content["symbols"]["7"].update(rows="1,2,3,4,5,6,7,ff"))
            result = leds("--check")
            self.assertNotEqual(result.returncode, 0)
            self.assertIn("symbols.c", result.stderr)
            change(lambda content: content["faces"][1].update(left=["#......."] * 8))
            self.assertEqual(leds().returncode, 0)
            self.assertEqual(leds("--check").returncode, 0)
            after = dots()
            self.assertIn("{ 0x01, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0xFF },\t/* 7  ", after[0])
            self.assertIn("{ " + ", ".join(["0x80"] * 8) + " }", after[1])

            def leave_out_the_third(content):
                del content["symbols"]["3"]

            change(leave_out_the_third)
            self.assertIn("numbered", leds().stderr)
            self.assertEqual(dots(), after)


class CompileTest(KitCase):
    def test_default_program(self):
        result = Kit.lay_out(pathlib.Path(self.temporary.name) / "fresh").make()
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_every_call_without_a_warning(self):
        result = self.kit.make(tasks=1, text=EVERY_CALL)
        self.assertEqual((result.returncode, result.stderr), (0, ""))

    def test_sixteen_tasks_and_no_more(self):
        text = program("", after="".join(task(n, "wait(1);\n") for n in range(1, 18)))
        self.built(text, 16)
        self.assertIn("at most 16 tasks", self.refused(tasks=17))
        self.assertFalse(self.kit.bin("program").exists())

    def test_missing_task_is_an_error(self):
        self.assertIn("user_task2", self.refused(tasks=2, text=program("", after=task(1, ""))))

    def test_speed_in_a_task_is_an_error_with_its_place(self):
        text = program("", after=task(1, "      speed1 = 30;\n"))
        complaints = self.refused(tasks=1, text=text)
        errors = [line for line in complaints.splitlines() if ": error: " in line]
        self.assertEqual(len(errors), 1)
        number = text.splitlines().index("      speed1 = 30;") + 1
        self.assertTrue(errors[0].startswith("%s%d:7: error: 'speed1' undeclared" % (PREFIX, number)),
                        errors[0])
        self.assertNotIn("\x1b", complaints)

    def test_unknown_function_is_an_error_with_its_place(self):
        self.assertRegex(self.refused(text=program("      fly(1);\n")),
                         "(?m)^%s5:7: error: .*'fly'" % re.escape(PREFIX))

    def test_frames_that_could_step_over_the_guard_are_errors(self):
        for body in ('char room[2500];Printf("%s", room);', 'char room[held];Printf("%s", room);',
                     'Printf("%s", __builtin_alloca(held));'):
            with self.subTest(body=body):
                self.assertRegex(self.refused(text=program(body, before="int held = 9;\n")),
                                 "(?m)^%s[0-9]+:[0-9]+: error: " % re.escape(PREFIX))

    def test_frame_does_not_grow_with_the_length_of_a_program(self):
        for call in ["set_motor(1, speed1)", "wait(0.7)", "servo_ctrl(1, 2, 3, 0)", "PlaySpeech(9)",
                     "disp_symble(2, 7)", "disp_emoji(1, 2, 3)",
                     "disp_custom(2, (LedMaritx){{0x1,2,3,4,5,6,7,8}})", 'Printf("%f", speed1 / 3.0)',
                     "if(switch_state(1) > TZ_AI(2)) wait(1)"]:
            with self.subTest(call=call):
                self.built(program(2000 * ("      %s;\n" % call)))

    def test_error_removes_the_older_result(self):
        self.built(program(""), name="older")
        self.refused("older", text=program("      oops\n"))
        self.assertFalse(self.kit.bin("older").exists())

    def test_failing_last_step_leaves_no_result(self):
        self.built(program(""), name="half")
        with tempfile.TemporaryDirectory() as shims:
            put_tool(shims, "arm-none-eabi-objcopy", 'for last; do :; done\necho half > "$last"\nexit 1\n')
            self.refused("half", text=program("      wait(2);\n"), shims=shims)
        self.assertFalse(self.kit.bin("half").exists())

    def test_compiler_sees_a_neutral_locale_and_no_name(self):
        with tempfile.TemporaryDirectory() as shims:
            put_tool(shims, "arm-none-eabi-gcc", 'echo "<$LC_ALL|$LANGUAGE|$TARGET_NAME|$CPATH>" >&2\n'
                     'exec %s "$@"\n' % shutil.which("arm-none-eabi-gcc"))
            for command in ("./make.exe", "make"):
                text = program("", before="// %s\n" % command)
                result = self.kit.make(text=text, shims=shims, command=command,
                                       LC_ALL="zh_CN.UTF-8", LANGUAGE="zh", CPATH="/nowhere")
                self.assertEqual(result.returncode, 0, result.stderr)
                self.assertEqual(set(result.stderr.split()), {"<C|||>"})

    def test_result_is_always_made_anew(self):
        path = self.built(program("      wait(1);\n"))
        clean = path.read_bytes()
        self.kit.finish()
        self.assertEqual(len(path.read_bytes()), len(clean) + 57536)
        self.assertEqual(self.kit.make().returncode, 0)
        self.assertEqual(path.read_bytes(), clean)

    def test_source_is_always_compiled(self):
        first = self.built(program("      set_motor(1, 11);\n")).read_bytes()
        self.kit.source.write_text(program("      set_motor(1, 12);\n"))
        os.utime(self.kit.source, (1, 1))
        self.assertEqual(self.kit.make().returncode, 0)
        self.assertNotEqual(self.kit.bin("program").read_bytes(), first)

    def test_unchanged_program_of_any_length_and_end_is_not_compiled_again(self):
        compiled = self.kit.folder / "objects" / "user_main.o"
        for length in [0, 1, 2, 5, 11, 12, 23, 47, 95, 200]:
            for end in ["", "\n", "\n\n"]:
                with self.subTest(length=length, end=end):
                    text = program("") + length * 1000 // 13 * "// padding.\n" + "// The end." + end
                    self.assertEqual(self.kit.make(text=text).returncode, 0)
                    compiled.unlink()
                    self.assertEqual(self.kit.make(text=text).returncode, 0)
                    self.assertFalse(compiled.exists())
                    self.kit.source.write_text(text.replace("padding", "changed") + " ", "utf-8")
                    self.assertEqual(self.kit.make().returncode, 0)
                    self.assertTrue(compiled.exists())

    def test_runtime_is_compiled_only_when_it_changed(self):
        self.built(program(""))
        library = self.kit.folder / "objects" / "runtime"
        times = {path.name: path.stat().st_mtime_ns for path in library.iterdir()}
        self.built(program(""))
        self.assertEqual({path.name: path.stat().st_mtime_ns for path in library.iterdir()}, times)
        os.utime(self.kit.root / "runtime" / "calls.c")
        self.built(program(""))
        changed = {path.name for path in library.iterdir() if path.stat().st_mtime_ns != times[path.name]}
        self.assertEqual(changed, {"calls.o", "all.o"})

    def test_empty_name(self):
        path = self.built(program(""), name="")
        self.assertEqual(path.name, ".bin")
        self.assertEqual(self.run_file(path, "--bare").returncode, ENDED)

    def test_names_of_all_allowed_characters(self):
        for name in ("car1", "-n", "A_z-09", "runtime", "user_main"):
            with self.subTest(name=name):
                self.assertTrue(self.built(program(""), name=name).is_file())

    def test_other_names_are_refused_and_not_carried_out(self):
        self.built(program(""))
        before = all_files(self.temporary.name)
        names = ["$(shell touch pwned)", ";touch pwned", "`touch pwned`", "$$(touch pwned)",
                 "x$(eval y:=$(shell touch pwned))", "${shell touch pwned}", "&touch pwned",
                 "x\ntouch pwned", "|touch pwned", "$(error x)", "../up", "a/b", "a b", "a ",
                 "a\tb", "小车", "a'b", 'a"b', "a\\", "$", "$a", "%", "#", "a#b", "a:b", "a=b",
                 "*", "?", ".", "a,b", "(", ")"]
        for command in ("./make.exe", "make"):
            for name in names:
                with self.subTest(command=command, name=name):
                    self.assertIn("TARGET_NAME may hold only", self.refused(name, command=command))
                    self.assertEqual(all_files(self.temporary.name), before)
        # make itself strips this blank, so only the launcher can refuse it.
        self.refused(" a")
        self.assertEqual(all_files(self.temporary.name), before)

    def test_numbers_of_tasks_are_refused_alike(self):
        for command in ("./make.exe", "make"):
            for number in ("$(shell touch pwned)", ";touch pwned", "-1", "1 2", "x", "1x", "%"):
                with self.subTest(command=command, number=number):
                    self.assertIn("USER_TASK_NUMBER",
                                  self.refused(tasks=number, command=command, text=program("")))
                    self.assertFalse(self.kit.bin("program").exists())
                    self.assertFalse(any("pwned" in name for name in all_files(self.temporary.name)))

    def test_outer_make_does_not_reach_in(self):
        result = self.kit.make("outer", text=program(""), MAKEFLAGS="n", MAKELEVEL="2")
        self.assertEqual(result.returncode, 0)
        self.assertTrue(self.kit.bin("outer").exists())

    def test_folder_with_blanks_and_chinese_characters(self):
        folder = pathlib.Path(self.temporary.name) / "Program Files (x86)" / "机器人 编程" / "gcc"
        kit = Kit.lay_out(folder)
        result = kit.make("car1", text=program('      Printf("你好");\n'))
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        result = subprocess.run([kit.root / "run-on-emulator", "--bare", kit.bin("car1")],
                                capture_output=True, text=True, timeout=60)
        self.assertEqual(result.returncode, ENDED, result.stderr)
        self.assertIn("print 你好\n", result.stdout)
        result = kit.make("car1", text=program("      oops;\n"))
        self.assertRegex(result.stderr, "(?m)^%s5:7: error: 'oops'" % re.escape(PREFIX))


if __name__ == "__main__":
    unittest.main()
