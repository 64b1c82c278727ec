#!/usr/bin/env python3
"""Installs the build into an empty prefix, and its packages into an empty root, and uses it from there, by find_package and
by pkg-config.

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


class Users:
    """What a host does with an installed library: `prefix` holds it, `root` is a folder to work in."""

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
        variables = {**os.environ, "PKG_CONFIG_PATH": str(self.library / "pkgconfig"),
                     "PKG_CONFIG_ALLOW_SYSTEM_CFLAGS": "1", "PKG_CONFIG_ALLOW_SYSTEM_LIBS": "1"}
        flags = run("pkg-config", "--cflags", "--libs", "rasterloom", env=variables).split()
        program = self.root / "by-pkg-config"
        run("g++", "-std=c++20", "-fvisibility=hidden", CONSUMER / "main.cpp", "-o", program, *flags)
        self.use(program)

    def test_the_program_finds_its_library(self):
        environment = {key: value for key, value in os.environ.items() if key != "LD_LIBRARY_PATH"}
        self.assertIn("BMP", run(self.prefix / "bin" / "rasterloom", "formats", env=environment))


class InstallTest(Users, unittest.TestCase):
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

    def test_headers_reach_nothing_but_the_standard_library_and_themselves(self):
        headers = list(self.prefix.glob("include/**/*.h"))
        self.assertGreater(len(headers), 50)
        for header in headers:
            for include in re.findall(r'#include\s+[<"]([^>"]+)[>"]', header.read_text()):
                own = (self.prefix / "include" / include).exists() if "/" in include else False
                self.assertTrue(own or re.fullmatch(r"[a-z_]+", include), f"{header}: {include}")

    def test_the_library_is_versioned_and_shows_its_public_classes_alone(self):
        library = self.library / "librasterloom.so"
        name = re.search(r"SONAME.*\[(.*)\]", run("readelf", "-d", library)).group(1)
        self.assertRegex(name, r"^librasterloom\.so\.\d+$")
        self.assertTrue((self.library / name).exists())
        symbols = run("nm", "-D", "--defined-only", "--demangle", library)
        names = [line.split(maxsplit=2)[2] for line in symbols.splitlines()]
        # Of a class as of a template argument or a parameter only the name is told.
        inner = [name for name in names
                 if re.match(r"((vtable|typeinfo|typeinfo name|VTT|guard variable) for )?(ImagingFramework|fmt|hwy|cms|png|jpeg)\b", name)]
        self.assertEqual(inner, [])
        for header in ("Exceptions.h", "Host/Errors.h"):
            text = (self.prefix / "include/Corvane/Rasterloom" / header).read_text()
            classes = re.findall(r"^(?:RASTERLOOM_(?:NAMED_)?FAILURE|RASTERLOOM_HOST_ERROR)\((\w+),", text, re.M)
            classes += re.findall(r"^class RASTERLOOM_API (\w+)", text, re.M)
            self.assertGreater(len(classes), 10)
            for failure in set(classes) - {"SerializationException"}: # which nothing in the library raises
                shown = any(re.fullmatch(rf"typeinfo for Corvane::Rasterloom::(\w+::)?{failure}", name) for name in names)
                self.assertTrue(shown, failure)


class PackagesTest(Users, unittest.TestCase):
    """The Debian packages, unpacked into an empty root."""

    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.root = pathlib.Path(cls.folder.name)
        run("cpack", "-G", "DEB", "--config", BUILD / "CPackConfig.cmake", "-B", cls.root / "packages")
        cls.packages = {package.name.split("_")[0]: package for package in (cls.root / "packages").glob("*.deb")}
        for package in cls.packages.values():
            run("dpkg-deb", "-x", package, cls.root / "system")
        cls.prefix = cls.root / "system" / "usr"
        cls.library = next(cls.prefix.glob("lib/**/librasterloom.so")).parent

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def field(self, package, name):
        return run("dpkg-deb", "-f", self.packages[package], name).strip()

    def test_each_has_what_it_is_for_and_depends_on_what_it_needs(self):
        self.assertEqual(set(self.packages), {"librasterloom0", "librasterloom-dev", "rasterloom"})
        contents = {name: run("dpkg-deb", "-c", package) for name, package in self.packages.items()}
        self.assertNotIn(".h\n", contents["librasterloom0"])
        self.assertRegex(contents["librasterloom0"], r"librasterloom\.so\.0\b")
        self.assertRegex(contents["librasterloom-dev"], r"librasterloom\.so -> librasterloom\.so\.0")
        self.assertIn("rasterloom.pc\n", contents["librasterloom-dev"])
        self.assertIn("/usr/bin/rasterloom\n", contents["rasterloom"])
        version = self.field("librasterloom0", "Version")
        for package in ("librasterloom-dev", "rasterloom"):
            self.assertIn(f"librasterloom0 (= {version})", self.field(package, "Depends"))
        needed = self.field("librasterloom0", "Depends")
        for library in ("libc6", "libstdc++6", "libjpeg", "libpng", "liblcms2", "libexpat"):
            self.assertIn(library, needed)
        # Programs of others that are packaged get their dependency from this; the loader's cache is brought up to date.
        control = self.root / "control"
        run("dpkg-deb", "-e", self.packages["librasterloom0"], control)
        self.assertIn("librasterloom 0 librasterloom0", (control / "shlibs").read_text())
        self.assertIn("ldconfig", (control / "postinst").read_text())


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]], verbosity=2)
