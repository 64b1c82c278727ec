"""Times Pillow for bench_dithering: to a given palette without and with dithering, and to a palette of 256 colours of its
own with dithering.

Usage: pillow_dither.py PICTURE PALETTE; prints three times in seconds of processor time.
"""
import sys
import time

from PIL import Image

picture, palette = (Image.open(path) for path in sys.argv[1:3])
picture.load()
given = Image.new("P", (1, 1))
given.putpalette(palette.tobytes())


def seconds(work):
    start = time.process_time()
    work()
    return time.process_time() - start


def remap(entries, dither):
    picture.quantize(palette=entries, dither=dither)


print(min(seconds(lambda: remap(given, Image.Dither.NONE)) for _ in range(3)))
print(min(seconds(lambda: remap(given, Image.Dither.FLOYDSTEINBERG)) for _ in range(2)))
print(seconds(lambda: remap(picture.quantize(256, Image.Quantize.MEDIANCUT), Image.Dither.FLOYDSTEINBERG)))
