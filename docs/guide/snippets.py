#!/usr/bin/env python3
"""Keeps the pages of the guide, and the README of the project, together with the programs behind them.

A line `<!-- page.cpp: name -->` stands before a block of code in a page; the block is what stands between `// [name]` and
`// [name end]` in code/page.cpp. Usage: snippets.py check|update [FOLDER OF PICTURES]

`check` tells every block that differs, every part of a program that no page shows, every link that leads nowhere, and exits
with 1 if there is any. `update` writes the blocks anew and, from the folder in which the programs ran, the pictures.
"""
import pathlib
import re
import shutil
import sys
import textwrap

GUIDE = pathlib.Path(__file__).resolve().parent
PART = re.compile(r"^[ \t]*// \[([\w-]+)\]\n(.*?)^[ \t]*// \[\1 end\]\n", re.M | re.S)
BLOCK = re.compile(r"<!-- ([\w-]+\.cpp): ([\w-]+) -->\n(?:```cpp\n(.*?)```\n)?", re.S)
LINK = re.compile(r"\]\(([^)#:\s]+)(?:#[^)]*)?\)")


def parts_of_programs():
    parts = {}
    for program in sorted((GUIDE / "code").glob("*.cpp")):
        for name, text in PART.findall(program.read_text(encoding="utf-8")):
            parts[program.name, name] = textwrap.dedent(text)
    return parts


def main():
    update = sys.argv[1] == "update"
    parts = parts_of_programs()
    shown = set()
    faults = []
    for page in sorted(GUIDE.glob("*.md")) + [GUIDE.parent.parent / "README.md"]:
        text = page.read_text(encoding="utf-8")

        def block(match):
            key = match.group(1), match.group(2)
            shown.add(key)
            if key not in parts:
                faults.append(f"{page.name}: {key[0]} has no part {key[1]}")
                return match.group(0)
            if not update and match.group(3) != parts[key]:
                faults.append(f"{page.name}: the block of {key[0]}, {key[1]}, is not what the program has")
            return f"<!-- {key[0]}: {key[1]} -->\n```cpp\n{parts[key]}```\n"

        fresh = BLOCK.sub(block, text)
        if update:
            page.write_text(fresh, encoding="utf-8")
        for target in LINK.findall(re.sub(r"```.*?```", "", fresh, flags=re.S)):
            picture = page.parent / target
            if update and len(sys.argv) > 2 and target.startswith("pictures/") and page.parent == GUIDE:
                source = pathlib.Path(sys.argv[2]) / page.stem / picture.name.removeprefix(page.stem + "-")
                shutil.copyfile(source, picture)
            if not picture.exists():
                faults.append(f"{page.name}: {target} is not there")
    faults += [f"no page shows {name} of {program}" for program, name in parts if (program, name) not in shown]
    print("\n".join(faults) if faults else "pages and programs agree")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
