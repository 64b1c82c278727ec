#!/usr/bin/env python3
"""Metadata blocks that we write, in the least files around them, must be read by exiftool and exiv2 without a word of
warning and with the values that were put in; our tables must agree with exiftool's.
Usage: metadata_blocks.py METADATA_BLOCKS HEADER_OF_XMP_NAMES"""
import json
import pathlib
import re
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest
import xml.etree.ElementTree as ElementTree

PROGRAM, XMP_NAMES = sys.argv[1], pathlib.Path(sys.argv[2])

# One gray pixel, without any application segment.
JPEG_START = b"\xff\xd8"
JPEG_REST = bytes.fromhex(
    "ffdb004300" + "01" * 64 + "ffc0000b080001000101011100"
    "ffc4001400010000000000000000000000000000000" "4" "ffc40014100100000000000000000000000000000000"
    "ffda0008010100003f003fffd9")

IPTC = [("205", "Lake"), ("20a", "5"), ("20f", "ART"), ("214", "Nature"), ("214", "Water"), ("219", "lake"),
        ("219", "alps"),
        ("228", "None at all"), ("237", "20240229"), ("250", "Jörg Müller"), ("255", "Staff"), ("25a", "Zürich"),
        ("25f", "ZH"), ("265", "Schweiz"), ("267", "ref-1"), ("269", "Still water"), ("26e", "Agency"),
        ("273", "Archive"), ("274", "© 2024"), ("278", "A “quoted” caption – with dashes"), ("27a", "jm")]
# Where exiftool and exiv2 have other words than our names.
EXIFTOOL_WORDS = {"SupplementaryCategory": "SupplementalCategories", "Keyword": "Keywords", "State": "Province-State",
                  "Country": "Country-PrimaryLocationName", "Caption": "Caption-Abstract", "Writer": "Writer-Editor",
                  "Byline": "By-line", "BylineTitle": "By-lineTitle"}
EXIV2_WORDS = {"Keyword": "Keywords", "SupplementaryCategory": "SuppCategory", "State": "ProvinceState",
               "Country": "CountryName", "OriginalTransmissionReference": "TransmissionReference",
               "CopyrightNotice": "Copyright"}
XMP = [("value", "xmp:CreatorTool", "Tool <1> & \"more\""), ("value", "xmp:Rating", "3"),
       ("value", "photoshop:City", "Zürich 漢字 😀"), ("bag", "dc:subject", "lake"), ("bag", "dc:subject", "two  spaces"),
       ("seq", "dc:creator", "Ann"), ("seq", "dc:creator", "Bob"), ("lang", "dc:title", "Der See", "de-ch"),
       ("lang", "dc:title", "The lake", "x-default"), ("field", "xmpMM:DerivedFrom", "doc:1", "stRef:documentID"),
       ("field", "xmpMM:DerivedFrom", "inst:1", "stRef:instanceID"), ("value", "pdfx:Note", "Red"),
       ("qualifier", "pdfx:Note", "why", "xmpidq:Scheme")]


def run(*command, data=None):
    return subprocess.run([str(part) for part in command], input=data, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                          check=False)


def block(kind, lines):
    text = "".join("\t".join(line) + "\n" for line in lines)
    result = run(PROGRAM, kind, data=text.encode())
    if result.returncode != 0:
        raise AssertionError(result.stderr.decode())
    return result.stdout


def segment(marker, content):
    return struct.pack(">BBH", 0xFF, marker, len(content) + 2) + content


def jpeg(resources=b"", xmp=b""):
    return (JPEG_START + (segment(0xE1, b"http://ns.adobe.com/xap/1.0/\0" + xmp) if xmp else b"")
            + (segment(0xED, b"Photoshop 3.0\0" + resources) if resources else b"") + JPEG_REST)


