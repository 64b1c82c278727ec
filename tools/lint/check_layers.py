#!/usr/bin/env python3
"""Checks the one-way dependencies between the folders of the project. Prints each offence; exit code 1 if any."""
import pathlib
import re
import sys

# Each folder of the engine, from the lowest; a file may include from its own folder and from lower ones.
ORDER = ["MemoryManagement", "ErrorHandling", "metadata/Streams", "Common", "colorconversion"]
ABOVE_COLOR = {
    "transforms": ORDER + ["transforms"],
    "Drawing": ORDER + ["transforms", "Drawing"],
    # Thumbnails are resized while they are decoded; the codecs see the creators alone.
    "metadata/Thumbnails": ORDER + ["transforms", "metadata/Thumbnails"],
    "metadata": ORDER + ["metadata/Thumbnails", "metadata"],
}
# The allocator reports failures with the engine's exceptions, and the exceptions are declared without it.
EXCEPTIONS = {("MemoryManagement", "ErrorHandling")}
INCLUDE = re.compile(r'^\s*#\s*include\s+["<]([^">]+)[">]')


def engine_folder(path):
    for folder in ["metadata/Streams", "metadata/Thumbnails"] + ORDER + list(ABOVE_COLOR):
        if path.startswith(folder + "/"):
            return folder
    return None


def allowed(folder):
    if folder in ABOVE_COLOR:
        return ABOVE_COLOR[folder]
    return ORDER[: ORDER.index(folder) + 1]


def check(root):
    engine = root / "src/engine"
    names = {p.relative_to(engine).as_posix() for p in engine.rglob("*.h")}
    for path in sorted(p for d in ("src", "include", "tools", "tests", "bench", "fuzz", "examples")
                       for p in (root / d).rglob("*") if p.suffix in (".h", ".cpp")):
        relative = path.relative_to(root).as_posix()
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            match = INCLUDE.match(line)
            if not match:
                continue
            target = match.group(1)
            where = f"{relative}:{number}"
            if target.startswith("../"):
                yield f"{where}: relative include {target}"
            if relative.startswith("src/engine/"):
                if target.startswith("Corvane/"):
                    yield f"{where}: the engine includes the public header {target}"
                folder = engine_folder(relative[len("src/engine/"):])
                other = engine_folder(target) if target in names else None
                if other and other not in allowed(folder) and (folder, other) not in EXCEPTIONS:
                    yield f"{where}: {folder} must not use {other}"
            elif relative.startswith(("include/", "tools/", "examples/", "tests/public/")) and target in names:
                yield f"{where}: only public headers may be used here, not {target}"


def main():
    offences = list(check(pathlib.Path(sys.argv[1])))
    print("\n".join(offences) if offences else "layers are clean")
    return 1 if offences else 0


if __name__ == "__main__":
    sys.exit(main())
