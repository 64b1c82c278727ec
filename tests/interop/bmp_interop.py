#!/usr/bin/env python3
"""BMP files of many kinds, made here, must decode to the pixels that ImageMagick finds; files that we write must decode
there to what was put in. Usage: bmp_interop.py RASTERLOOM"""
import pathlib
import random
import shutil
import struct
import subprocess
import sys
import tempfile

TOOL = sys.argv[1]
WIDTH, HEIGHT = 37, 11


def header(bits, pixels, palette=b"", height=HEIGHT, compression=0, info=40, masks=b""):
    """A file of the given parts. `info` 12 makes the short header."""
    if info == 12:
        body = struct.pack("<IHHHH", 12, WIDTH, height, 1, bits)
    else:
        body = struct.pack("<IiiHHIIiiII", info, WIDTH, height, 1, bits, compression, len(pixels), 2835, 2835,
                           len(palette) // 4 if bits <= 8 else 0, 0) + bytes(info - 40)
    offset = 14 + len(body) + len(masks) + len(palette)
    return struct.pack("<2sIHHI", b"BM", offset + len(pixels), 0, 0, offset) + body + masks + palette + pixels


def rows(bits, rng):
    """Random rows, padded to four bytes, the padding zero."""
    size = (WIDTH * bits + 7) // 8
    out = []
    for _ in range(HEIGHT):
        row = bytearray(rng.randrange(256) for _ in range(size))
        if WIDTH * bits % 8:
            row[-1] &= 0xFF << (8 - WIDTH * bits % 8) & 0xFF
        out.append(bytes(row) + bytes(-size % 4))
    return b"".join(out)


def palette(count, rng, entry=4):
    return b"".join(bytes(rng.randrange(256) for _ in range(3)) + bytes(entry - 3) for _ in range(count))


def rle8(rng):
    out = b""
    for _ in range(HEIGHT):
        out += bytes([20, rng.randrange(256)])                                   # a run
        out += bytes([0, 5]) + bytes(rng.randrange(256) for _ in range(5)) + b"\0"  # five literals and their padding
        out += bytes([12, rng.randrange(256)]) + b"\0\0"
    return out[:-2] + b"\0\1"


def rle4(rng):
    out = b""
    for _ in range(HEIGHT):
        out += bytes([21, rng.randrange(256)]) + bytes([0, 6]) + bytes(rng.randrange(256) for _ in range(3)) + b"\0"
        out += bytes([10, rng.randrange(256)]) + b"\0\0"
    return out[:-2] + b"\0\1"


def variants():
    rng = random.Random(7)
    for bits in (1, 4, 8):
        yield f"{bits} bits", header(bits, rows(bits, rng), palette(1 << bits, rng))
        yield f"{bits} bits, short header", header(bits, rows(bits, rng), palette(1 << bits, rng, 3), info=12)
        yield f"{bits} bits, top down", header(bits, rows(bits, rng), palette(1 << bits, rng), height=-HEIGHT)
    yield "8 bits, long header", header(8, rows(8, rng), palette(256, rng), info=108)
    yield "8 bits, short palette", header(8, bytes(b & 63 for b in rows(8, rng)), palette(64, rng))
    yield "24 bits", header(24, rows(24, rng))
    yield "24 bits, top down, long header", header(24, rows(24, rng), height=-HEIGHT, info=124)
    yield "32 bits", header(32, rows(32, rng))
    yield "RLE 8", header(8, rle8(rng), palette(256, rng), compression=1)
    yield "RLE 4", header(4, rle4(rng), palette(16, rng), compression=2)


def run(*arguments):
    return subprocess.run(arguments, check=True, stdout=subprocess.PIPE).stdout


def decode(path):
    """The pixels as an independent program sees them."""
    return run("convert", str(path), "-alpha", "off", "-depth", "8", "rgb:-")


def main():
    if not shutil.which("convert") or b"ImageMagick" not in subprocess.run(
            ["convert", "-version"], stdout=subprocess.PIPE, check=False).stdout:
        print("skipped: ImageMagick is not installed")
        return 77
    failures = 0
    with tempfile.TemporaryDirectory() as folder:
        source, result = pathlib.Path(folder, "in.bmp"), pathlib.Path(folder, "out.bmp")
        for name, data in variants():
            source.write_bytes(data)
            run(TOOL, "convert", "--force", str(source), str(result), "--pixel-format", "Format24bppRgb")
            same = decode(source) == decode(result)
            run(TOOL, "convert", "--force", str(source), str(result))  # in its own format
            same = same and decode(source) == decode(result)
            failures += not same
            print("ok  " if same else "FAIL", name)
        gray = header(24, b"".join(bytes([v, v, v] * WIDTH) + bytes(-3 * WIDTH % 4) for v in range(HEIGHT)))
        source.write_bytes(gray)
        run(TOOL, "convert", "--force", str(source), str(result), "--pixel-format", "Format8bppGrayScale")
        same = decode(source) == decode(result)
        failures += not same
        print("ok  " if same else "FAIL", "written gray")
    return 1 if failures else 0


sys.exit(main())