def tiff(iptc, resources, xmp):
    """One gray pixel at 72 dpi and the three blocks."""
    dpi = struct.pack("<II", 72, 1)
    iptc += bytes(-len(iptc) % 4)
    blocks = [(282, 5, 1, dpi), (283, 5, 1, dpi), (33723, 4, len(iptc) // 4, iptc),
              (34377, 1, len(resources), resources), (700, 1, len(xmp), xmp)]
    shorts = {256: 1, 257: 1, 258: 8, 259: 1, 262: 1, 273: 8, 277: 1, 278: 1, 279: 1, 296: 2}
    entries = [struct.pack("<HHIHH", tag, 3, 1, value, 0) for tag, value in shorts.items()]
    body, offset = b"", 10 + 2 + 12 * (len(shorts) + len(blocks)) + 4
    for tag, kind, count, data in blocks:
        entries.append(struct.pack("<HHII", tag, kind, count, offset + len(body)))
        body += data + bytes(len(data) % 2)
    entries.sort(key=lambda entry: struct.unpack("<H", entry[:2]))
    return (struct.pack("<2sHI", b"II", 42, 10) + b"\x80\0" + struct.pack("<H", len(entries)) + b"".join(entries)
            + bytes(4) + body)


def psd(resources):
    header = struct.pack(">4sH6xHIIHH", b"8BPS", 1, 1, 1, 1, 8, 1)
    return header + struct.pack(">I", 0) + struct.pack(">I", len(resources)) + resources + bytes(4) + b"\0\0\x80"


def exiftool(path, group):
    """The tags of a group by name; fails on any complaint about the structure."""
    result = run("exiftool", "-j", "-a", "-charset", "iptc=Latin", "-charset", "photoshop=Latin", "-validate",
                 "-warning", "-error", f"-{group}:all", path)
    tags = json.loads(result.stdout)[0]
    complaints = [tags[name] for name in ("Warning", "Error") if name in tags] + result.stderr.decode().splitlines()
    if complaints:
        raise AssertionError(f"{path.name}: {complaints}")
    return tags


def exiv2(path, option, encoding="utf-8"):
    """The values by key, in their order."""
    result = run("exiv2", option, path)
    if result.stderr:
        raise AssertionError(f"{path.name}: {result.stderr}")
    values = {}
    for line in result.stdout.decode(encoding).splitlines():
        key, _, _, value = re.match(r"(\S+)\s+(\S+)\s+(\d+)\s*(.*)", line).groups()
        values.setdefault(key, []).append(value)
    return values


class MetadataBlocks(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory()
        cls.root = pathlib.Path(cls.folder.name)
        cls.tables = [line.split("\t") for line in run(PROGRAM, "tables").stdout.decode().splitlines()]
        cls.names = {int(line[1]): line[2][len("Iptc"):] for line in cls.tables if line[0] == "iptc"}

    @classmethod
    def tearDownClass(cls):
        cls.folder.cleanup()

    def file(self, name, content):
        path = self.root / name
        path.write_bytes(content)
        return path

    def expected_iptc(self):
        values = {}
        for key, text in IPTC:
            values.setdefault(self.names[int(key, 16)], []).append(text)
        return values

    def check_iptc(self, path):
        tags = exiftool(path, "iptc")
        for name, texts in self.expected_iptc().items():
            found = tags[EXIFTOOL_WORDS.get(name, name)]
            found = found if isinstance(found, list) else [found]
            if name == "DateCreated":
                found = [date.replace(":", "") for date in found]
            if name == "Urgency":
                found = [urgency[:1] if isinstance(urgency, str) else str(urgency) for urgency in found]
            self.assertEqual([str(value) for value in found], texts, f"{path.name} {name}")

    def check_exiv2_iptc(self, path, encoding):
        found = {key.rsplit(".", 1)[1]: texts for key, texts in exiv2(path, "-PIkycv", encoding).items()}
        for name, texts in self.expected_iptc().items():
            self.assertEqual(found[EXIV2_WORDS.get(name, name)],
                             ["2024-02-29"] if name == "DateCreated" else texts, f"{path.name} {name}")

    def test_iptc(self):
        for name, declaration, encoding in (("ansi", [], "cp1252"), ("utf8", [("15a", "\x1b%G")], "utf-8")):
            iptc = block("iptc", declaration + IPTC)
            resources = block("resources", [("404", "", iptc.hex())])
            for path in (self.file(f"iptc-{name}.jpg", jpeg(resources)), self.file(f"iptc-{name}.psd", psd(resources))):
                self.check_iptc(path)
                self.check_exiv2_iptc(path, encoding)

    def test_resources(self):
        iptc = block("iptc", IPTC)
        values = [("3ed", "", "00480000" "00010001" "00480000" "00010002"), ("404", "", iptc.hex()),
                  ("40b", "an odd name", b"http://example.org/".hex()), ("40a", "even", "01"), ("2710", "Ä", "00ff00")]
        resources = block("resources", values)
        others = block("resources", [value for value in values if value[0] != "404"])
        for path in (self.file("resources.jpg", jpeg(resources)), self.file("resources.psd", psd(resources)),
                     self.file("resources.tif", tiff(iptc, others, block("xmp", XMP)))):
            tags = exiftool(path, "photoshop")
            self.assertEqual((tags["XResolution"], tags["YResolution"], tags["DisplayedUnitsY"]), (72, 72, "inches"))
            self.assertEqual((tags["URL"], tags["CopyrightFlag"]), ("http://example.org/", True))
            self.check_iptc(path)
        self.check_xmp(self.root / "resources.tif")
        # Taken apart by exiftool's list of blocks: numbers, names and sizes.
        listing = run("exiftool", "-v3", self.root / "resources.psd").stdout.decode(errors="replace")
        for number, name, data in values:
            self.assertRegex(listing, rf"(?i)0x0*{number}\b.*?{len(data) // 2} bytes")
            self.assertTrue(name == "" or name == "Ä" or name in listing)

    def check_xmp(self, path):
        tags = exiftool(path, "xmp")
        self.assertEqual(tags["CreatorTool"], 'Tool <1> & "more"')
        self.assertEqual(tags["City"], "Zürich 漢字 😀")
        self.assertEqual(tags["Subject"], ["lake", "two  spaces"])
        self.assertEqual(tags["Creator"], ["Ann", "Bob"])
        self.assertEqual((tags["Title"], tags["Title-de-CH"]), ("The lake", "Der See"))
        self.assertEqual((tags["DerivedFromDocumentID"], tags["DerivedFromInstanceID"]), ("doc:1", "inst:1"))
        values = exiv2(path, "-PXkycv")
        self.assertEqual(values["Xmp.xmp.CreatorTool"], ['Tool <1> & "more"'])
        self.assertEqual(values["Xmp.photoshop.City"], ["Zürich 漢字 😀"])
        self.assertEqual(values["Xmp.dc.subject"], ["lake, two  spaces"])
        self.assertEqual(values["Xmp.dc.creator"], ["Ann, Bob"])
        self.assertEqual(values["Xmp.dc.title"], ['lang="x-default" The lake, lang="de-CH" Der See'])
        self.assertEqual(values["Xmp.xmpMM.DerivedFrom/stRef:documentID"], ["doc:1"])
        self.assertEqual(values["Xmp.pdfx.Note/?xmpidq:Scheme"], ["why"])

    def test_xmp(self):
        packet = block("xmp", XMP)
        ElementTree.fromstring(packet)
        self.check_xmp(self.file("xmp.jpg", jpeg(xmp=packet)))
        empty = exiftool(self.file("empty.jpg", jpeg(xmp=block("xmp", []))), "xmp")
        self.assertEqual({name for name in empty} - {"SourceFile", "Validate"}, {"XMPToolkit"})

    def test_tables(self):
        lists = {}
        for group in ("IPTC", "XMP"):
            lists[group] = ElementTree.fromstring(run("exiftool", "-listx", f"-{group}:all").stdout)
        record = lists["IPTC"].find("table[@name='IPTC::ApplicationRecord']")
        by_number = {int(tag.get("id")): tag.get("name") for tag in record.iter("tag")}
        self.assertEqual(len(self.names), 19)
        for key, name in self.names.items():
            self.assertEqual(key >> 8, 2)
            self.assertEqual(by_number[key & 0xFF], EXIFTOOL_WORDS.get(name, name))
        known = {}
        for table in lists["XMP"].iter("table"):
            for tag in table.iter("tag"):
                group = tag.get("g1") or table.get("g1") or ""
                known.setdefault(group.replace("XMP-", ""), set()).add(tag.get("id"))
        names = re.findall(r'"(\w+):(\w+)"', XMP_NAMES.read_text())
        self.assertEqual(len(names), 272)
        self.assertEqual([name for name in names if name[1] not in known.get(name[0], ())],
                         [("xmpidq", "Scheme")])  # a qualifier, of which that list has none

    def test_namespaces(self):
        script = 'print "$_ $Image::ExifTool::XMP::nsURI{$_}\n" for keys %Image::ExifTool::XMP::nsURI'
        listed = dict(line.split(" ", 1) for line in
                      run("perl", "-MImage::ExifTool::XMP", "-e", script).stdout.decode().splitlines())
        ours = {line[1]: line[2] for line in self.tables if line[0] == "namespace"}
        both = ours.keys() & listed.keys()
        self.assertGreater(len(both), 35)
        self.assertEqual({prefix: ours[prefix] for prefix in both}, {prefix: listed[prefix] for prefix in both})


if __name__ == "__main__":
    if not (shutil.which("exiftool") and shutil.which("exiv2")):
        print("exiftool or exiv2 is not installed")
        sys.exit(77)
    unittest.main(argv=[sys.argv[0]], verbosity=2)
