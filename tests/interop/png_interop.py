#!/usr/bin/env python3
"""PNG files against independent programs. Usage: png_interop.py RASTERLOOM PICTURE.bmp"""
import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

from icc_profile import make_profile

TOOL, PICTURE = sys.argv[1], sys.argv[2]


def run(*command, data=None):
    return subprocess.run([str(part) for part in command], input=data, check=True, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL).stdout


def rgba(png):
    """The samples as ImageMagick sees them, 16 bits each."""
    return run("convert", png, "-depth", "16", "-endian", "LSB", "RGBA:-")


class PngTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.path = pathlib.Path(self.folder.name)

    def tearDown(self):
        self.folder.cleanup()

    def rewrite(self, png, *options):
        """The picture as we read and write it; the file must please the checker."""
        out = self.path / "out.png"
        run(TOOL, "convert", "--force", png, out, *options)
        run("pngcheck", "-v", out)
        return out

    def test_every_kind_survives(self):
        alpha = ["-alpha", "set", "-channel", "A", "-evaluate", "multiply", "0.5", "+channel"]
        for kind, options in (
                ("PNG24", []), ("PNG48", ["-depth", "16"]), ("PNG32", alpha), ("PNG64", alpha + ["-depth", "16"]),
                ("PNG8", ["-colors", "200"]), ("PNG8", ["-colors", "13"]), ("PNG8", ["-colors", "4"]),
                ("PNG8", ["-colors", "2"]), ("PNG", ["-colorspace", "Gray", "-depth", "8"]),
                ("PNG", ["-colorspace", "Gray", "-depth", "4", "-define", "png:bit-depth=4"]),
                ("PNG", ["-colorspace", "Gray", "-depth", "2", "-define", "png:bit-depth=2"]),
                ("PNG", ["-monochrome"])):
            for interlace in ("None", "PNG"):
                png = self.path / "in.png"
                run("convert", PICTURE, "-crop", "157x91+0+0", "+repage", "-strip", *options, "-interlace", interlace, f"{kind}:{png}")
                expected = rgba(png)
                for choice in ([], ["--interlaced"], ["--compression-level", "0"], ["--compression-level", "9"]):
                    self.assertEqual(rgba(self.rewrite(png, *choice)), expected, (kind, options, interlace, choice))

    def test_profile_and_resolution_survive(self):
        profile, png = self.path / "profile.icc", self.path / "in.png"
        profile.write_bytes(make_profile(200000))
        run("convert", PICTURE, "-strip", png)
        run("exiftool", "-q", "-overwrite_original", f"-ICC_Profile<={profile}", "-PNG-pHYs:PixelsPerUnitX=11811",
            "-PNG-pHYs:PixelsPerUnitY=5000", "-PNG-pHYs:PixelUnits#=1", png)
        out = self.rewrite(png)
        self.assertEqual(run("exiftool", "-b", "-ICC_Profile", out), profile.read_bytes())
        self.assertEqual(run("exiftool", "-s", "-s", "-s", "-PixelsPerUnitX", "-PixelsPerUnitY", out).split(),
                         [b"11811", b"5000"])
        self.assertEqual(run("exiftool", "-validate", "-warning", "-error", "-a", "-s", "-s", out), b"Validate: OK\n")

    def test_pixels_equal_those_of_pngtopnm(self):
        out = self.rewrite(PICTURE)
        self.assertEqual(run("pngtopnm", out), run("bmptopnm", "-quiet", PICTURE))


if __name__ == "__main__":
    if not all(shutil.which(program) for program in ("convert", "pngcheck", "pngtopnm", "bmptopnm", "exiftool")):
        sys.exit(77)
    unittest.main(argv=[sys.argv[0]], verbosity=2)
