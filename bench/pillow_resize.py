"""Times Pillow's resize on the sizes of bench_resize, one line per case in the same form."""

import time

from PIL import Image

SHAPES = [((4000, 3000), (800, 600)), ((4000, 3000), (1920, 1440)), ((800, 600), (1600, 1200))]
FORMATS = [("RGB8", "RGB"), ("RGBA8", "RGBA"), ("Gray8", "L")]
FILTERS = [("NEAREST", Image.NEAREST), ("BILINEAR", Image.BILINEAR), ("LANCZOS", Image.LANCZOS)]


def milliseconds(image, size, resample):
    best = float("inf")
    for _ in range(7):
        start = time.perf_counter()
        image.resize(size, resample)
        best = min(best, time.perf_counter() - start)
    return best * 1000


for source, target in SHAPES:
    noise = Image.effect_noise(source, 64)
    for name, mode in FORMATS:
        picture = noise if mode == "L" else Image.merge(mode, [noise] * len(mode))
        for label, resample in FILTERS:
            case = f"{source[0]}x{source[1]}_{target[0]}x{target[1]}/{name}/Pillow_{label}"
            print(f"{case:<52}{milliseconds(picture, target, resample):8.2f} ms")
