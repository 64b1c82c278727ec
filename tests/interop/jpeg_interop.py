#!/usr/bin/env python3
"""JPEG files against the programs of libjpeg-turbo. Usage: jpeg_interop.py RASTERLOOM PICTURE.bmp"""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

TOOL, PICTURE = sys.argv[1], sys.argv[2]


def run(*command, data=None):
    return subprocess.run([str(part) for part in command], input=data, check=True, stdout=subprocess.PIPE).stdout


class JpegTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.path = pathlib.Path(self.folder.name)
        self.pnm = run("bmptopnm", "-quiet", PICTURE)

    def tearDown(self):
        self.folder.cleanup()

    def ours(self, jpeg):
        """The pixels that we see, by way of a BMP."""
        run(TOOL, "convert", "--force", jpeg, self.path / "out.bmp")
        return run("bmptopnm", "-quiet", self.path / "out.bmp")

    def test_decodes_what_djpeg_decodes(self):
        gray = run("ppmtopgm", data=self.pnm)
        odd = run("pamcut", "-left", "0", "-top", "0", "-width", "157", "-height", "91", data=self.pnm)
        for options, picture in (
                (["-sample", "1x1"], self.pnm), (["-sample", "2x1"], odd), (["-sample", "1x2"], odd), (["-sample", "2x2"], odd),
                (["-sample", "4x1"], odd), (["-progressive"], odd), (["-progressive", "-restart", "1"], self.pnm),
                (["-restart", "3B"], self.pnm), (["-rgb"], odd), (["-grayscale"], odd), ([], gray), (["-arithmetic"], odd),
                (["-quality", "1"], odd), (["-quality", "100"], odd)):
            jpeg = self.path / "in.jpg"
            jpeg.write_bytes(run("cjpeg", *options, data=picture))
            theirs = run("djpeg", "-pnm", jpeg)
            mine = self.ours(jpeg)
            if theirs.startswith(b"P5"):
                mine = run("ppmtopgm", data=mine) if mine.startswith(b"P6") else mine
            self.assertEqual(mine, theirs, options)

    def test_writes_what_others_read(self):
        for options in ([], ["--quality", "5"], ["--quality", "100", "--no-chroma-subsampling"], ["--progressive"],
                        ["--pixel-format", "Format8bppGrayScale"]):
            jpeg = self.path / "out.jpg"
            run(TOOL, "convert", "--force", PICTURE, jpeg, *options)
            checked = run("jpeginfo", "-c", jpeg)
            self.assertIn(b"OK", checked, options)
            theirs = run("djpeg", "-pnm", jpeg)
            mine = self.ours(jpeg)
            if theirs.startswith(b"P5"):
                mine = run("ppmtopgm", data=mine) if mine.startswith(b"P6") else mine
            self.assertEqual(mine, theirs, options)
            self.assertEqual(b" P " in checked, "--progressive" in options, checked)


if __name__ == "__main__":
    if not all(shutil.which(program) for program in ("cjpeg", "djpeg", "jpeginfo", "bmptopnm")):
        sys.exit(77)
    unittest.main(argv=[sys.argv[0]], verbosity=2)
