#!/usr/bin/env python3
"""Tests of what lies between kernel and calls on one side and a board on the other."""

import pathlib
import re
import subprocess
import tempfile
import threading
import unittest

from kitcase import SOURCE, Kit, KitCase, program, task

HERE = pathlib.Path(__file__).resolve().parent
ACCESS = re.compile(r"memory_region_ops_(read|write) cpu 0 mr \S+ addr 0x(\w+) value 0x(\w+) size 4")

# Registers of the emulated controller's chip.
RAW_INTERRUPTS, CLOCK, GATES_1, GATES_2 = 0x400FE050, 0x400FE060, 0x400FE104, 0x400FE108
PINS_ALTERNATE, PINS_DIGITAL = 0x40004420, 0x4000451C
UART, UART_DATA, UART_DIVISOR, UART_DIVISOR_64THS, UART_LINE, UART_CONTROL = (
    0x4000C000 + offset for offset in (0, 0, 0x24, 0x28, 0x2C, 0x30))
TICK_CONTROL, TICK_RELOAD = 0xE000E010, 0xE000E014


class BoardsTest(unittest.TestCase):
    def test_kernel_and_calls_know_only_board_and_processor(self):
        own = {"board.h", "processor.h", "kernel.h", "vantrel.h", "faces.h", "symbols.h"}
        for name in ("kernel.c", "kernel.h", "calls.c", "system.c"):
            text = (SOURCE / "runtime" / name).read_text()
            self.assertLessEqual(set(re.findall('#include "(.+)"', text)), own, name)
            self.assertNotRegex(text, "(?i)0x[4e]00|uart|emulator|trace|bkpt|cpsi|msr", name)


