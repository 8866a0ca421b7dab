"""A kit laid out for tests, and what they all need to compile and run with it."""

import os
import pathlib
import re
import subprocess
import tempfile
import unittest

SOURCE = pathlib.Path(__file__).resolve().parents[2] / "toolchain"

ACTIONS = bytes(57472)
TRAILER = (bytes.fromhex("55aa5a5a55aa5a5a")
           + b" Korvane Kinetic Edition".ljust(26, b"\0") + b"\xff" * 30)

LINE = re.compile(r"\[ *(\d+\.\d{3})\] (?:(main|task \d+): )?(.+)")

ENDED, EMULATOR_FAILED, BAD_FILE, LIMIT_REACHED, CRASHED = range(5)


def program(body, before="", after=""):
    """A program in the form in which the blocks are written."""
    return ('#include "vantrel.h"\n' + before
            + "void user_main()\n{\n      int speed1 = 50,speed2 = 50,speed3 = 50, speed4 = 50;\n"
            + body + "}\n" + after)


def task(number, body):
    return "void user_task%d()\n{\n%s}\n" % (number, body)


class Kit:
    """A laid out kit in a folder of its own."""

    def __init__(self, root):
        self.root = pathlib.Path(root)
        self.folder = self.root / "example" / "build" / "gcc"
        self.source = self.root / "example" / "user_main.c"

    @classmethod
    def lay_out(cls, root):
        subprocess.run(["cmake", "-DDESTINATION=%s" % root, "-P", SOURCE / "lay_out_kit.cmake"],
                       check=True)
        return cls(root)

    def bin(self, name):
        return self.folder / "objects" / (name + ".bin")

    def make(self, name="program", tasks=0, text=None, command="./make.exe", shims=None, **variables):
        if text is not None:
            self.source.write_text(text, "utf-8")
        environment = dict(os.environ, **variables)
        if shims:
            environment["PATH"] = "%s:%s" % (shims, environment["PATH"])
        return subprocess.run(
            [command, "TARGET_NAME=" + name, "USER_TASK_NUMBER=%s" % tasks],
            cwd=self.folder, env=environment, capture_output=True, text=True, timeout=60)

    def finish(self, name="program"):
        """Appends what the program appends before it copies a file."""
        path = self.bin(name)
        path.write_bytes(path.read_bytes() + ACTIONS + TRAILER)
        return path


def put_tool(folder, name, script):
    """Writes a shell script that takes the place of a tool."""
    path = pathlib.Path(folder) / name
    path.write_text("#!/bin/sh\n" + script)
    path.chmod(0o755)


def all_files(root):
    return sorted(str(path.relative_to(root)) for path in pathlib.Path(root).rglob("*"))


class KitCase(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.temporary = tempfile.TemporaryDirectory(prefix="toolchain-")
        cls.addClassCleanup(cls.temporary.cleanup)
        cls.kit = Kit.lay_out(pathlib.Path(cls.temporary.name) / "gcc")

    def refused(self, name="program", tasks=0, text=None, **keywords):
        """The complaints about a program that must not compile."""
        result = self.kit.make(name, tasks, text, **keywords)
        self.assertNotEqual(result.returncode, 0)
        return result.stderr

    def built(self, text, tasks=0, name="program"):
        result = self.kit.make(name, tasks, text)
        self.assertEqual(result.returncode, 0, result.stderr)
        return self.kit.bin(name)

    def run_file(self, path, *options):
        return subprocess.run([self.kit.root / "run-on-emulator", path, *options],
                              capture_output=True, text=True, timeout=120)

    def trace(self, text, *options, tasks=0, expected=ENDED):
        """Lines of a run as (seconds, task, text); rows of pictures follow theirs."""
        self.built(text, tasks)
        result = self.run_file(self.kit.finish(), *options)
        self.assertEqual(result.returncode, expected, result.stdout[-2000:] + result.stderr)
        self.assertEqual(result.stderr, "")
        lines = []
        for line in result.stdout.splitlines():
            match = LINE.fullmatch(line)
            if match:
                lines.append([float(match[1]), match[2], match[3]])
            else:
                self.assertRegex(line, r"^ {11}[.#]{8}(  [.#]{8})?$")
                lines[-1][2] += "\n" + line.strip()
        self.assertEqual(lines, sorted(lines, key=lambda entry: entry[0]))
        return lines

    def texts(self, *arguments, **keywords):
        return [line[2] for line in self.trace(*arguments, **keywords)]


# Every call, in the forms in which blocks write them.
EVERY_CALL = program("""\
      speed1 = 80;
      speed2 = 80;
      speed3 = 80;
      speed4 = 80;
      set_motor(1, speed1);set_motor(2, -speed2);
      set_motor(1, -speed1);
      set_motor(2, speed2);wait(0.25);
      set_motor(1,0);set_motor(2,0);set_motor(3,0);set_motor(4,0);      speed3 = -abs(speed3);set_motor(3, speed3);
      speed4 = abs(speed4);
      set_motor(4, speed4);
      servo_ctrl(18, 716, 956, 0);
      for(int i = 0;i < 2; ++i)
      {
      for(int i = 0;i < 1; ++i)
      {
      PlaySpeech(25);}}
      for(int i = 0;i < 10; ++i)
      {
      }
      while(switch_state(5) != 0)
      {
      wait(0.1);
      }
      while(TZ_AI(4) < 500)
      {
      }
      disp_symble(2, 45);disp_symble(3,9);disp_emoji(2,3,1);disp_custom(2,(LedMaritx){{0x81,0x42,0x24,0x18,0x0,0x0,0x0,0xff}});            disp_custom(3,(LedMaritx){{0x0,0x0,0x0,0x0,0x0,0x0,0x0,0x0}});
      memcpy(name , "bob", sizeof("bob"));
      a = 3 / 2.0;
      for (i = 0;i <  2; ++i)
      {
      Printf("%d ", i);
      }
      Printf("%s %f ", name, a);
      set_motor(1, a);
      hello(7);
""", before="""\
int gi_1 = 0;
float gf_1 = 0;
float a = 0;
int i = 0;
char name[100] = {0};
float index = 0;
int random = 0, free = 0, malloc = 0, abort = 0, kernel_time = 0, symbols = 0, y0 = 0, exit = 0;
void hello(times)
{
      Printf("hi\\n%d", times);;
}
""", after=task(1, "      wait(1);\n      while(1)\n      {\n}\n"))
