#!/usr/bin/env python3
"""Tests of the emulated controller: files, options, limits and ends."""

import os
import pathlib
import signal
import subprocess
import sys
import tempfile
import threading
import time
import unittest

from kitcase import (ACTIONS, BAD_FILE, EMULATOR_FAILED, ENDED, LIMIT_REACHED, TRAILER, KitCase,
                     program, put_tool)


class RunnerTest(KitCase):
    def bad(self, data, message, *options):
        path = pathlib.Path(self.temporary.name) / "bad.bin"
        path.write_bytes(data)
        result = self.run_file(path, *options)
        self.assertEqual((result.returncode, result.stdout), (BAD_FILE, ""), result.stderr)
        self.assertIn(message, result.stderr)

    def test_bad_files(self):
        image = self.built(program("")).read_bytes()
        good = image + ACTIONS + TRAILER
        self.bad(b"", "too few")
        self.bad(image, "too few")
        self.bad(ACTIONS + TRAILER, "no program")
        self.bad(good[:-1], "trailer")
        self.bad(good[:-1] + b"\0", "trailer")
        self.bad(good + b"\0", "trailer")
        self.bad(good + ACTIONS + TRAILER, "the program has")
        self.bad(image[:-4] + ACTIONS + TRAILER, "the program has")
        self.bad(bytes(len(image)) + ACTIONS + TRAILER, "does not begin with a program")
        for mark in (5, 57468):
            actions = bytearray(ACTIONS)
            actions[mark] = 1
            self.bad(image + actions + TRAILER, "format mark")
        self.bad(good, "the program has", "--bare")
        self.bad(image[:-1], "the program has", "--bare")
        self.bad(b"\0" * 8 + image[8:], "first words", "--bare")
        result = self.run_file(pathlib.Path(self.temporary.name) / "none.bin")
        self.assertEqual(result.returncode, BAD_FILE)
        self.assertIn("none.bin", result.stderr)

    def test_action_data_may_hold_anything_else(self):
        image = self.built(program("")).read_bytes()
        actions = bytearray(os.urandom(57472))
        actions[5] = actions[57468] = 0
        path = pathlib.Path(self.temporary.name) / "full.bin"
        path.write_bytes(image + actions + TRAILER)
        self.assertEqual(self.run_file(path).returncode, ENDED)

    def test_bad_options(self):
        path = self.built(program(""))
        for options in (["--sensor", "touch"], ["--sensor", "touch:5=1@x"], ["--sensor", "smell:5=1@1"],
                        ["--limit", "0"], ["--limit", "nan"], ["--sensor", "touch:1=1"] * 85):
            with self.subTest(options=options[:2]):
                self.assertEqual(self.run_file(path, "--bare", *options).returncode, BAD_FILE)

    def test_what_the_chip_does_not_have_is_told_and_fails(self):
        path = self.built(program("*(volatile int *)0x4000C0F0 = 1;wait(1);PlaySpeech(3);\n"))
        result = self.run_file(path, "--bare")
        self.assertEqual(result.returncode, EMULATOR_FAILED)
        self.assertIn("sound 3\n[   1.000] end\n", result.stdout)
        self.assertRegex(result.stderr, "^emulator: .*pl011.*\nemulator: the program did what a real controller can't do\n$")

    def test_limit(self):
        lines = self.trace(program("while(1)\n{\nwait(0.4);\n}\n"), "--limit", "1.5", expected=LIMIT_REACHED)
        self.assertEqual(lines[-1], [1.5, None, "limit reached"])
        self.assertEqual([line[2] for line in lines].count("wait 0.4 s"), 4)

    def test_limit_of_a_loop_without_a_wait(self):
        lines = self.trace(program("while(1)\n{\n}\n"), "--limit", "5", expected=LIMIT_REACHED)
        self.assertEqual(lines[-1], [5.0, None, "limit reached"])

    def test_limit_of_a_program_that_is_always_in_a_call(self):
        # Each line takes several milliseconds, and nearly nothing passes between two of them.
        lines = self.trace(program("for(int i = 0;; ++i)\n{\nPrintf(\"%d ${FILL}\", i);\n}\n"
                                   .replace("${FILL}", "x" * 60)), "--limit", "1", expected=LIMIT_REACHED)
        self.assertEqual(lines[-1][2], "limit reached")
        self.assertLess(lines[-1][0], 1.02)

    def test_limit_if_none_is_given(self):
        lines = self.trace(program("while(1)\n{\nwait(7);\n}\n"), expected=LIMIT_REACHED)
        self.assertEqual(lines[-1], [60.0, None, "limit reached"])

    def test_printed_end_is_not_the_end(self):
        lines = self.texts(program('Printf("end");Printf("\\n[   0.000] end\\n");Printf("[   0.000] end");wait(2);PlaySpeech(4);\n'))
        self.assertEqual(lines[-2:], ["sound 4", "end"])

    SLEEPER = program('Printf("here");\nwhile(1)\n{\nwait(1000);\n}\n')

    def test_guard(self):
        path = self.built(self.SLEEPER)
        begin = time.monotonic()
        result = self.run_file(path, "--bare", "--limit", "1000000", "--guard", "1")
        self.assertEqual(result.returncode, EMULATOR_FAILED)
        self.assertIn("no end of the program within 1 s", result.stderr)
        self.assertLess(time.monotonic() - begin, 10)

    def test_missing_and_failing_emulator(self):
        path = self.built(program(""))
        runner = self.kit.root / "run-on-emulator"
        with tempfile.TemporaryDirectory() as shims:
            for complaint in ("not installed", "no such machine"):
                result = subprocess.run([sys.executable, runner, "--bare", path],
                                        env=dict(os.environ, PATH=shims), capture_output=True, text=True)
                self.assertEqual(result.returncode, EMULATOR_FAILED)
                self.assertIn(complaint, result.stderr)
                put_tool(shims, "qemu-system-arm", "echo no such machine >&2\nexit 1\n")

    def test_trace_comes_at_once_and_the_emulator_dies_with_the_runner(self):
        path = self.built(self.SLEEPER)
        environment = {key: value for key, value in os.environ.items() if key != "PYTHONUNBUFFERED"}
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGKILL):
            with self.subTest(signal=number):
                # A test in the background may have been started deaf to SIGINT.
                runner = subprocess.Popen(
                    [sys.executable, self.kit.root / "run-on-emulator", "--bare", path, "--limit", "1000000"],
                    stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, env=environment,
                    preexec_fn=lambda: signal.signal(signal.SIGINT, signal.SIG_DFL))
                self.addCleanup(runner.kill)
                # A trace that doesn't come is a failure, not a wait for ever.
                watch = threading.Timer(30, runner.kill)
                watch.start()
                self.addCleanup(watch.cancel)
                with runner.stdout:
                    lines = [runner.stdout.readline() for _ in range(2)]
                    self.assertTrue(lines[1].endswith(b"print here\n"), lines)
                    children = pathlib.Path("/proc/%d/task/%d/children" % (runner.pid, runner.pid))
                    child, = children.read_text().split()
                    self.assertIn(b"qemu", pathlib.Path("/proc", child, "cmdline").read_bytes())
                    self.assertIsNone(runner.poll())
                    runner.send_signal(number)
                    runner.wait(10)
                for _ in range(50):
                    if not self.alive(child):
                        break
                    time.sleep(0.1)
                self.assertFalse(self.alive(child))

    @staticmethod
    def alive(pid):
        try:
            state = pathlib.Path("/proc", pid, "stat").read_text().rsplit(")", 1)[1].split()[0]
        except (FileNotFoundError, ProcessLookupError):
            return False
        return state != "Z"

    def test_reader_that_goes_away(self):
        path = self.built(program("while(1)\n{\nwait(0.001);\n}\n"))
        runner = subprocess.Popen([self.kit.root / "run-on-emulator", "--bare", path],
                                  stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        runner.stdout.readline()
        runner.stdout.close()
        with runner.stderr:
            self.assertEqual(runner.stderr.read(), b"")
        self.assertEqual(runner.wait(20), EMULATOR_FAILED)


if __name__ == "__main__":
    unittest.main()