class SlowBoardTest(unittest.TestCase):
    """The same kernel and calls on another machine, whose board does all slowly."""

    @classmethod
    def setUpClass(cls):
        temporary = tempfile.TemporaryDirectory(prefix="toolchain-")
        cls.addClassCleanup(temporary.cleanup)
        cls.kit = Kit.lay_out(pathlib.Path(temporary.name) / "gcc")
        for path in (cls.kit.root / "runtime").glob("*emulator*"):
            path.write_text("")
        (cls.kit.root / "runtime" / "board_emulator.c").write_text((HERE / "board_slow.c").read_text())

    def lines(self, text, tasks=0):
        result = self.kit.make(tasks=tasks, text=text)
        self.assertEqual((result.returncode, result.stderr), (0, ""))
        result = subprocess.run(
            ["qemu-system-arm", "-machine", "mps2-an385", "-nodefaults", "-no-user-config", "-nic", "none",
             "-display", "none", "-monitor", "none", "-serial", "file:/dev/stdout", "-semihosting",
             "-icount", "shift=7,sleep=off", "-d", "guest_errors", "-kernel", self.kit.bin("program")],
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, timeout=60)
        complaints = [line for line in result.stderr.splitlines() if "period zero" not in line
                      and "icount sleep disabled" not in line and "has no peer" not in line]
        self.assertEqual((complaints, result.returncode), ([], 0), result.stdout)
        self.assertEqual(result.stdout.splitlines()[-1], "stop 0")
        return result.stdout.splitlines()[:-1]

    def test_calls_reach_the_board(self):
        self.assertEqual(self.lines(program(
            'set_motor(3, 70);servo_ctrl(9, 716, 512, 0);PlaySpeech(25);switch_state(4);TZ_AI(5);'
            'disp_symble(2, 45);disp_symble(2, 99);disp_emoji(2,3,13);'
            'disp_custom(3,(LedMaritx){{1,2,3,4,5,6,7,8}});Printf("%s %f\\n\\t", "x", 1.5);\n')), [
                "motor 3", "speed 70", "servo 9", "position 512", "sound 25", "again 25",
                "touch 4", "again 4", "analogue 5", "again 5",
                "display 2", "symbol 45 with 130", "display 2", "symbol 99 unknown with 0",
                "display 2", "emoji 13 unknown with 0", "display 3", "custom with 4", "x 1.500000\\n?"])

    def test_due_switch_comes_as_soon_as_the_lock_ends(self):
        # A sound takes several milliseconds, in which the other task becomes due.
        self.assertEqual(self.lines(program(
            "for(int i = 0;i < 5; ++i)\n{\nbefore = seen;PlaySpeech(7);after[i] = seen - before;}\n"
            'for(int i = 0;i < 5; ++i)\n{\nPrintf("%d", after[i]);}\n',
            before="volatile int seen = 0;int before, after[5];\n",
            after=task(1, "while(1)\n{\nwait(0.001);seen = seen + 1;}\n")), tasks=1),
            ["sound 7", "again 7"] * 5 + ["1"] * 5)

    CLOCK = ("int clock_us()\n{\nint ms, us;\ndo\n{\nms = switch_state(0);us = TZ_AI(0);\n}"
             "\nwhile(ms != switch_state(0));\nreturn ms * 1000 + us;\n}\n")

    def test_wait_is_never_short_nor_long(self):
        # From many places between two ticks.
        shortest, longest, total = map(int, self.lines(program(
            "int begin = clock_us(), least = 1000000, most = 0;\n"
            "for(int i = 0;i < 1000; ++i)\n{\nfor(volatile int n = i % 37 * 20;n > 0; --n)\n{\n}\n"
            "int from = clock_us();wait(0.001);int took = clock_us() - from;\n"
            "least = took < least ? took : least;most = took > most ? took : most;\n}\n"
            'int all = clock_us() - begin;Printf("%d", least);Printf("%d", most);Printf("%d", all);\n',
            before=self.CLOCK)))
        self.assertGreaterEqual(shortest, 1000)
        self.assertLess(longest, 1200)
        self.assertGreater(total, 1000000)

    def test_wait_in_fractions_of_milliseconds(self):
        # Each with the least and the most that it may take; a float is never quite 0.1.
        waits = {"1.001": (1001, 1001), "0.057": (57, 57), "0.0014": (2, 2), "0.0004": (1, 1),
                 "tenth": (100, 100), "1.1 * 3": (3300, 3300), "0": (0, 0), "-1": (0, 0)}
        lines = self.lines(program(
            "int n = 0;\n" + "".join(
                "from = clock_us();wait(%s);took[n++] = clock_us() - from;\n" % wait for wait in waits)
            + 'for(int i = 0;i < n; ++i)\n{\nPrintf("%d", took[i]);\n}\n',
            before=self.CLOCK + "float tenth = 0.1;int from, took[20];\n"))
        self.assertEqual(len(lines), len(waits))
        for (wait, (least, most)), took in zip(waits.items(), lines):
            with self.subTest(wait=wait):
                self.assertTrue(least * 1000 <= int(took) <= most * 1000 + 200, took)

    def test_calls_of_tasks_come_one_by_one(self):
        # Every call takes longer than a task's turn.
        calls = {
            "set_motor(%d, %d);": ["motor %d", "speed %d"],
            "servo_ctrl(%d, 0, %d, 0);": ["servo %d", "position %d"],
            "PlaySpeech(%d);": ["sound %d", "again %d"],
            "switch_state(%d);": ["touch %d", "again %d"],
            "TZ_AI(%d);": ["analogue %d", "again %d"],
            "disp_symble(%d, 45);": ["display %d", "symbol 45 with 130"],
            "disp_emoji(%d, 3, 13);": ["display %d", "emoji 13 unknown with 0"],
            "disp_custom(%d,(LedMaritx){{0,0,0,5,0,0,0,0}});": ["display %d", "custom with 5"],
            'Printf("%d print");Printf("%d print");': ["%d print", None],
        }
        for call, told in calls.items():
            with self.subTest(call=call):
                def filled(text, n):
                    return text % ((n,) * text.count("%d"))
                body = "for(int i = 0;i < 3; ++i)\n{\n%s\n}\n"
                lines = self.lines(program(body % filled(call, 10) + "wait(1);\n", after="".join(
                    task(n, body % filled(call, n + 10)) for n in (1, 2, 3))), tasks=3)
                if told[1] is None:
                    expected = {filled(told[0], n): 6 for n in range(10, 14)}
                    heard = lines
                else:
                    expected = {"\n".join(filled(line, n) for line in told): 3 for n in range(10, 14)}
                    heard = ["\n".join(lines[i:i + 2]) for i in range(0, len(lines), 2)]
                self.assertEqual({line: heard.count(line) for line in heard}, expected)


