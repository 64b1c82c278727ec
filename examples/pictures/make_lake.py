#!/usr/bin/env python3
"""Renders the picture that ships with the project: a lake at dusk, drawn from arithmetic alone.

Usage: make_lake.py OUT.bmp
"""
import math
import random
import struct
import sys

WIDTH, HEIGHT, HORIZON = 720, 480, 290


def ridge(seed, roughness):
    """A mountain line: sums of sines with random phases, one height per column."""
    rng = random.Random(seed)
    waves = [(rng.uniform(0.6, 1.4) * roughness / (k ** 1.2), k * 2 * math.pi / WIDTH, rng.uniform(0, 6.28))
             for k in range(1, 60)]
    return [sum(a * math.sin(f * x + p) for a, f, p in waves) for x in range(WIDTH)]


def mix(a, b, t):
    t = min(1.0, max(0.0, t))
    return tuple(p + (q - p) * t for p, q in zip(a, b))


def sky(x, y):
    base = mix((38, 52, 110), (252, 176, 98), (y / HORIZON) ** 1.5)
    sun = math.hypot(x - 500, y - 215)
    glow = mix(base, (255, 236, 190), max(0.0, 1 - sun / 210) ** 2)
    return (255, 246, 214) if sun < 24 else mix((255, 244, 205), glow, (sun - 24) / 5) if sun < 29 else glow


def main():
    far, near = ridge(3, 22), ridge(11, 34)
    rng = random.Random(5)
    trees = [(rng.randrange(WIDTH), rng.uniform(14, 42)) for _ in range(150)]
    shore = [HORIZON - 6 - 4 * math.sin(x / 60) for x in range(WIDTH)]
    for centre, height in trees:
        for dx in range(-9, 10):
            x = centre + dx
            if 0 <= x < WIDTH and not 300 < centre < 560:
                shore[x] = min(shore[x], HORIZON - height * (1 - abs(dx) / 9) - 5 - 3 * ((abs(dx) * 7) % 3))

    def land(x, y):
        if y >= shore[x]:
            return mix((16, 26, 30), (30, 44, 40), (y - shore[x]) / 30)
        if y >= 235 - near[x]:
            return mix((56, 58, 92), (110, 92, 104), (y - 190) / 110)
        if y >= 190 - far[x]:
            return mix((98, 96, 142), (188, 142, 132), (y - 140) / 140)
        return sky(x, y)

    rows = []
    above = [[land(x, y) for x in range(WIDTH)] for y in range(HORIZON)]
    for y in range(HEIGHT):
        row = []
        for x in range(WIDTH):
            if y < HORIZON:
                colour = above[y][x]
            else:
                depth = y - HORIZON + 1
                ripple = math.sin(depth * 0.9 + 14 * math.sin(x / 47 + depth / 19)) * depth / 34
                sx = min(WIDTH - 1, max(0, int(x + 3 * ripple)))
                sy = min(HORIZON - 1, max(0, int(HORIZON - 1 - depth * 1.35 + 2 * ripple)))
                colour = mix(above[sy][sx], (20, 34, 66), 0.25 + depth / 480)
                colour = mix(colour, (255, 226, 170), max(0.0, ripple - 2.2) / 14)
            row.append(bytes(min(255, max(0, int(c + 0.5))) for c in reversed(colour)))
        rows.append(b"".join(row))
    pixels = b"".join(reversed(rows))
    header = struct.pack("<2sIHHI", b"BM", 54 + len(pixels), 0, 0, 54)
    info = struct.pack("<IiiHHIIiiII", 40, WIDTH, HEIGHT, 1, 24, 0, len(pixels), 5906, 5906, 0, 0)
    with open(sys.argv[1], "wb") as out:
        out.write(header + info + pixels)


if __name__ == "__main__":
    main()
