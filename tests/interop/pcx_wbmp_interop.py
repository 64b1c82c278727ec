#!/usr/bin/env python3
"""PCX and WBMP files against netpbm. Usage: pcx_wbmp_interop.py RASTERLOOM PICTURE.bmp"""
import pathlib
import random
import shutil
import struct
import subprocess
import sys
import tempfile
import unittest

TOOL, PICTURE = sys.argv[1], sys.argv[2]


def run(*command, data=None):
    return subprocess.run([str(part) for part in command], input=data, check=True, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL).stdout


def pack(line):
    """Runs and single bytes of one line."""
    out, at = b"", 0
    while at < len(line):
        end = at + 1
        while end < len(line) and end - at < 63 and line[end] == line[at]:
            end += 1
        if end - at > 1 or line[at] >= 0xC0:
            out += bytes([0xC0 | (end - at)])
        out += line[at:at + 1]
        at = end
    return out


def pcx(planes, bits, width, height, rng):
    """Random pixels in short runs, random colours, padded lines."""
    size = (width * bits + 7) // 8
    size += size % 2
    values = (0, 255, 0xC0, 0x3F, 0xA5)
    data = b"".join(pack(bytes(rng.choice(values) if rng.random() < 0.7 else rng.randrange(256) for _ in range(size)))
                    for _ in range(height * planes))
    palette = bytes(rng.randrange(256) for _ in range(48))
    header = struct.pack("<4B6H48s2B2H", 10, 5, 1, bits, 11, 7, 10 + width, 6 + height, 300, 300, palette, 0, planes,
                         size, 1)
    tail = b"\x0c" + bytes(rng.randrange(256) for _ in range(768)) if planes * bits == 8 else b""
    return header + bytes(128 - len(header)) + data + tail


class PcxTest(unittest.TestCase):
    def test_all_planes_and_bits(self):
        rng = random.Random(5)
        with tempfile.TemporaryDirectory() as folder:
            source, result = pathlib.Path(folder, "in.pcx"), pathlib.Path(folder, "out.bmp")
            for planes, bits in ((1, 1), (1, 2), (1, 4), (1, 8), (2, 1), (3, 1), (4, 1), (3, 8)):
                for width, height in ((1, 1), (7, 3), (8, 2), (61, 43), (257, 9)):
                    source.write_bytes(pcx(planes, bits, width, height, rng))
                    run(TOOL, "convert", "--force", source, result, "--pixel-format", "Format24bppRgb")
                    self.assertEqual(run("bmptopnm", "-quiet", result), run("pcxtoppm", "-quiet", source),
                                     (planes, bits, width, height))


class WbmpTest(unittest.TestCase):
    def test_both_ways(self):
        with tempfile.TemporaryDirectory() as folder:
            bmp, wbmp, again = (pathlib.Path(folder, name) for name in ("in.bmp", "out.wbmp", "again.bmp"))
            for size in ("1x1", "7x5", "127x20", "128x20", "300x201"):
                run(TOOL, "convert", "--force", PICTURE, bmp, "--resize", size, "--pixel-format", "Format1bppIndexed")
                expected = run("bmptopnm", "-quiet", bmp)
                run(TOOL, "convert", "--force", bmp, wbmp)
                self.assertEqual(run("wbmptopbm", wbmp), expected, size)
                wbmp.write_bytes(run("pbmtowbmp", data=expected))
                run(TOOL, "convert", "--force", wbmp, again)
                self.assertEqual(run("bmptopnm", "-quiet", again), expected, size)


if __name__ == "__main__":
    if not all(shutil.which(program) for program in ("bmptopnm", "pcxtoppm", "wbmptopbm", "pbmtowbmp")):
        sys.exit(77)
    unittest.main(argv=[sys.argv[0]], verbosity=2)