class EmulatorBoardTest(KitCase):
    """The start of the emulated controller, as its chip would have it."""

    def emulator(self, *options, **streams):
        return subprocess.Popen(
            ["qemu-system-arm", "-machine", "lm3s6965evb", "-nodefaults", "-nic", "none", "-display", "none",
             "-monitor", "none", "-icount", "shift=7,sleep=off", "-kernel", self.kit.bin("program"), *options],
            stdin=subprocess.DEVNULL, text=True, **streams)

    def accesses(self):
        self.built(program(""))
        process = self.emulator("-serial", "null", "-trace", "memory_region_ops_*", stderr=subprocess.PIPE)
        found = []
        try:
            for line in process.stderr:
                match = ACCESS.match(line)
                if match:
                    found.append((match[1], int(match[2], 16), int(match[3], 16)))
                    if found[-1][1] == UART_DATA:
                        return found
        finally:
            process.kill()
            process.wait()
            process.stderr.close()
        self.fail("nothing is put")

    def test_variables_begin_as_told_whatever_memory_holds(self):
        self.built(program('Printf("%d %d", held, kept);\n', before="int held, kept = 7;\n"))
        rubbish = pathlib.Path(self.temporary.name) / "rubbish"
        # All but the place for the values of sensors.
        rubbish.write_bytes(b"\xa5" * (63 * 1024))
        process = self.emulator("-serial", "file:/dev/stdout", "-device",
                                "loader,file=%s,addr=0x20000400,force-raw=on" % rubbish,
                                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
        # Without an end it is ended.
        watch = threading.Timer(30, process.kill)
        watch.start()
        lines = []
        with process.stdout:
            for line in process.stdout:
                lines.append(line.split("] ", 1)[-1].strip())
                if lines[-1] == "end":
                    break
        watch.cancel()
        process.kill()
        process.wait()
        self.assertEqual(lines, ["start", "print 0 7", "end"])

    def test_clock_uart_and_tick_are_set_up_as_the_chip_asks(self):
        registers, locked, clocks = {}, False, []
        for kind, address, value in self.accesses():
            if kind == "read":
                locked |= address == RAW_INTERRUPTS and bool(value >> 6 & 1)
                continue
            if address == CLOCK:
                main_off, internal_off, source = value & 1, value >> 1 & 1, value >> 4 & 3
                past_loop, loop_off = value >> 11 & 1, value >> 13 & 1
                # What clocks the chip, by itself or through the loop, is not switched off.
                self.assertFalse((main_off, internal_off)[source])
                if loop_off:
                    self.assertTrue(past_loop)
                    locked = False
                if not past_loop:
                    self.assertTrue(locked, "the loop is used before it is locked")
                clocks.append((past_loop, source, value))
            elif address == UART_CONTROL and value & 1:
                self.assertEqual((clocks[-1][0], registers[GATES_1] & 1, registers[GATES_2] & 1), (0, 1, 1))
                self.assertEqual((registers[PINS_ALTERNATE] & 3, registers[PINS_DIGITAL] & 3), (3, 3))
            elif UART <= address < UART + 0x1000 and address not in (UART_CONTROL, UART_DATA):
                self.assertEqual(registers.get(UART_CONTROL, 0) & 1, 0)
                if address == UART_LINE:
                    # Only by this write the divisor holds.
                    rate = 50000000 / 16 / (registers[UART_DIVISOR] + registers[UART_DIVISOR_64THS] / 64)
                    self.assertAlmostEqual(rate, 115200, delta=1000)
            registers[address] = value

        # The crystal runs by itself for a while before the loop is fed by it.
        self.assertEqual([clock[:2] for clock in clocks], [(1, 1), (1, 0), (0, 0)])
        self.assertEqual(clocks[0][2] & 1, 0)
        value = clocks[-1][2]
        self.assertEqual((value >> 6 & 15, value >> 22 & 1, value >> 23 & 15), (14, 1, 3))
        self.assertEqual(registers[TICK_RELOAD], 50000 - 1)
        self.assertEqual(registers[TICK_CONTROL], 7)


if __name__ == "__main__":
    unittest.main()
