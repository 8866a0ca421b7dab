#!/usr/bin/env python3
"""Tests of the runtime: what programs do on the controller, as the trace tells it."""

import json
import pathlib
import unittest

from kitcase import CRASHED, EVERY_CALL, LIMIT_REACHED, KitCase, program, task

SYMBOL_45 = "........ .##.##.. #..#..#. #.....#. .#...#.. ..#.#... ...#.... ........"
SYMBOL_9 = "..###... .#...#.. .#..##.. .#.#.#.. .##..#.. .#...#.. ..###... ........"
SYMBOLS = {
    0: "..####.. .######. .##..##. .##..##. ....##.. ...##... ........ ...##...",
    9: SYMBOL_9,
    19: "...#.... ..#.#... .#...#.. .#...#.. .#####.. .#...#.. .#...#.. ........",
    45: SYMBOL_45,
    50: "....#... .....#.. .######. .#...#.. .#..#... .#...... .#...... ........",
    52: "..####.. .#....#. #......# ######## ######## #......# .#....#. ..####..",
}
FACES = json.loads((pathlib.Path(__file__).resolve().parent / "faces.json").read_text("utf-8"))["faces"]

# Runs out of its stack by frames of nearly the largest size, of which hardly a byte is touched.
DEEP = ("volatile int held = 0;\n"
        "int deep(int n)\n{\nvolatile char room[1900];\nreturn n > 100000 ? room[n] : deep(n + 1) + held;\n}\n")


def picture(rows):
    return "\n" + "\n".join(rows.split())


class TraceTest(KitCase):
    def test_every_call(self):
        self.maxDiff = None
        lines = [text for _, who, text in self.trace(EVERY_CALL, tasks=1) if who != "task 1"]
        self.assertEqual(lines, [
            "start",
            "motor A (1) speed 80", "motor B (2) speed -80",
            "motor A (1) speed -80", "motor B (2) speed 80", "wait 0.25 s",
            "motor A (1) speed 0", "motor B (2) speed 0", "motor C (3) speed 0", "motor D (4) speed 0",
            "motor C (3) speed -80", "motor D (4) speed 80",
            "servo 18 speed 716 position 956",
            "sound 25", "sound 25",
            "touch 5 -> 0", "analogue 4 -> 1000",
            "display 2 symbol 45" + picture(SYMBOL_45),
            "display 3 symbol 9" + picture(SYMBOL_9),
            "display 2 3 emoji 1 %s\n" % FACES[0]["name"] + self.face_rows(FACES[0]),
            "display 2 custom" + picture("#......# .#....#. ..#..#.. ...##... "
                                         "........ ........ ........ ########"),
            "display 3 custom" + picture("........ " * 8),
            "print 0 ", "print 1 ", "print bob 1.500000 ",
            "motor A (1) speed 1", "print hi\\n7",
            "finished", "end"])

    @staticmethod
    def face_rows(face):
        left, right = ([format(row, "08b").replace("0", ".").replace("1", "#") for row in rows]
                       for rows in face["rows"])
        return "\n".join("  ".join(pair) for pair in zip(left, right))

    def test_all_faces(self):
        self.assertEqual(len(FACES), 12)
        self.assertEqual(len({str(face["rows"]) for face in FACES}), 12)
        body = "".join("disp_emoji(2,3,%d);" % n for n in range(14)) + "\n"
        lines = self.texts(program(body))[1:-1]
        dark = "\n" + "\n".join(["........  ........"] * 8)
        self.assertEqual(lines, ["display 2 3 emoji 0 unknown" + dark]
                         + ["display 2 3 emoji %d %s\n%s" % (face["n"], face["name"], self.face_rows(face))
                            for face in FACES]
                         + ["display 2 3 emoji 13 unknown" + dark])

    def test_symbols(self):
        body = "".join("disp_symble(2, %d);" % number for number in SYMBOLS) + "disp_symble(2, 53);\n"
        self.assertEqual(self.texts(program(body))[1:-1],
                         ["display 2 symbol %d" % number + picture(rows) for number, rows in SYMBOLS.items()]
                         + ["display 2 symbol 53 unknown" + picture("........ " * 8)])

    def test_odd_arguments(self):
        lines = self.texts(program('set_motor(7, -300);servo_ctrl(1, 2, 3, 1);wait(0);wait(-1);'
                                   'Printf("a\\tb %s", "' + "x" * 600 + '");\n'))
        self.assertEqual(lines[1:5], ["motor ? (7) speed -300", "servo 1 speed 2 position 3 last 1",
                                      "wait 0 s", "wait -1 s"])
        self.assertRegex(lines[5], r"^print a\?b x{490,510}(\.\.\.)?$")

    def test_long_prints_are_cut_and_marked(self):
        lines = self.texts(program("".join('Printf("%%s", "%s");\n' % text for text in (
            "x" * 504, "x" * 505, "x" * 506, "\\n" * 505, "\\n" * 506))))
        self.assertEqual(lines[1:-1], ["print " + text for text in (
            "x" * 504, "x" * 505, "x" * 505 + "...", "\\n" * 505, "\\n" * 505 + "...")])

    def test_a_wait_beyond_all_numbers_does_not_end(self):
        for seconds in ("2000001", "1e12", "1.0 / 0"):
            with self.subTest(seconds=seconds):
                lines = self.texts(program("double zero = 0;wait(%s);\n" % seconds.replace("/ 0", "/ zero")),
                                   "--limit", "3", expected=LIMIT_REACHED)
                self.assertEqual(len(lines), 3)

    def test_waits_add_up(self):
        lines = self.trace(program("for(int i = 0;i < 10; ++i)\n{\nwait(0.7);\n}\nwait(30);\n"))
        times = [seconds for seconds, _, text in lines if text.startswith("wait")]
        # Without tasks there is nobody to tell apart.
        self.assertEqual({who for _, who, _ in lines}, {None})
        for index, seconds in enumerate(times):
            self.assertAlmostEqual(seconds, 0.7 * index, delta=0.02)
        self.assertAlmostEqual(lines[-1][0], 37.0, delta=0.02)

    def test_loop_without_a_wait_is_told_shortly(self):
        lines = self.texts(program("for(int i = 0;i < 5000; ++i)\n{\nset_motor(1, 5);set_motor(2, 6);}"
                                   "set_motor(1, 7);wait(1);set_motor(1, 7);\n"))
        self.assertEqual(lines.count("motor A (1) speed 5"), 50)
        self.assertEqual(lines.count("motor B (2) speed 6"), 50)
        self.assertEqual(lines[101:], ["motor A (1) speed 7", "9900 repeated calls not shown",
                                       "wait 1 s", "motor A (1) speed 7", "end"])

    def test_what_was_passed_over_is_told_at_the_limit_too(self):
        lines = self.texts(program("while(1)\n{\nset_motor(1, 5);}\n"), "--limit", "1", expected=LIMIT_REACHED)
        self.assertEqual(lines.count("motor A (1) speed 5"), 100)
        self.assertRegex(lines[-2], "^[1-9][0-9]+ repeated calls not shown$")
        self.assertEqual(lines[-1], "limit reached")

    def test_numbers_go_round(self):
        text = program('most = most + step;Printf("%d", most);grows(2147483647, 1);\n', before=(
            "int most = 2147483647, step = 1;\n"
            'void grows(int n, int by)\n{\nif(n + 1 > n)\n{\nPrintf("more");\n}\nelse\n{\nPrintf("less");\n}\n}\n'))
        self.assertEqual(self.texts(text)[1:-1], ["print -2147483648", "print less"])


