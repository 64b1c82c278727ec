#!/usr/bin/env python3
"""EXIF tables against those of exiftool; blocks that we build, and blocks of exiftool that we read and write again, are
read by exiftool and exiv2 without a warning and with the values that went in. Usage: exif_interop.py EXIF_BLOCKS"""
import json
import pathlib
import shutil
import struct
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as ET

BLOCKS = sys.argv[1]
GROUPS = {0: "IFD0", 1: "IFD1", 2: "ExifIFD", 3: "GPS", 4: "InteropIFD"}
TYPES = {1: "int8u", 2: "string", 3: "int16u", 4: "int32u", 5: "rational64u", 7: "undef", 9: "int32s",
         10: "rational64s"}
ANY = 0xFFFFFFFF

# Names that exiftool has given its own word for.
EXIFTOOL_NAMES = {
    "DateTime": "ModifyDate", "JPEGInterchangeFormat": "ThumbnailOffset",
    "JPEGInterchangeFormatLength": "ThumbnailLength", "InteroperabilityIndex": "InteropIndex",
    "PixelXDimension": "ExifImageWidth", "PixelYDimension": "ExifImageHeight", "DateTimeDigitized": "CreateDate",
    "ISOSpeedRatings": "ISO", "OECF": "Opto-ElectricConvFactor", "ShutterSpeed": "ShutterSpeedValue",
    "ExposureBiasValue": "ExposureCompensation", "FocalLengthIn35mmFilm": "FocalLengthIn35mmFormat",
    "MakerNote": "MakerNoteApple", "FlashPixVersion": "FlashpixVersion"}
# exiftool writes these in the shorter or longer of two types that the standard allows, or not at all.
OTHER_TYPES = {"PixelXDimension": "int16u", "PixelYDimension": "int16u"}
POINTERS = {34665, 34853, 40965}
MOVING = {"Exif.Image.ExifTag", "Exif.Image.GPSTag", "Exif.Photo.InteroperabilityTag",
          "Exif.Thumbnail.JPEGInterchangeFormat"}
# What exif_blocks builds: by exiftool's name, and by exiv2's with type and count.
BUILT = {
    "IFD0:Make": "Maker é", "IFD0:Orientation": 6, "IFD0:XResolution": 300, "IFD0:ModifyDate": "2004:02:29 23:59:58",
    "ExifIFD:ExposureTime": 0.008, "ExifIFD:ISO": "100 200", "ExifIFD:ExifVersion": "0220",
    "ExifIFD:ComponentsConfiguration": "1 2 3 0", "ExifIFD:ExposureCompensation": -0.3333333333,
    "ExifIFD:ColorSpace": 1, "InteropIFD:InteropIndex": "R98", "GPS:GPSVersionID": "2 2 0 0",
    "GPS:GPSLatitudeRef": "N", "GPS:GPSLatitude": 48.1367611111111, "GPS:GPSDifferential": 1}
BUILT_EXIV2 = {
    "Exif.Image.Make": ("Ascii", 9, "Maker é"), "Exif.Image.DateTime": ("Ascii", 20, "2004:02:29 23:59:58"),
    "Exif.Photo.ISOSpeedRatings": ("Short", 2, "100 200"), "Exif.Photo.ExposureBiasValue": ("SRational", 1, "-1/3"),
    "Exif.Photo.PixelXDimension": ("Long", 1, "16"), "Exif.Iop.InteroperabilityIndex": ("Ascii", 4, "R98"),
    "Exif.GPSInfo.GPSVersionID": ("Byte", 4, "2 2 0 0"),
    "Exif.GPSInfo.GPSLatitude": ("Rational", 3, "48/1 8/1 1234/100")}

failures = 0
checks = 0


def check(good, *what):
    global failures, checks
    checks += 1
    if not good:
        failures += 1
        print("FAIL", *what)


def run(*arguments, **options):
    return subprocess.run(arguments, stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False, **options)


def read_tables():
    tags, words = [], []
    for line in run(BLOCKS, "table").stdout.decode().splitlines():
        kind, *fields = line.split("\t")
        if kind == "tag":
            tags.append((fields[0], *map(int, fields[1:])))
        else:
            words.append((*map(int, fields[:3]), fields[3]))
    return tags, words


