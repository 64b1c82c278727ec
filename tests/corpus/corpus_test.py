#!/usr/bin/env python3
"""Decodes every picture of a folder and compares size, number of frames and pixels with its expected.tsv.

Usage: corpus_test.py CORPUS_PIXELS. The folder is named by RASTERLOOM_CORPUS; without it the test is skipped. Files under
corrupt/ must be read or refused with a documented failure, in time and in bounded memory.
"""
import collections
import csv
import hashlib
import os
import pathlib
import resource
import subprocess
import sys

PROGRAM = sys.argv[1]
FORMATS = ["bmp", "jpeg", "png", "pcx", "wbmp"]
SECONDS = 20
MEMORY = 4 << 30
ONLY = sys.argv[2:]


def limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY, MEMORY))


def decode(path, *options):
    """Frames as (width, height, kind, bytes), or the text of the failure."""
    sanitized = "asan" in PROGRAM  # needs terabytes of addresses
    result = subprocess.run([PROGRAM, str(path), *options], capture_output=True, timeout=SECONDS, check=False,
                            preexec_fn=None if sanitized else limit_memory)
    if result.returncode != 0:
        raise AssertionError(f"exit code {result.returncode}: {result.stderr.decode(errors='replace')[-300:]}")
    frames, rest = [], result.stdout
    while rest:
        line, rest = rest.split(b"\n", 1)
        words = line.decode(errors="replace").split(" ", 1)
        if words[0] == "FAIL":
            return words[1]
        width, height, kind, size = words[1].split()
        frames.append((int(width), int(height), kind, rest[:int(size)]))
        rest = rest[int(size):]
    return frames


def hash_as(kind, have, pixels):
    """The hash of the pixels as the list gives them; None where the kinds do not fit."""
    if have == kind == "RGBA8":
        pixels = bytearray(pixels)
        for i in range(3, len(pixels), 4):
            if pixels[i] == 0:
                pixels[i - 3:i] = b"\0\0\0"
    elif have == "RGBA8" and kind == "RGB8":
        samples = bytearray(len(pixels) // 4 * 3)
        for channel in range(3):
            samples[channel::3] = pixels[channel::4]
        pixels = samples
    elif have != kind:
        return None
    return hashlib.sha256(pixels).hexdigest()


def check(path, rows):
    """Nothing, or what is wrong."""
    if rows[0]["note"] and rows[0]["file"].startswith("corrupt/"):
        decode(path, "load-only")
        return None  # read or refused, both are answers
    frames = decode(path)
    if isinstance(frames, str):
        # A note tells where this library is stricter than common decoders.
        return None if rows[0]["note"] or rows[0]["pixfmt"] == "-" else frames
    if rows[0]["note"]:
        return None
    if rows[0]["frames"] != "-" and len(frames) != int(rows[0]["frames"]):
        return f"{len(frames)} frames, not {rows[0]['frames']}"
    for row in rows:
        if row["frame"] == "-":
            continue
        width, height, kind, pixels = frames[int(row["frame"])]
        if row["width"] != "-" and (width, height) != (int(row["width"]), int(row["height"])):
            return f"{width} x {height}, not {row['width']} x {row['height']}"
        if row["pixel_sha256"] != "-" and hash_as(row["pixfmt"], kind, pixels) != row["pixel_sha256"]:
            return f"frame {row['frame']}: other pixels ({kind} for {row['pixfmt']})"
    return None


def main():
    folder = os.environ.get("RASTERLOOM_CORPUS")
    if not folder:
        print("RASTERLOOM_CORPUS is not set")
        return 77
    root = pathlib.Path(folder)
    files = collections.defaultdict(list)
    with open(root / "expected.tsv", newline="", encoding="utf-8") as table:
        for row in csv.DictReader(table, delimiter="\t", quoting=csv.QUOTE_NONE):
            files[row["file"]].append(row)
    failures = checked = 0
    for name, rows in files.items():
        if name.split("/")[0] not in FORMATS + ["corrupt"] or (ONLY and not any(part in name for part in ONLY)):
            continue
        checked += 1
        try:
            problem = check(root / name, rows)
        except (AssertionError, subprocess.TimeoutExpired) as error:
            problem = str(error)
        if problem:
            failures += 1
            print(f"{name}: {problem}")
    print(f"{checked} files, {failures} failures")
    return 1 if failures or not checked else 0


sys.exit(main())
