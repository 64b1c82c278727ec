#!/usr/bin/env python3
"""The command-line program as a user meets it. Usage: tool_test.py RASTERLOOM PICTURE.bmp"""
import json
import os
import pathlib
import signal
import struct
import subprocess
import sys
import tempfile
import unittest

TOOL, PICTURE = sys.argv[1], sys.argv[2]


def tool(*arguments, **options):
    return subprocess.run([TOOL, *map(str, arguments)], capture_output=True, text=True, check=False, **options)


class ToolTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.path = pathlib.Path(self.folder.name)

    def tearDown(self):
        self.folder.cleanup()

    def test_info_tells_what_a_picture_is(self):
        result = tool("info", PICTURE)
        self.assertEqual(result.returncode, 0)
        for text in ("BMP (Windows Bitmap)", "720 x 480", "Format24bppRgb", "150.01 x 150.01 dpi"):
            self.assertIn(text, result.stdout)
        self.assertIn("*.bmp;*.dib", tool("formats").stdout)

    def test_sizes_and_formats(self):
        out = self.path / "out.bmp"
        for size, width, height in (("360x", 360, 240), ("x100", 150, 100), ("50%", 360, 240), ("9x9", 9, 9)):
            self.assertEqual(tool("convert", PICTURE, out, "-f", "--resize", size, "--interpolation",
                                  "bilinear").returncode, 0)
            self.assertEqual(struct.unpack_from("<ii", out.read_bytes(), 18), (width, height), size)
        self.assertEqual(tool("convert", "-f", PICTURE, out, "--pixel-format", "Format4bppIndexed").returncode, 0)
        self.assertEqual(struct.unpack_from("<H", out.read_bytes(), 28), (4,))

    def test_operations_run_in_the_order_given(self):
        out = self.path / "out.bmp"
        result = tool("convert", PICTURE, out, "--resize", "100x", "--pixel-format", "Format8bppGrayScale", "--resize", "50%")
        self.assertEqual([line.split()[0] for line in result.stdout.splitlines()],
                         ["load", "resize", "convert", "resize", "save"])
        self.assertEqual(struct.unpack_from("<ii", out.read_bytes(), 18), (50, 33))

    def test_geometry_and_palettes(self):
        out = self.path / "out.bmp"
        size = lambda: struct.unpack_from("<ii", out.read_bytes(), 18)
        for arguments, expected in ((("--crop", "10,20,100,50"), (100, 50)),
                                    (("--rotate-flip", "Rotate90FlipNone"), (480, 720)),
                                    (("--crop", "0,0,101,101", "--rotate", "45", "--background", "#FF0000"), (142, 142))):
            self.assertEqual(tool("convert", "-f", PICTURE, out, *arguments).returncode, 0, arguments)
            self.assertEqual(size(), expected)
        result = tool("convert", "-f", PICTURE, out, "--pixel-format", "Format8bppIndexed", "--palette-size", "16",
                      "--dither", "Jarvis", "--quantizer", "Octree")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertLessEqual(max(out.read_bytes()[54 + 1024:]), 15)
        self.assertEqual(tool("thumbnail", "-f", PICTURE, out, "--size", "160x160").returncode, 0)
        self.assertEqual(size(), (160, 107))
        self.assertEqual(tool("convert", PICTURE, out, "--crop", "1,2,3").returncode, 2)

    def test_several_files_at_a_time(self):
        names = ["a", "b", "c"]
        for name in names:
            (self.path / f"{name}.bmp").write_bytes(pathlib.Path(PICTURE).read_bytes())
        (self.path / "b.bmp").write_bytes(b"BM broken")
        inputs = [self.path / f"{name}.bmp" for name in names]
        result = tool("convert", *inputs, self.path / "{}-small.bmp", "--jobs", 2, "--resize", "60x")
        self.assertEqual(result.returncode, 1)
        self.assertEqual(result.stderr.count("\n"), 1)
        self.assertIn("b.bmp", result.stderr)
        self.assertEqual(sorted(path.name for path in self.path.glob("*-small.bmp")), ["a-small.bmp", "c-small.bmp"])
        self.assertEqual(tool("convert", *inputs, self.path / "out.bmp").returncode, 2)
        self.assertEqual(tool("convert", inputs[0], inputs[0], self.path / "{}-x.bmp").returncode, 2)

    def test_pipes_and_json(self):
        picture = pathlib.Path(PICTURE).read_bytes()
        small = subprocess.run([TOOL, "convert", "-", "-", "--to", "bmp", "--resize", "30x20"], input=picture,
                               capture_output=True, check=True).stdout
        (self.path / "small.bmp").write_bytes(small)
        self.assertEqual(len(small), 54 + 20 * 92)
        result = tool("info", "--json", self.path / "small.bmp", self.path / "none.bmp")
        self.assertEqual(result.returncode, 1)
        described = json.loads(result.stdout)
        self.assertEqual([(file["format"], file["frames"][0]["width"]) for file in described], [("BMP", 30)])
        self.assertEqual(tool("convert", PICTURE, "-").returncode, 2)

    def test_failures_are_one_line_with_file_and_cause(self):
        cases = [
            (("info", self.path / "none.bmp"), 1, "none.bmp"),
            (("convert", PICTURE, self.path / "out.xyz"), 1, "out.xyz: The media format is not supported."),
            (("convert", PICTURE, self.path / "no" / "out.bmp"), 1, "out.bmp"),
            (("convert", PICTURE), 2, ""),
            (("convert", PICTURE, "x.bmp", "--resize", "huge"), 2, "'huge' is no size"),
            (("convert", PICTURE, "x.bmp", "--pixel-format", "Format7"), 2, "Format24bppRgb"),
            (("nothing",), 2, ""),
        ]
        for arguments, code, text in cases:
            result = tool(*arguments)
            self.assertEqual(result.returncode, code, arguments)
            self.assertIn(text, result.stderr)
            if code == 1:
                self.assertEqual(result.stderr.count("\n"), 1, result.stderr)
        self.assertEqual(os.listdir(self.path), [])

    def test_a_failure_leaves_the_old_file(self):
        out, broken = self.path / "out.bmp", self.path / "broken.bmp"
        out.write_bytes(b"old")
        broken.write_bytes(pathlib.Path(PICTURE).read_bytes()[:5000])
        self.assertIn("out.bmp: the file exists", tool("convert", PICTURE, out).stderr)
        self.assertEqual(tool("convert", broken, out, "--force").returncode, 1)
        self.assertEqual(out.read_bytes(), b"old")
        self.assertEqual(sorted(os.listdir(self.path)), ["broken.bmp", "out.bmp"])

    def test_an_interrupt_stops_the_work_and_leaves_no_file(self):
        out = self.path / "out.bmp"
        process = subprocess.Popen([TOOL, "convert", PICTURE, str(out), "--resize", "16000x12000", "--interpolation",
                                    "MitchellFilter"], stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        self.assertIn("load", process.stdout.readline())  # the long step follows
        process.send_signal(signal.SIGINT)
        _, errors = process.communicate(timeout=120)
        self.assertEqual(process.returncode, 1)
        self.assertIn("interrupted", errors)
        self.assertEqual(os.listdir(self.path), [])


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]], verbosity=2)