def exiftool_tables():
    """All rows of exiftool: (group, tag) to a list of name, type, count and the values that have words."""
    rows = {}
    for option, tables in (("-EXIF:all", {"Exif::Main"}), ("-GPS:all", {"GPS::Main"})):
        for table in ET.fromstring(run("exiftool", "-listx", "-f", option).stdout).iter("table"):
            if table.get("name") not in tables:
                continue
            for tag in table.iter("tag"):
                values = {key.get("id") for key in tag.iter("key")}
                row = (tag.get("name"), tag.get("type"), tag.get("count"), values)
                rows.setdefault((tag.get("g1", table.get("g1")), int(tag.get("id"))), []).append(row)
    return rows


def plain(name, ifd):
    """The name without our prefixes."""
    rest = name[len("ExifThumbnail" if ifd == 1 else "Exif"):]
    return {"Width": "ImageWidth", "Height": "ImageHeight"}.get(rest, rest) if ifd == 1 else rest


def find_row(rows, name, ifd, tag):
    wanted = EXIFTOOL_NAMES.get(name, name)
    # A tag stands where exiftool would write it; it knows some of the main directory's in others only.
    for group in (GROUPS[ifd], "IFD0", "IFD1", "ExifIFD"):
        for row in rows.get((group, tag), []):
            if row[0].lower() == wanted.lower():
                return row
    return None


def test_tables():
    tags, words = read_tables()
    check(len(tags) == 32 + 32 + 56 + 31 + 1, "number of tags", len(tags))
    rows = exiftool_tables()
    checked = 0
    for full_name, ifd, tag, kind, count in tags:
        name = plain(full_name, ifd)
        if tag in POINTERS:
            continue  # exiftool lists them as directories
        row = find_row(rows, name, ifd, tag)
        check(row is not None, full_name, "is unknown to exiftool", [r for k, r in rows.items() if k[1] == tag])
        if row is None:
            continue
        _, their_type, their_count, _ = row
        if their_type not in (None, "?", "no"):
            check(OTHER_TYPES.get(name, TYPES[kind]) == their_type, full_name, "type", kind, their_type)
            checked += 1
        if their_count is not None and kind != 3:
            check(their_count == str(count) or count == ANY, full_name, "count", count, their_count)
    check(checked > 110, "types compared", checked)
    for ifd, tag, value, text in words:
        theirs = set()
        for group in (GROUPS[ifd], "IFD0", "IFD1", "ExifIFD"):
            for row in rows.get((group, tag), []):
                theirs |= row[3]
        is_text = ifd in (3, 4) and value > 31
        shown = value.to_bytes(4, "big").lstrip(b"\0").decode() if is_text else str(value)
        check(not theirs or shown in theirs, "word", ifd, tag, value, text)


def base_jpeg():
    """A picture without any metadata."""
    data = run("convert", "-size", "16x8", "gradient:red-blue", "-strip", "jpg:-").stdout
    while data[2:4] == b"\xff\xe0":
        data = data[:2] + data[4 + struct.unpack(">H", data[4:6])[0]:]
    return data


def with_exif(jpeg, payload):
    return jpeg[:2] + b"\xff\xe1" + struct.pack(">H", len(payload) + 2) + payload + jpeg[2:]


def take_exif(jpeg):
    at = 2
    while jpeg[at] == 0xFF and jpeg[at + 1] != 0xDA:
        size = struct.unpack(">H", jpeg[at + 2:at + 4])[0]
        if jpeg[at + 1] == 0xE1 and jpeg[at + 4:at + 10] == b"Exif\0\0":
            return jpeg[at + 10:at + 2 + size]
        at += 2 + size
    return None


def no_warnings(path, *what):
    told = run("exiftool", "-validate", "-warning", "-error", "-a", "-s", str(path)).stdout.decode().splitlines()
    told = [line for line in told if not line.startswith("Validate") or "OK" not in line]
    check(not told, *what, "exiftool warns:", told)
    result = run("exiv2", "-pa", str(path))
    check(result.returncode == 0 and not result.stderr, *what, "exiv2 warns:", result.stderr.decode()[:300])


