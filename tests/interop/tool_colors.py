#!/usr/bin/env python3
"""Palettes, transparency and profiles of the program, judged by ImageMagick. Usage: tool_colors.py RASTERLOOM PICTURE.bmp"""
import json
import re

import tool_profiles
from tool_support import PICTURE, ToolCase, main, run, tool


def facts(file):
    """Type, depth and number of colours, as ImageMagick sees them."""
    return run("identify", "-format", "%[type] %z %k", file).decode().split()


def distance(one, other):
    """Root mean square difference, 0 to 1."""
    return float(run("convert", one, other, "-metric", "RMSE", "-compare", "-format", "%[distortion]", "info:"))


def pixel(file, x, y):
    """Red, green, blue and alpha, 0 to 255."""
    text = run("convert", file, "-depth", "8", "-format", f"%[fx:p{{{x},{y}}}.r*255] %[fx:p{{{x},{y}}}.g*255] "
               f"%[fx:p{{{x},{y}}}.b*255] %[fx:p{{{x},{y}}}.a*255]", "info:").decode()
    return tuple(round(float(value)) for value in text.split())


class ColorsTest(ToolCase):
    def convert(self, *arguments, name="out.png", picture=PICTURE):
        out = self.path / name
        self.succeed("convert", "-f", picture, out, *arguments)
        return out

    def info(self, file):
        return json.loads(self.succeed("info", "--json", file))[0]["frames"][0]

    def test_palettes_by_number_name_and_file(self):
        for palette, most, pixels in (("16", 16, "Format4bppIndexed"), ("17", 17, "Format8bppIndexed"),
                                      ("2", 2, "Format4bppIndexed"), ("websafe", 216, "Format8bppIndexed"),
                                      ("windows", 256, "Format8bppIndexed"), ("mac", 256, "Format8bppIndexed"),
                                      ("gray", 256, "Format8bppIndexed"), ("bicolor", 2, "Format1bppIndexed")):
            out = self.convert("--palette", palette)
            self.assertLessEqual(int(facts(out)[2]), most, palette)
            frame = self.info(out)
            self.assertIn(frame["palette"]["entries"], range(2, 257))
            self.assertEqual(frame["pixelFormat"], pixels)
            self.assertEqual(frame["palette"]["gray"], palette in ("gray", "bicolor"))
        colors = run("convert", self.convert("--palette", "websafe"), "-depth", "8", "-unique-colors", "txt:").decode()
        for red, green, blue in re.findall(r"\((\d+),(\d+),(\d+)", colors):
            self.assertEqual({int(red) % 51, int(green) % 51, int(blue) % 51}, {0})
        # The palette of a file, whether it is one or only has few colours.
        own = self.path / "own.png"
        for kind in ("png8:", "png24:"):
            run("convert", "-size", "3x1", "xc:#102030", "xc:#D0C0B0", "xc:#808080", "+append", kind + str(own))
            out = self.convert("--palette", own, "--dither", "None")
            unique = run("convert", out, "-depth", "8", "-unique-colors", "txt:").decode()
            self.assertLessEqual(set(re.findall("#[0-9A-F]{6}", unique)), {"#102030", "#D0C0B0", "#808080"})
            self.assertIn("3 entries", self.succeed("info", out))

    def test_choices_about_palettes(self):
        plain = self.convert("--palette", "8", "--dither", "None", name="plain.png")
        dithered = self.convert("--palette", "8", "--dither", "Jarvis", name="dithered.png")
        half = self.convert("--palette", "8", "--dither", "Jarvis:50", name="half.png")
        blurred = [run("convert", file, "-blur", "0x3", self.path / f"{index}.png") or self.path / f"{index}.png"
                   for index, file in enumerate((PICTURE, plain, dithered, half))]
        self.assertLess(distance(blurred[0], blurred[2]), distance(blurred[0], blurred[1]))
        self.assertGreater(distance(half, dithered), 0)
        self.assertGreater(distance(half, plain), 0)
        octree = self.convert("--palette", "8", "--dither", "None", "--quantizer", "octree", name="octree.png")
        self.assertGreater(distance(octree, plain), 0)
        # An indexed picture gets the palette as well.
        self.assertEqual(self.info(self.convert("--palette", "4", picture=dithered))["palette"]["entries"], 4)
        again = self.convert("--pixel-format", "8bppIndexed", "--palette", "100", picture=self.convert("--palette", "200"))
        self.assertLess(distance(again, PICTURE), 0.05)

    def test_thumbnails_have_the_colours_of_their_picture(self):
        indexed = self.convert("--palette", "16", name="indexed.png")
        gray = self.convert("--pixel-format", "8bppGrayScale", name="gray.png")
        clear = self.path / "clear.png"
        run("convert", indexed, "-transparent", run("convert", indexed, "-format", "%[pixel:p{0,0}]", "info:").decode(),
            "png8:" + str(clear))
        for picture, pixels in ((PICTURE, "Format24bppRgb"), (indexed, "Format24bppRgb"), (gray, "Format8bppGrayScale"),
                                (clear, "Format32bppArgb")):
            out = self.path / "thumbnail.png"
            self.succeed("thumbnail", "-f", picture, out, "--size", "50x50")
            self.assertEqual(self.info(out)["pixelFormat"], pixels, picture)

    def test_what_cannot_be_meant(self):
        for arguments in (("--palette", "1"), ("--palette", "257"), ("--palette", "nothing.png"), ("--palette", ""),
                          ("--palette", __file__), ("--dither", "Jarvis:101"), ("--dither", "none of them"),
                          ("--palette", "16", "--pixel-format", "Format24bppRgb"), ("--quantizer", "best"),
                          ("--alpha-threshold", "0"), ("--alpha-threshold", "9", "--palette", "websafe"),
                          ("--profile-in", PICTURE), ("--profile-out", "none.icc"), ("--profile-proof", "srgb"),
                          ("--intent", "vivid"), ("--bpc", "--intent", "perceptual", "--profile-out", "srgb")):
            result = tool("convert", PICTURE, self.path / "out.png", *arguments)
            self.assertEqual(result.returncode, 2, (arguments, result.stderr))
            self.assertNotEqual(result.stderr, "")
        self.assertEqual(list(self.path.iterdir()), [])

    def test_transparency(self):
        source = self.path / "alpha.png"
        run("convert", "-size", "64x64", "xc:none", "-fill", "rgba(200,40,40,0.5)", "-draw", "rectangle 0,0 31,63",
            "-fill", "rgba(10,200,30,1)", "-draw", "rectangle 32,0 63,31", "png32:" + str(source))
        # Not transparent: the background shows through, half of it under the first rectangle.
        self.assertEqual(pixel(self.convert("--quality", "100", name="out.jpg", picture=source), 50, 50)[:3],
                         (255, 255, 255))
        flat = self.convert("--background", "#0000FF", "--pixel-format", "24bppRgb", picture=source)
        self.assertEqual(pixel(flat, 50, 50), (0, 0, 255, 255))
        for got, expected in zip(pixel(flat, 5, 5), (100, 20, 148, 255)):
            self.assertLessEqual(abs(got - expected), 1)
        # Made palettes have alpha, unless a background is given.
        indexed = self.convert("--palette", "16", "--dither", "None", name="indexed.png", picture=source)
        self.assertEqual(pixel(indexed, 50, 50)[3], 0)
        self.assertLessEqual(abs(pixel(indexed, 5, 5)[3] - 128), 2)
        self.assertIn("with alpha", self.succeed("info", indexed))
        keyed = self.convert("--alpha-threshold", "100", "--dither", "None", picture=source)
        self.assertEqual((pixel(keyed, 50, 50)[3], pixel(keyed, 5, 5)[3]), (0, 255))
        solid = self.convert("--palette", "16", "--background", "#0000FF", "--dither", "None", picture=source)
        self.assertEqual(pixel(solid, 50, 50), (0, 0, 255, 255))
        # A format without transparent entries shows the background in them.
        bmp = self.convert(name="out.bmp", picture=indexed)
        self.assertEqual(pixel(bmp, 50, 50)[:3], (255, 255, 255))
        for got, expected in zip(pixel(bmp, 5, 5), (228, 148, 148)):
            self.assertLessEqual(abs(got - expected), 3)

    def test_profiles(self):
        wide, narrow = self.path / "wide.icc", self.path / "narrow.icc"
        wide.write_bytes(tool_profiles.rgb("wide", tool_profiles.WIDE, 1.8))
        narrow.write_bytes(tool_profiles.rgb("narrow", tool_profiles.SRGB))
        # Assigned, not converted.
        assigned = self.convert("--profile-in", wide, name="assigned.png")
        self.assertEqual(distance(assigned, PICTURE), 0)
        self.assertEqual(run("convert", assigned, "icc:-"), wide.read_bytes())
        # Converted as ImageMagick does with the same library.
        theirs = self.path / "theirs.png"
        for intent, name in (("relative", "Relative"), ("perceptual", "Perceptual")):
            mine = self.convert("--profile-out", narrow, "--intent", intent, picture=assigned)
            run("convert", assigned, "-intent", name, "+black-point-compensation",
                "-profile", narrow, theirs)
            self.assertLess(distance(mine, theirs), 0.004)
            self.assertGreater(distance(mine, assigned), 0.01)
            self.assertEqual(run("convert", mine, "icc:-"), narrow.read_bytes())
        # Both at once, and in the thumbnail command.
        self.assertEqual(distance(self.convert("--profile-in", wide, "--profile-out", narrow, "--intent", "perceptual"),
                                  self.path / "out.png"), 0)
        small = self.path / "small.png"
        self.succeed("thumbnail", assigned, small, "--size", "100x", "--profile-out", narrow)
        self.assertEqual(self.info(small)["profile"],
                         {"description": "narrow", "colorSpace": "Rgb", "class": self.info(small)["profile"]["class"]})
        # A proof on a gray device leaves nothing but gray.
        gray = self.path / "gray.icc"
        gray.write_bytes(tool_profiles.gray("gray", 2.2))
        self.assertEqual(self.info(self.convert("--profile-out", gray))["pixelFormat"], "Format8bppGrayScale")
        # sRGB of the system for pictures that have none.
        self.assertIn("Rgb", self.info(self.convert("--profile-out", "srgb"))["profile"]["colorSpace"])

    def test_a_profile_leads_to_rgb(self):
        # Half of linear gray is 0.5020 ** (1 / 2.4) * 1.055 - 0.055 of sRGB: 188 of 255.
        linear, source = self.path / "linear.icc", self.path / "half.png"
        linear.write_bytes(tool_profiles.gray("linear", 1.0))
        run("convert", "-size", "4x4", "xc:gray(128)", "-colorspace", "Gray", "-strip", "-depth", "8", "-define", "png:color-type=0",
            source)
        self.succeed("convert", source, self.path / "tagged.png", "--profile-in", linear)
        for picture, arguments, expected in ((source, (), 128), (self.path / "tagged.png", (), 188)):
            out = self.convert("--pixel-format", "24bppRgb", *arguments, picture=picture)
            self.assertLessEqual(abs(pixel(out, 1, 1)[0] - expected), 1, picture)

    def test_profiles_stay_with_the_pixels(self):
        wide = self.path / "wide.icc"
        wide.write_bytes(tool_profiles.rgb("wide", tool_profiles.WIDE, 1.8))
        for arguments in (("--palette", "16"), ("--resize", "50%"), ("--rotate", "10"), ("--crop", "-5,0,50,50"),
                          ("--rotate-flip", "Rotate90FlipNone"), ("--pixel-format", "48bppRgb"),
                          ("--pixel-format", "8bppIndexed", "--resize", "50%"), ("--pixel-format", "64bppArgb")):
            for name in ("out.png", "out.jpg"):
                out = self.convert("--profile-in", wide, *arguments, name=name)
                self.assertEqual(run("convert", out, "icc:-"), wide.read_bytes(), (arguments, name))
        out = self.convert("--profile-in", wide, "--pixel-format", "Format8bppGrayScale")
        self.assertNotIn("profile", self.info(out))


if __name__ == "__main__":
    main("convert", "identify")
