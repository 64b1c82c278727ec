"""Times how long Pillow takes to reduce a picture of raw pixels to 256 colours, for bench_quantizers.

Usage: pillow_quantize.py RGB|RGBA WIDTH HEIGHT FILE METHOD DITHER; prints the best of three runs in seconds. METHOD is
mediancut, fastoctree, or fixed (to a palette of 256 colours that is given by the picture's own median cut).
"""
import sys
import time

from PIL import Image

mode, width, height, path, method, dither = sys.argv[1:7]
with open(path, "rb") as file:
    image = Image.frombytes(mode, (int(width), int(height)), file.read())
dithering = Image.Dither.FLOYDSTEINBERG if dither == "fs" else Image.Dither.NONE
palette = image.quantize(256, Image.Quantize.MEDIANCUT, dither=Image.Dither.NONE) if method == "fixed" else None
methods = {"mediancut": Image.Quantize.MEDIANCUT, "fastoctree": Image.Quantize.FASTOCTREE}


def reduce():
    if palette is not None:
        return image.quantize(palette=palette, dither=dithering)
    reduced = image.quantize(256, methods[method], dither=Image.Dither.NONE)
    # With its own palettes dithering is a second step there.
    return image.quantize(palette=reduced, dither=dithering) if dither == "fs" else reduced


best = 1e9
for _ in range(3):
    start = time.perf_counter()
    reduce()
    best = min(best, time.perf_counter() - start)
print(best)