def exiv2_values(path):
    found = {}
    for line in run("exiv2", "-PEkycv", str(path)).stdout.decode("utf-8", "replace").splitlines():
        parts = line.split(None, 3)
        found[parts[0]] = (parts[1], int(parts[2]), parts[3] if len(parts) > 3 else "")
    return found


def test_built(folder):
    for order in ("II", "MM"):
        payload, path = folder / "payload", folder / f"built-{order}.jpg"
        result = run(BLOCKS, "build", str(payload), order)
        check(result.returncode == 0, "build", result.stderr.decode())
        path.write_bytes(with_exif(base_jpeg(), payload.read_bytes()))
        no_warnings(path, "built", order)
        shown = json.loads(run("exiftool", "-j", "-n", "-G1", str(path)).stdout)[0]
        for name, value in BUILT.items():
            check(shown.get(name) == value, order, name, value, shown.get(name))
        shown = exiv2_values(path)
        for name, value in BUILT_EXIV2.items():
            check(shown.get(name) == value, order, name, value, shown.get(name))


def test_rewritten(folder):
    """A block of exiftool with a thumbnail and tags of newer standards, read and written by us."""
    thumbnail = folder / "thumbnail.jpg"
    thumbnail.write_bytes(run("convert", "-size", "8x8", "xc:green", "-strip", "jpg:-").stdout)
    for order in ("II", "MM"):
        path, block, payload = folder / f"theirs-{order}.jpg", folder / "block", folder / "payload"
        path.write_bytes(base_jpeg())
        result = run("exiftool", "-q", "-overwrite_original", f"-ExifByteOrder={order}", "-Make=Maker", "-Model=X 1",
                     "-XResolution=300", "-YResolution=300", "-ResolutionUnit=inches", "-YCbCrPositioning=1",
                     "-Orientation#=6", "-ModifyDate=2004:02:29 23:59:58", "-ExposureTime=1/125", "-FNumber=2.8",
                     "-ISO=100", "-LensModel=24-70", "-LensInfo=24 70 2.8 4", "-OffsetTime=+01:00",
                     "-ExposureCompensation=-0.33", "-UserComment=Grüße", "-GPSLatitude=48.1", "-GPSLatitudeRef=N",
                     "-GPSLongitude=11.5", "-GPSLongitudeRef=W", "-GPSAltitude=519", "-GPSAltitudeRef=0",
                     "-GPSHPositioningError=5", "-InteropIndex=R98", "-InteropVersion=0100",
                     "-ColorSpace#=1", "-ExifImageWidth=16", "-ExifImageHeight=8",
                     "-XPTitle=title", "-Copyright=One", f"-ThumbnailImage<={thumbnail}", str(path))
        check(result.returncode == 0, "exiftool", result.stderr)
        block.write_bytes(take_exif(path.read_bytes()))
        result = run(BLOCKS, "rewrite", str(block), str(payload))
        check(result.returncode == 0, "rewrite", result.stderr.decode())
        ours = folder / f"ours-{order}.jpg"
        ours.write_bytes(with_exif(base_jpeg(), payload.read_bytes()))
        no_warnings(ours, "rewritten", order)
        show = ("exiftool", "-j", "-n", "-G1", "-a", "-u", "-EXIF:all", "--ThumbnailOffset")
        first, second = (json.loads(run(*show, str(p)).stdout)[0] for p in (path, ours))
        first["SourceFile"] = second["SourceFile"]
        check(first == second and len(first) > 35, "rewritten", order, set(first.items()) ^ set(second.items()))
        check(run("exiftool", "-b", "-ThumbnailImage", str(ours)).stdout == thumbnail.read_bytes(), "thumbnail")
        before, after = ({name: value for name, value in exiv2_values(p).items() if name not in MOVING}
                         for p in (path, ours))
        check(before == after, "exiv2 sees a difference", order, set(before.items()) ^ set(after.items()))


def main():
    for program in ("exiftool", "exiv2", "convert"):
        if not shutil.which(program):
            print("skipped:", program, "is not installed")
            return 77
    test_tables()
    with tempfile.TemporaryDirectory() as name:
        test_built(pathlib.Path(name))
        test_rewritten(pathlib.Path(name))
    print(f"{checks} checks, {failures} failures")
    return 1 if failures else 0


sys.exit(main())
