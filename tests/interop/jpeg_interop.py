#!/usr/bin/env python3
"""JPEG files against the programs of libjpeg-turbo and exiftool.
Usage: jpeg_interop.py RASTERLOOM CORPUS_PIXELS JPEG_REWRITE PICTURE.bmp"""
import json
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest

from icc_profile import make_profile

TOOL, PIXELS, REWRITE, PICTURE = sys.argv[1:5]
MAKER_NOTE = b"Notes of a maker that nobody knows."


def run(*command, data=None):
    return subprocess.run([str(part) for part in command], input=data, check=True, stdout=subprocess.PIPE).stdout


def decode_with_djpeg(jpeg):
    """A PNM; the program may not say a word."""
    result = subprocess.run(["djpeg", "-pnm", str(jpeg)], capture_output=True, check=True)
    assert not result.stderr, result.stderr
    return result.stdout


def exif_block():
    """A block in the order of Intel with a maker note and a tag that EXIF 2.2 does not know."""
    def directory(offset, entries, following=b"\0\0\0\0"):
        fields, data = b"", b""
        behind = offset + 2 + 12 * len(entries) + 4
        for tag, kind, count, value in entries:
            if len(value) > 4:
                fields += struct.pack("<HHII", tag, kind, count, behind + len(data))
                data += value + bytes(len(value) % 2)
            else:
                fields += struct.pack("<HHI", tag, kind, count) + value.ljust(4, b"\0")
        return struct.pack("<H", len(entries)) + fields + following + data

    def short(value):
        return struct.pack("<H", value)

    dpi = struct.pack("<II", 300, 1)
    inner_offset = 8 + 2 + 6 * 12 + 4 + 2 * 8 + 6
    image = directory(8, [(271, 2, 6, b"Maker\0"), (282, 5, 1, dpi), (283, 5, 1, dpi), (296, 3, 1, short(2)),
                          (531, 3, 1, short(1)), (34665, 4, 1, struct.pack("<I", inner_offset))])
    assert len(image) == inner_offset - 8
    return b"II*\0" + struct.pack("<I", 8) + image + directory(inner_offset, [
        (36864, 7, 4, b"0230"), (37121, 7, 4, b"\1\2\3\0"), (37500, 7, len(MAKER_NOTE), MAKER_NOTE),
        (40960, 7, 4, b"0100"), (40961, 3, 1, short(1)), (40962, 3, 1, short(157)), (40963, 3, 1, short(91)),
        (42036, 2, 10, b"24-70 2.8\0")])


