#!/usr/bin/env python3
"""Whole-process cost of a thumbnail: the program beside vipsthumbnail, ImageMagick and GraphicsMagick.

Usage: tool_thumbnail.py RASTERLOOM PHOTO.jpg [WIDTHxHEIGHT] [RUNS]

Each makes a JPEG of quality 75 that fits into the box (800x600), on one thread as far as it can be told to. The table has
the best of the runs: seconds of wall clock and of processor time, and the largest memory of the process in MiB. A program
that is not installed is left out.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time


def peers(tool, photo, out, box):
    yield "rasterloom thumbnail", [tool, "thumbnail", "-f", photo, out, "--size", box]
    yield "rasterloom thumbnail --fast", [tool, "thumbnail", "-f", photo, out, "--size", box, "--fast"]
    yield "rasterloom convert --resize", [tool, "convert", "-f", photo, out, "--resize", box.split("x")[0] + "x"]
    yield "vipsthumbnail", ["vipsthumbnail", photo, "--size", box, "-o", out + "[Q=75]"]
    yield "ImageMagick convert -resize", ["convert", "-limit", "thread", "1", photo, "-resize", box, "-quality", "75", out]
    yield "ImageMagick with jpeg:size", ["convert", "-limit", "thread", "1", "-define", f"jpeg:size={box}", photo, "-resize",
                                         box, "-quality", "75", out]
    yield "GraphicsMagick convert -resize", ["gm", "convert", "-limit", "threads", "1", photo, "-resize", box, "-quality",
                                             "75", out]


def cost(command):
    """Wall seconds, processor seconds and MiB of one run."""
    environment = {**os.environ, "VIPS_CONCURRENCY": "1", "OMP_NUM_THREADS": "1"}
    start = time.perf_counter()
    process = subprocess.Popen(command, stdout=subprocess.DEVNULL, env=environment)
    _, status, usage = os.wait4(process.pid, 0)
    process.returncode = os.waitstatus_to_exitcode(status)
    if process.returncode != 0:
        raise RuntimeError(f"{command} failed")
    return time.perf_counter() - start, usage.ru_utime + usage.ru_stime, usage.ru_maxrss / 1024


def main():
    tool, photo = os.path.abspath(sys.argv[1]), os.path.abspath(sys.argv[2])
    box = sys.argv[3] if len(sys.argv) > 3 else "800x600"
    runs = int(sys.argv[4]) if len(sys.argv) > 4 else 5
    print(f"{'':32} {'wall s':>8} {'cpu s':>8} {'MiB':>8} {'bytes':>9}")
    with tempfile.TemporaryDirectory() as folder:
        out = str(pathlib.Path(folder) / "out.jpg")
        commands = [peer for peer in peers(tool, photo, out, box) if shutil.which(peer[1][0])]
        results = {name: [] for name, _ in commands}
        # In turn, so that whatever else the machine does meets all of them.
        for _ in range(runs):
            for name, command in commands:
                results[name].append((*cost(command), os.path.getsize(out)))
        for name, values in results.items():
            wall, processor, memory, size = (min(column) for column in zip(*values))
            print(f"{name:32} {wall:8.3f} {processor:8.3f} {memory:8.1f} {size:9}")


if __name__ == "__main__":
    main()
