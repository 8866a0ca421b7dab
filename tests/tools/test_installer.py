"""The installer for Linux, on a small archive in the place of the program's."""
import os
import pathlib
import stat
import subprocess
import tempfile
import time
import unittest

ROOT = pathlib.Path(__file__).resolve().parents[2]

PROJECT = f"""
cmake_minimum_required(VERSION 3.25)
project(tiler VERSION 2.0 LANGUAGES NONE)
install(DIRECTORY source/ DESTINATION . USE_SOURCE_PERMISSIONS)
set(CPACK_GENERATOR TXZ)
set(CPACK_PACKAGE_FILE_NAME tiler-2.0)
set(CPACK_POST_BUILD_SCRIPTS "{ROOT}/cmake/SelfExtracting.cmake")
include(CPack)
"""


class Installer(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.base = pathlib.Path(folder.name).resolve()
        # A blank and Chinese in the path, as users have them.
        self.installed = self.base / "my 塔勒"
        self.installed.mkdir()
        # A real program, so that the system tells what runs; here one that waits.
        self.write(self.installed / "vantrel", pathlib.Path("/bin/sleep").read_bytes(), True)
        self.write(self.installed / "records.txt", b"mine")
        self.write(self.installed / "gcc/user_main.c", b"also mine")
        self.write(self.installed / "gcc/kit", b"old")
        self.installer = self.make_installer()

    def write(self, path, content, executable=False):
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        if executable:
            path.chmod(0o755)

    def make_installer(self):
        """By CPack, as the program's."""
        source = self.base / "source"
        self.write(source / "vantrel", b'#!/bin/sh\necho "$# $PWD" >started\n', True)
        self.write(source / "gcc/kit", b"new")
        self.write(source / "gcc/more", b"new too")
        self.write(self.base / "CMakeLists.txt", PROJECT.encode())
        build = self.base / "build"
        subprocess.run(["cmake", "-B", build, self.base], check=True, capture_output=True)
        subprocess.run(["cpack"], cwd=build, check=True, capture_output=True)
        return build / "tiler-2.0.run"

    def install(self, *arguments, cwd=None):
        """As the program starts it: by itself, in the folder of the program."""
        return subprocess.run([self.installer, *arguments], cwd=cwd or self.installed,
                              stdin=subprocess.DEVNULL, capture_output=True, timeout=60)

    def said(self):
        return (self.installed / "log/update.txt").read_text()

    def await_start(self):
        deadline = time.monotonic() + 30
        while not (self.installed / "started").exists():
            self.assertLess(time.monotonic(), deadline)
            time.sleep(0.01)

    def children_of(self, process):
        """The names of what a process has started and what runs yet."""
        names = []
        for child in pathlib.Path(f"/proc/{process}/task/{process}/children").read_text().split():
            try:
                names.append(pathlib.Path(f"/proc/{child}/comm").read_text().strip())
            except OSError:
                pass
        return names

    def check_updated(self):
        self.await_start()
        self.assertEqual((self.installed / "gcc/kit").read_bytes(), b"new")
        self.assertEqual((self.installed / "gcc/more").read_bytes(), b"new too")
        self.assertEqual((self.installed / "records.txt").read_bytes(), b"mine")
        self.assertEqual((self.installed / "gcc/user_main.c").read_bytes(), b"also mine")
        self.assertEqual([p.name for p in self.installed.glob(".update*")], [])

    def test_it_is_executable(self):
        self.assertTrue(self.installer.stat().st_mode & stat.S_IXUSR)

    def test_replaces_the_program_and_starts_it(self):
        # What has an old file open keeps that.
        with open(self.installed / "gcc/kit", "rb") as old:
            self.assertEqual(self.install().returncode, 0)
            self.check_updated()
            self.assertEqual(old.read(), b"old")

    def test_a_folder_may_be_named(self):
        self.assertEqual(self.install(self.installed, cwd=self.base).returncode, 0)
        self.check_updated()

    def test_waits_until_the_program_has_been_left(self):
        running = subprocess.Popen([self.installed / "vantrel", "600"])
        self.addCleanup(running.kill)
        installer = subprocess.Popen([self.installer], cwd=self.installed,
                                     stdin=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.addCleanup(installer.kill)
        deadline = time.monotonic() + 30
        while "sleep" not in self.children_of(installer.pid):
            self.assertIsNone(installer.poll())
            self.assertLess(time.monotonic(), deadline)
            time.sleep(0.01)
        self.assertEqual((self.installed / "gcc/kit").read_bytes(), b"old")
        self.assertIsNone(installer.poll())
        running.kill()
        running.wait()
        self.assertEqual(installer.wait(timeout=30), 0)
        self.check_updated()

    def test_refuses_a_damaged_download(self):
        content = bytearray(self.installer.read_bytes())
        content[-20] ^= 1
        self.installer.write_bytes(content)
        self.assertNotEqual(self.install().returncode, 0)
        self.assertIn("damaged", self.said())
        self.check_untouched()

    def test_refuses_a_download_that_was_cut_off(self):
        self.installer.write_bytes(self.installer.read_bytes()[:-50])
        self.assertNotEqual(self.install().returncode, 0)
        self.check_untouched()

    def test_refuses_a_folder_without_the_program(self):
        empty = self.base / "empty"
        empty.mkdir()
        result = self.install(cwd=empty)
        self.assertNotEqual(result.returncode, 0)
        self.assertEqual(os.listdir(empty), [])

    def check_untouched(self):
        self.assertEqual((self.installed / "gcc/kit").read_bytes(), b"old")
        self.assertFalse((self.installed / "gcc/more").exists())
        self.assertFalse((self.installed / "started").exists())
        self.assertEqual([p.name for p in self.installed.glob(".update*")], [])


if __name__ == "__main__":
    unittest.main()
