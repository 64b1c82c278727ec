#!/usr/bin/env python3
"""Installs the build into an empty prefix and uses it from there, by find_package and by pkg-config.

Usage: install_test.py BUILD_FOLDER PICTURE
"""
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

BUILD, PICTURE = pathlib.Path(sys.argv[1]), sys.argv[2]
CONSUMER = pathlib.Path(__file__).parent / "consumer"


def run(*command, **options):
    result = subprocess.run([str(part) for part in command], capture_output=True, text=True, check=False, **options)
    if result.returncode != 0:
        raise AssertionError(f"{command}\n{result.stdout}{result.stderr}")
    return result.stdout


class InstallTest(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.root = pathlib.Path(cls.folder.name)
        cls.prefix = cls.root / "prefix"
        run("cmake", "--install", BUILD, "--prefix", cls.prefix)
        cls.library = next(cls.prefix.glob("lib/**/librasterloom.so")).parent

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def use(self, program):
        out = self.root / "half.bmp"
        run(program, PICTURE, out, env={**os.environ, "LD_LIBRARY_PATH": str(self.library)})
        self.assertEqual(out.read_bytes()[:2], b"BM")
        out.unlink()

    def test_find_package(self):
        build = self.root / "by-cmake"
        run("cmake", "-G", "Ninja", "-S", CONSUMER, "-B", build, f"-DCMAKE_PREFIX_PATH={self.prefix}")
        run("cmake", "--build", build)
        self.use(build / "consumer")

    def test_pkg_config(self):
        # The package file names the prefix of the configuration, so it is told where the files went.
        variables = {**os.environ, "PKG_CONFIG_PATH": str(self.library / "pkgconfig")}
        flags = run("pkg-config", f"--define-variable=prefix={self.prefix}", "--cflags", "--libs", "rasterloom",
                    env=variables).split()
        program = self.root / "by-pkg-config"
        run("g++", "-std=c++20", CONSUMER / "main.cpp", "-o", program, *flags)
        self.use(program)

    def test_the_program_finds_its_library(self):
        environment = {key: value for key, value in os.environ.items() if key != "LD_LIBRARY_PATH"}
        self.assertIn("BMP", run(self.prefix / "bin" / "rasterloom", "formats", env=environment))

    def test_headers_reach_nothing_but_the_standard_library_and_themselves(self):
        headers = list(self.prefix.glob("include/**/*.h"))
        self.assertGreater(len(headers), 50)
        for header in headers:
            for include in re.findall(r'#include\s+[<"]([^>"]+)[>"]', header.read_text()):
                own = (self.prefix / "include" / include).exists() if "/" in include else False
                self.assertTrue(own or re.fullmatch(r"[a-z_]+", include), f"{header}: {include}")


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]], verbosity=2)