class TaskTest(KitCase):
    def test_tasks_run_beside_one_another(self):
        text = program("wait(1);set_motor(1, 1);wait(1);set_motor(1, 2);wait(1.5);\n", after=(
            task(1, "wait(0.5);PlaySpeech(1);wait(1);PlaySpeech(2);\n")
            + task(2, "while(1)\n{\nservo_ctrl(1, 716, 512, 0);wait(2);\n}\n")))
        lines = self.trace(text, tasks=2)
        told = [(round(seconds, 1), who, what) for seconds, who, what in lines
                if not what.startswith("wait")]
        self.assertEqual(sorted(told[:3]), [
            (0.0, "main", "start"), (0.0, "task 1", "start"), (0.0, "task 2", "start")])
        self.assertEqual(told[3:], [
            (0.0, "task 2", "servo 1 speed 716 position 512"),
            (0.5, "task 1", "sound 1"), (1.0, "main", "motor A (1) speed 1"),
            (1.5, "task 1", "sound 2"), (1.5, "task 1", "finished"),
            (2.0, "main", "motor A (1) speed 2"), (2.0, "task 2", "servo 1 speed 716 position 512"),
            (3.5, "main", "finished"), (3.5, None, "end")])

    def test_endless_loop_does_not_starve_the_others(self):
        text = program("while(1)\n{\ncount = count + 1;}\n", before="volatile int count = 0;\n", after=(
            task(1, "while(1)\n{\n}\n")
            + task(2, 'wait(1);Printf("%d", count > 1000);wait(1);Printf("%d", count > 2000);\n')))
        lines = self.trace(text, "--limit", "3", tasks=2, expected=LIMIT_REACHED)
        prints = [line for line in lines if line[2].startswith("print")]
        self.assertEqual([line[1:] for line in prints], [["task 2", "print 1"]] * 2)
        for line, due in zip(prints, (1, 2)):
            self.assertAlmostEqual(line[0], due, delta=0.05)
        self.assertEqual(lines[-1], [3.0, None, "limit reached"])

    def test_lines_of_every_call_are_not_torn(self):
        # All tasks write at the same time; each line and the dots below it have to come whole.
        rows = picture("........ " * 8)
        calls = {
            'Printf("%%%%f %s", %%d + 0.5);' % ("m" * 30): "print %%d.500000 %s" % ("m" * 30),
            "set_motor(%d, i);": "motor ? (%d) speed {i}",
            "servo_ctrl(%d, i, 7, 9);": "servo %d speed {i} position 7 last 9",
            "PlaySpeech(%d + i);": "sound {sum}",
            "switch_state(%d + 100 * i);": "touch {port} -> 0",
            "TZ_AI(%d + 100 * i);": "analogue {port} -> 1000",
            "disp_symble(%d, 99);": "display %d symbol 99 unknown" + rows,
            "disp_emoji(%d, 3, 99);": "display %d 3 emoji 99 unknown" + rows.replace("........", "........  ........"),
            "disp_custom(%d,(LedMaritx){{0,0,0,0,0,0,0,0}});": "display %d custom" + rows,
            "wait(0.001 + %d / 1000.0);": "wait {time:g} s",
        }
        for call, line in calls.items():
            with self.subTest(call=call):
                body = "for(int i = 0;i < 30; ++i)\n{\n%swait(0.001);\n}\n" % call
                lines = self.trace(program(body % 10 + "wait(3);\n", after="".join(
                    task(n, body % (n + 10)) for n in range(1, 17))), tasks=16)
                for n in range(17):
                    number = n + 10
                    expected = [(line % number if "%d" in line else line).format(
                        i=i, sum=number + i, port=number + 100 * i, time=0.001 + number / 1000)
                        for i in range(30)]
                    heard = [text for _, who, text in lines if who == ("task %d" % n if n else "main")
                             and text.split()[0] == expected[0].split()[0] and text not in ("wait 0.001 s", "wait 3 s")]
                    self.assertEqual(heard, expected)

    def test_switch_that_is_due_after_a_lock_is_made_up_for(self):
        # The main program is hardly ever without the lock; the task has to get its turn all the same.
        lines = self.trace(program("while(1)\n{\nPrintf(\"%f\", 1.5);\n}\n",
                                   after=task(1, "while(1)\n{\nwait(0.01);PlaySpeech(1);\n}\n")),
                           "--limit", "1", tasks=1, expected=LIMIT_REACHED)
        sounds = [seconds for seconds, _, text in lines if text == "sound 1"]
        late = [round(after - before - 0.01, 3) for before, after in zip(sounds[10:], sounds[11:])]
        self.assertGreater(len(late), 50)
        self.assertLessEqual(max(late), 0.003)

    def test_wait_of_nothing_gives_the_turn_away(self):
        # Far more turns than there are ticks meanwhile; the first calls are told, which takes long.
        body = ("for(int i = 0;i < 150; ++i)\n{\nwait(0);\n}\nwhile(ready != 3)\n{\nready = ready | %d;wait(0);\n}\n"
                "for(int i = 0;i < 40; ++i)\n{\nif(last != %d)\n{\nturns = turns + 1;}\nlast = %d;wait(0);\n}\n")
        lines = self.texts(program(body % (1, 1, 1) + 'Printf("%d", turns);\n',
                                   before="volatile int ready = 0, last = 0, turns = 0;\n",
                                   after=task(1, body % (2, 2, 2))), tasks=1)
        turns, = (int(text[6:]) for text in lines if text.startswith("print"))
        self.assertGreater(turns, 60)

    def test_finished_tasks_take_no_turns(self):
        work = program("for(volatile int i = 0;i < 300000; ++i)\n{\n}\nPlaySpeech(1);\n",
                       after="".join(task(n, "wait(0);\n") for n in range(1, 5)))
        alone, beside = ([seconds for seconds, _, text in self.trace(work, tasks=tasks) if text == "sound 1"][0]
                         for tasks in (0, 4))
        self.assertGreater(alone, 0.02)
        self.assertLess(beside, alone * 1.2)

    def test_only_as_many_tasks_as_told_are_started(self):
        text = program("wait(1);\n", after=task(1, "PlaySpeech(1);\n") + task(2, "PlaySpeech(2);\n"))
        self.assertNotIn("sound 2", self.texts(text, tasks=1))
        self.assertIn("sound 2", self.texts(text, tasks=2))

    def test_stack_overflow_is_told(self):
        text = program("wait(9);\n", after=(
            "int deep(int n)\n{\nvolatile char room[100];room[0] = n;\n"
            "return n > 100000 ? 0 : deep(n + 1) + room[0];\n}\n"
            + task(1, "wait(1);Printf(\"%d\", deep(0));\n")))
        lines = self.trace(text, tasks=1, expected=CRASHED)
        self.assertEqual([line[1:] for line in lines[-2:]], [["task 1", "stack overflow"], [None, "crash"]])

    def test_frame_does_not_step_over_the_guard(self):
        text = program("wait(9);\n", before=DEEP, after=(
            "".join(task(n, "int own = %d;\nwhile(1)\n{\nwait(0.1);own = own + held;\n}\n" % n)
                      for n in range(1, 6))
            + task(6, "wait(1);Printf(\"%d\", deep(0));\n")))
        lines = self.trace(text, tasks=6, expected=CRASHED)
        self.assertEqual([line[1:] for line in lines[-2:]], [["task 6", "stack overflow"], [None, "crash"]])

    def test_stack_of_the_lowest_task_has_a_guard_too(self):
        text = program("Printf(\"%d\", deep(0));\n", before=DEEP)
        self.assertEqual(self.texts(text, expected=CRASHED)[-2:], ["stack overflow", "crash"])

    def test_crash_is_told(self):
        lines = self.texts(program("wait(1);__builtin_trap();\n"), expected=CRASHED)
        self.assertEqual(lines[-2], "bad access")
        self.assertRegex(lines[-1], "^crash at 0x[0-9a-f]{8}$")

    def test_crash_with_a_broken_stack_pointer_is_told(self):
        result = self.run_file(self.built(program('__asm__ volatile("mov sp, %0\\n\\tudf #0" :: "r"(0xFFFFFFF0));\n')),
                               "--bare")
        self.assertEqual(result.returncode, CRASHED)
        self.assertTrue(result.stdout.endswith("bad access\n[   0.000] crash at 0x00000000\n"), result.stdout)
        # The handler reads nothing that isn't there.
        self.assertNotIn("read", result.stderr)


