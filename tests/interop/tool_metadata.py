#!/usr/bin/env python3
"""What the program carries from file to file, judged by exiftool. Usage: tool_metadata.py RASTERLOOM PICTURE.bmp"""
import json
import pathlib
import shutil
import struct
import tempfile

import tool_profiles
from tool_support import PICTURE, ToolCase, main, run, tool


def tags(file, *options):
    """All tags that exiftool finds, by group and name; numbers, and binary data by their bytes."""
    listed = json.loads(run("exiftool", "-j", "-a", "-u", "-n", "-b", "-G1", "-struct", *options, file))[0]
    return {key: value for key, value in listed.items() if not key.startswith(("SourceFile", "System:", "ExifTool:", "File:"))}


def make_photo(folder):
    """A JPEG with all that a camera and an editor put into one, and a profile of 200,000 bytes."""
    photo = folder / "photo.jpg"
    run("convert", PICTURE, "-quality", "90", photo)
    (folder / "thumb.jpg").write_bytes(run("convert", PICTURE, "-resize", "160x120!", "jpg:-"))
    (folder / "big.icc").write_bytes(tool_profiles.rgb("test", tool_profiles.SRGB, size=200000))
    run("exiftool", "-q", "-overwrite_original", "-n", "-Make=Maker", "-Model=Model", "-Orientation=1",
        "-ExposureTime=0.004", "-FNumber=5.6", "-ISO=200", "-DateTimeOriginal=2024:05:06 07:08:09",
        "-ExifImageWidth=720", "-ExifImageHeight=480", "-ColorSpace=1", "-GPSLatitude=47.5", "-GPSLatitudeRef=N",
        "-GPSLongitude=8.25", "-GPSLongitudeRef=E", "-EXIF:OwnerName=Owner", "-EXIF:LensModel=Lens",
        "-IFD0:XPTitle=Title", "-UserComment=comment", f"-ThumbnailImage<={folder / 'thumb.jpg'}",
        "-IPTC:Keywords=lake", "-IPTC:Keywords=hill", "-IPTC:City=Zürich", "-IPTC:Caption-Abstract=Two lines",
        "-XMP-dc:Title=A title", "-XMP-dc:Subject=lake", "-XMP-dc:Subject=hill", "-XMP-xmp:Rating=4",
        "-Photoshop:CopyrightFlag=1", "-Photoshop:IPTCDigest=new", "-Photoshop:URL=http://example.org",
        f"-icc_profile<={folder / 'big.icc'}", photo)
    # exiftool makes no maker notes: one takes the place of the user comment, which has the same shape.
    photo.write_bytes(replace_entry(photo.read_bytes(), 0x9286, 7, None, 0x927C))


def replace_entry(data, tag, kind, value, new_tag=None):
    """Changes the number of an EXIF entry, or the two bytes of its value, in place."""
    for order in "><":
        start = data.find(struct.pack(order + "HH", tag, kind))
        if start >= 0:
            break
    else:
        raise ValueError(hex(tag))
    if new_tag is not None:
        return data[:start] + struct.pack(order + "H", new_tag) + data[start + 2:]
    return data[:start + 8] + struct.pack(order + "H", value) + data[start + 10:]


