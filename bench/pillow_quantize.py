"""Times how long Pillow takes to reduce a picture of raw pixels to 256 colours without dithering, for bench_quantizers.

Usage: pillow_quantize.py RGB|RGBA WIDTH HEIGHT FILE mediancut|fastoctree; prints the best of three runs (of
one, with mediancut) in seconds of processor time.
"""
import sys
import time

from PIL import Image

mode, width, height, path, method = sys.argv[1:6]
with open(path, "rb") as file:
    image = Image.frombytes(mode, (int(width), int(height)), file.read())
methods = {"mediancut": Image.Quantize.MEDIANCUT, "fastoctree": Image.Quantize.FASTOCTREE}
best = 1e9
for _ in range(1 if method == "mediancut" else 3):
    start = time.process_time()
    image.quantize(256, methods[method], dither=Image.Dither.NONE)
    best = min(best, time.process_time() - start)
print(best)