class SensorTest(KitCase):
    LOOPS = program("while(switch_state(5) == 0)\n{\nwait(0.1);\n}\nPlaySpeech(1);\n"
                    "while(TZ_AI(4) > 500)\n{\nwait(0.1);\n}\nPlaySpeech(2);\n"
                    "while(switch_state(5) != 0)\n{\nset_motor(1, 50);set_motor(2, -50);\n}\nPlaySpeech(3);\n")

    def test_script_ends_the_loops(self):
        lines = self.trace(self.LOOPS, "--sensor", "touch:5=0@4.75", "--sensor", "touch:5=1@1.25",
                           "--sensor", "analogue:4=499@2.5", "--sensor", "ai:3=0@0")
        sounds = {text: seconds for seconds, _, text in lines if text.startswith("sound")}
        self.assertAlmostEqual(sounds["sound 1"], 1.3, delta=0.03)
        self.assertAlmostEqual(sounds["sound 2"], 2.5, delta=0.11)
        self.assertAlmostEqual(sounds["sound 3"], 4.75, delta=0.02)
        reads = [text for _, _, text in lines if "->" in text]
        self.assertEqual(reads, ["touch 5 -> 0", "touch 5 -> 1", "analogue 4 -> 1000",
                                 "analogue 4 -> 499", "touch 5 -> 0"])

    def test_without_a_script_the_loop_goes_on(self):
        lines = self.texts(self.LOOPS, "--limit", "2", expected=LIMIT_REACHED)
        self.assertNotIn("sound 1", lines)
        self.assertEqual(lines[-1], "limit reached")

    def test_other_ports_and_tasks(self):
        text = program("switch_state(1);switch_state(-3);wait(1);switch_state(1);TZ_AI(1);wait(1);\n",
                       after=task(1, "wait(0.5);switch_state(1);\n"))
        lines = self.trace(text, "--sensor", "touch:1=5", tasks=1)
        self.assertEqual([line[1:] for line in lines if "->" in line[2]], [
            ["main", "touch 1 -> 5"], ["main", "touch -3 -> 0"], ["task 1", "touch 1 -> 5"],
            ["main", "analogue 1 -> 1000"]])


if __name__ == "__main__":
    unittest.main()