class MetadataTest(ToolCase):
    @classmethod
    def setUpClass(cls):
        cls.original = tempfile.TemporaryDirectory()
        make_photo(pathlib.Path(cls.original.name))

    @classmethod
    def tearDownClass(cls):
        cls.original.cleanup()

    def setUp(self):
        super().setUp()
        shutil.copytree(self.original.name, self.path, dirs_exist_ok=True)
        self.photo = self.path / "photo.jpg"

    def convert(self, name, *options):
        out = self.path / name
        self.succeed("convert", "-f", self.photo, out, *options)
        return out

    def test_everything_survives_a_conversion(self):
        before = tags(self.photo)
        self.assertTrue({"GPS:GPSLatitude", "ExifIFD:LensModel", "IFD0:XPTitle", "IPTC:Keywords", "XMP-dc:Subject",
                         "Photoshop:URL", "IFD1:ThumbnailImage"} <= before.keys(), before.keys())
        out = self.convert("out.jpg")
        after = tags(out)
        # Offsets are places in the file; resolution and chroma are those of the new JPEG.
        changing = {"IFD1:ThumbnailOffset", "IFD1:ThumbnailLength", "IFD0:YCbCrPositioning", "IFD0:XResolution",
                    "IFD0:YResolution", "IFD0:ResolutionUnit", "IFD1:XResolution", "IFD1:YResolution",
                    "IFD1:ResolutionUnit", "IFD1:Compression"}
        lost = {key: value for key, value in before.items()
                if after.get(key) != value and key not in changing and not key.startswith(("JFIF", "Composite"))}
        self.assertEqual(lost, {})
        self.assertEqual(run("exiftool", "-icc_profile", "-b", out), (self.path / "big.icc").read_bytes())
        self.assertEqual(run("exiftool", "-MakerNoteUnknownBinary", "-b", "-u", out),
                         run("exiftool", "-MakerNoteUnknownBinary", "-b", "-u", self.photo))
        def complaints(file):
            return set(run("exiftool", "-validate", "-warning", "-error", "-a", "-s3", file).decode().splitlines()[1:])

        self.assertLessEqual(complaints(out), complaints(self.photo))

    def test_a_thumbnail_that_does_not_fit_is_left_out(self):
        tiny = run("convert", PICTURE, "-strip", "-resize", "160x", "-quality", "3", "jpg:-")
        (self.path / "tiny.jpg").write_bytes(tiny)
        (self.path / "comment").write_text("x" * (65000 - 700 - len(tiny)))
        run("exiftool", "-q", "-overwrite_original", "-all=", f"-UserComment<={self.path / 'comment'}",
            f"-ThumbnailImage<={self.path / 'tiny.jpg'}", self.photo)
        out = self.path / "out.jpg"
        told = self.note("convert", self.photo, out, "--resize", "50%")
        self.assertIn("thumbnail", told)
        self.assertEqual(told.count("\n"), 1)
        self.assertGreater(len(tags(out)["ExifIFD:UserComment"]), 60000)

    def test_metadata_follows_changed_pixels(self):
        out = self.convert("half.jpg", "--resize", "50%")
        after = tags(out)
        self.assertEqual((after["ExifIFD:ExifImageWidth"], after["ExifIFD:ExifImageHeight"]), (360, 240))
        thumbnail = run("exiftool", "-ThumbnailImage", "-b", out)
        self.assertEqual(run("identify", "-format", "%wx%h", "jpg:-", data=thumbnail), b"160x107")
        # It shows what the picture shows now: the left half of it.
        out = self.convert("crop.jpg", "--crop", "0,0,360,480")
        thumbnail = run("exiftool", "-ThumbnailImage", "-b", out)
        self.assertEqual(run("identify", "-format", "%wx%h", "jpg:-", data=thumbnail), b"120x160")
        (self.path / "t.jpg").write_bytes(thumbnail)
        small = run("convert", out, "-resize", "120x160!", self.path / "s.jpg")
        difference = run("convert", self.path / "t.jpg", self.path / "s.jpg", "-metric", "RMSE", "-compare", "-format",
                         "%[distortion]", "info:")
        self.assertLess(float(difference), 0.05, small)
        # None where the picture is no larger.
        self.assertNotIn("IFD1:ThumbnailImage", tags(self.convert("tiny.jpg", "--resize", "100x")))
        self.assertEqual(tags(self.convert("tiny.jpg", "--resize", "100x"))["ExifIFD:LensModel"], "Lens")

    def test_thumbnails_carry_the_same(self):
        out = self.path / "small.jpg"
        self.succeed("thumbnail", self.photo, out, "--size", "300x300")
        after = tags(out)
        self.assertEqual(run("identify", "-format", "%wx%h %r", out), b"300x200 DirectClass sRGB ")
        for key in ("GPS:GPSLatitude", "IPTC:Keywords", "XMP-dc:Subject", "Photoshop:URL", "ExifIFD:LensModel"):
            self.assertIn(key, after)
        self.assertEqual(run("exiftool", "-icc_profile", "-b", out), (self.path / "big.icc").read_bytes())
        png = self.path / "small.png"
        self.succeed("thumbnail", self.photo, png, "--size", "300x300")
        self.assertEqual(run("exiftool", "-icc_profile", "-b", png), (self.path / "big.icc").read_bytes())
        self.assertEqual(run("identify", "-format", "%[channels]", png), b"srgb")

    def test_strip_leaves_pixels_alone(self):
        for name in ("out.jpg", "out.png"):
            left = tags(self.convert(name, "--strip"))
            self.assertEqual([key for key in left if not key.startswith(("JFIF", "PNG", "Composite"))], [], name)

    def test_orientation_is_carried_told_or_applied(self):
        orientation_of = lambda file: int(run("identify", "-format", "%[EXIF:Orientation]", file))
        plain = self.photo.read_bytes()
        out, upright, theirs = (self.path / name for name in ("out.jpg", "upright.png", "theirs.png"))
        for orientation in range(1, 9):
            self.photo.write_bytes(replace_entry(plain, 0x112, 3, orientation))
            self.succeed("convert", "-f", self.photo, out)
            self.assertEqual(orientation_of(out), orientation)
            told = self.note("convert", "-f", self.photo, self.path / "out.bmp")
            self.assertEqual("orientation" in told, orientation != 1)
            self.succeed("convert", "-f", "--auto-orient", self.photo, out)
            self.assertEqual(orientation_of(out), 1)
            self.succeed("convert", "-f", "--auto-orient", "--strip", self.photo, upright)
            run("convert", self.photo, "-auto-orient", "-strip", theirs)
            distance = run("convert", upright, theirs, "-metric", "RMSE", "-compare", "-format", "%[distortion]", "info:")
            self.assertLess(float(distance), 0.01, orientation)
            # The box is for what is seen.
            self.succeed("thumbnail", "-f", "--auto-orient", self.photo, upright, "--size", "90x90")
            size = run("identify", "-format", "%wx%h", upright)
            self.assertEqual(size, b"60x90" if orientation >= 5 else b"90x60")

    def test_info_names_every_entry(self):
        text = self.succeed("info", "--metadata", self.photo)
        for part in ("EXIF", "Image input equipment manufacturer", "Maker", "1/250", "Lens", "IPTC", "Zürich", "lake, hill",
                     "XMP", "dc:title[x-default]", "dc:subject[2]", "image resources", "Copyright flag", "160 x 120",
                     "profile      test, Rgb"):
            self.assertIn(part, text)
        described = json.loads(self.succeed("info", "--json", "--metadata", self.photo))[0]
        self.assertEqual(described["frames"][0]["profile"]["description"], "test")
        metadata = described["metadata"]
        by_name = {entry["name"]: entry["value"] for entry in metadata["exif"]}
        self.assertEqual(by_name["Image input equipment manufacturer"], "Maker")
        self.assertEqual(by_name["Tag 0xA434"], "Lens")
        self.assertEqual({entry["name"]: entry["value"] for entry in metadata["iptc"]}["Keyword"], ["lake", "hill"])
        self.assertEqual(metadata["xmp"]["dc:title"], {"x-default": "A title"})
        self.assertEqual(metadata["xmp"]["dc:subject"], ["lake", "hill"])

    def test_broken_metadata_stops_no_pixels(self):
        data = self.photo.read_bytes()
        at = data.index(b"Exif\0\0") + 6
        broken = self.path / "broken.jpg"
        broken.write_bytes(data[:at] + b"XX" + data[at + 2:])
        out = self.path / "out.jpg"
        result = tool("convert", broken, out)
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertEqual(result.stderr.count("\n"), 1)
        self.assertIn("EXIF", result.stderr)
        self.assertIn("XMP-dc:Subject", tags(out))

    def test_a_terminal_is_safe_from_metadata(self):
        run("exiftool", "-q", "-overwrite_original", "-Artist=red\x1b[31m\x07", "-E", self.photo)
        self.assertNotIn("\x1b", self.succeed("info", "--metadata", self.photo))


if __name__ == "__main__":
    main("exiftool", "convert", "identify")