class JpegTest(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.path = pathlib.Path(self.folder.name)
        self.pnm = run("bmptopnm", "-quiet", PICTURE)
        self.odd = run("pamcut", "-left", "0", "-top", "0", "-width", "157", "-height", "91", data=self.pnm)

    def tearDown(self):
        self.folder.cleanup()

    def ours(self, jpeg):
        """The pixels that we see, by way of a BMP."""
        run(TOOL, "convert", "--force", jpeg, self.path / "out.bmp")
        return run("bmptopnm", "-quiet", self.path / "out.bmp")

    def test_decodes_what_djpeg_decodes(self):
        gray = run("ppmtopgm", data=self.odd)
        for options, picture in (
                (["-sample", "1x1"], self.pnm), (["-sample", "2x1"], self.odd), (["-sample", "1x2"], self.odd),
                (["-sample", "2x2"], self.odd), (["-sample", "4x1"], self.odd), (["-sample", "1x4"], self.odd),
                (["-sample", "4x2"], self.odd), (["-sample", "2x2,2x1,1x2"], self.odd), (["-progressive"], self.odd),
                (["-progressive", "-restart", "1"], self.pnm), (["-progressive", "-sample", "2x1"], self.odd),
                (["-restart", "3B"], self.pnm), (["-restart", "2"], self.odd), (["-rgb"], self.odd),
                (["-grayscale"], self.odd), ([], gray), (["-progressive"], gray), (["-restart", "1"], gray),
                (["-arithmetic"], self.odd), (["-arithmetic", "-progressive"], self.odd), (["-quality", "1"], self.odd),
                (["-quality", "100"], self.odd)):
            jpeg = self.path / "in.jpg"
            jpeg.write_bytes(run("cjpeg", *options, data=picture))
            theirs = decode_with_djpeg(jpeg)
            mine = self.ours(jpeg)
            if theirs.startswith(b"P5"):
                mine = run("ppmtopgm", data=mine) if mine.startswith(b"P6") else mine
            self.assertEqual(mine, theirs, options)

    def test_decodes_inks_as_djpeg_does(self):
        source, jpeg = self.path / "in.ppm", self.path / "in.jpg"
        source.write_bytes(self.odd)
        for options in ([], ["-interlace", "JPEG"], ["-sampling-factor", "2x2,1x1,1x1,2x2"]):
            run("convert", source, "-strip", "-colorspace", "CMYK", "-quality", "90", *options, jpeg)
            adobe = jpeg.read_bytes()
            marker = adobe.index(b"\xff\xee\0\x0eAdobe")
            for kind, data in (("Adobe's", adobe), ("YCCK", adobe[:marker + 15] + b"\2" + adobe[marker + 16:]),
                               ("plain", adobe[:marker] + adobe[marker + 16:])):
                jpeg.write_bytes(data)
                header, pixels = run(PIXELS, jpeg).split(b"\n", 1)
                self.assertEqual(header.split()[:4], [b"OK", b"157", b"91", b"CMYK8"])
                # Adobe's files hold what remains of each ink; djpeg takes that for granted.
                inks = pixels if kind == "plain" else bytes(255 - ink for ink in pixels)
                expected = bytes(int(inks[i + c] * inks[i + 3] / 255 + 0.5)
                                 for i in range(0, len(inks), 4) for c in range(3))
                self.assertEqual(expected, decode_with_djpeg(jpeg).split(b"\n", 3)[3], (kind, options))

    def test_writes_what_others_read(self):
        for options in ([], ["--quality", "5"], ["--quality", "100", "--no-chroma-subsampling"], ["--progressive"],
                        ["--pixel-format", "Format8bppGrayScale"]):
            jpeg = self.path / "out.jpg"
            run(TOOL, "convert", "--force", PICTURE, jpeg, *options)
            checked = run("jpeginfo", "-c", jpeg)
            self.assertIn(b"OK", checked, options)
            theirs = decode_with_djpeg(jpeg)
            mine = self.ours(jpeg)
            if theirs.startswith(b"P5"):
                mine = run("ppmtopgm", data=mine) if mine.startswith(b"P6") else mine
            self.assertEqual(mine, theirs, options)
            self.assertEqual(b" P " in checked, "--progressive" in options, checked)

    def rich_jpeg(self):
        """A file of libjpeg and exiftool with blocks of all kinds and a large profile."""
        jpeg, profile = self.path / "rich.jpg", self.path / "profile.icc"
        profile.write_bytes(make_profile(200000))
        plain = run("cjpeg", data=self.odd)
        exif = b"Exif\0\0" + exif_block()
        jpeg.write_bytes(plain[:2] + b"\xff\xe1" + struct.pack(">H", len(exif) + 2) + exif + plain[2:])
        run("exiftool", "-q", "-overwrite_original", "-charset", "iptc=latin", f"-ICC_Profile<={profile}",
            "-IPTC:ApplicationRecordVersion=4", "-IPTC:Caption-Abstract=A quoted caption", "-IPTC:Keywords=lake", "-IPTC:Keywords=alps",
            "-IPTC:By-line=J\u00f6rg", "-IPTCDigest=new", "-Photoshop:URL=http://example.org/lake",
            "-Photoshop:CopyrightFlag#=1", "-XMP-dc:Title=Der See", "-XMP-dc:Subject=lake", "-XMP-xmp:Rating=3", jpeg)
        return jpeg, profile.read_bytes()

    def shown(self, jpeg):
        """What exiftool tells, without what belongs to the coding and to the place of data."""
        tags = json.loads(run("exiftool", "-j", "-n", "-G1", "-a", "-u", "-U", "-b", jpeg))[0]
        return {name: value for name, value in tags.items()
                if name.split(":")[0] not in ("SourceFile", "File", "System", "ExifTool", "JFIF", "Composite")}

    def test_metadata_survives(self):
        rich, profile = self.rich_jpeg()
        self.assertEqual(run("exiftool", "-b", "-ICC_Profile", rich), profile)
        for options in ([], ["progressive"]):
            ours = self.path / "ours.jpg"
            run(REWRITE, rich, ours, *options)
            self.assertIn(b"OK", run("jpeginfo", "-c", ours))
            decode_with_djpeg(ours)
            told = run("exiftool", "-validate", "-warning", "-error", "-a", "-s", "-s", ours).decode().splitlines()
            self.assertEqual(told, ["Validate: OK"])
            self.assertEqual(self.shown(ours), self.shown(rich))
            self.assertGreater(len(self.shown(ours)), 40)
            self.assertEqual(run("exiftool", "-b", "-ICC_Profile", ours), profile)
            self.assertEqual([number for number in range(6) if b"ICC_PROFILE\0" + bytes([number, 4]) in ours.read_bytes()],
                             [1, 2, 3, 4])
            self.assertIn(MAKER_NOTE, ours.read_bytes())


if __name__ == "__main__":
    needed = ("cjpeg", "djpeg", "jpeginfo", "bmptopnm", "convert", "exiftool")
    if not all(shutil.which(program) for program in needed):
        sys.exit(77)
    unittest.main(argv=[sys.argv[0]], verbosity=2)
