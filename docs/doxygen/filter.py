#!/usr/bin/env python3
"""Shows Doxygen the public headers as their readers see them. Line numbers stay.

The comment of a declaration holds for those that follow it directly, without a blank line between: overloads, the
`set_X` of a `get_X`, the other one of a pair such as width and height, and the other constants of its block. Members of an
`@name` group that have no comment have its title. What hosts have no use for is left out: members with a leading
underscore and those that deal in engine objects, deleted functions, friends; and, unless they have a comment of their own,
overrides, destructors, copies and what is defaulted.
"""
import re
import sys

NAME = re.compile(r"(operator\s*[^\s(]+|~?[A-Za-z_]\w*)\s*\(")
CONSTANT = re.compile(r"\bstatic constexpr [\w:<>]+ (\w+)")
ENUMERATOR = re.compile(r"^(\w+)(\s*=\s*[^,]+)?,?$")


def name_of(code):
    """The name of what is declared, and its kind."""
    constant = CONSTANT.search(code)
    if constant and "(" not in code.split("=")[0]:
        return constant.group(1), "constant"
    if ENUMERATOR.match(code):
        return ENUMERATOR.match(code).group(1), "enumerator"
    code = re.sub(r"\[\[\w+\]\]|std::function<[^;]*?\)>|\btemplate\s*<[^>]*>|\brequires\b.*?> ", "", code)
    function = NAME.search(code)
    if function:
        return function.group(1).replace(" ", ""), "function"
    return None, None


def stem(name):
    """The name without what tells the members of a pair apart."""
    name = re.sub(r"^set_", "get_", re.sub(r"^Set", "Get", name))
    return re.sub("Vertical", "Horizontal", re.sub("Height", "Width", re.sub("Top", "Left", name)))


def continues(previous, name, kind):
    """Whether the comment of the declaration before holds for this one too."""
    old, old_kind = previous
    if old is None or kind != old_kind:
        return False
    return kind in ("constant", "enumerator") or stem(name) == stem(old)


def left_out(name, kind, code, documented):
    if re.match(r"(friend|extern template|using [\w:]+::\w+;)", code) or code.endswith("= delete;"):
        return True
    if kind != "function":
        return False
    if re.match(r"([gs]et_)?_[A-Za-z]", name) or re.search(r"\b(ImagingFramework::|BitmapLink|FrameProperty)", code):
        return True
    copy = re.match(r"(explicit |constexpr )*(\w+)\((const )?\2&&?( \w+)?\)", code)
    defaulted = re.search(r"= default;$|\) (const )?(noexcept )?override\b", code)
    return not documented and bool(name.startswith("~") or copy or defaulted or name == "operator=")


def statements(lines):
    """Groups of lines: (first, last, comment lines, code) for each declaration, others as they come."""
    index = 0
    while index < len(lines):
        first = index
        comment = []
        while index < len(lines) and lines[index].strip().startswith("///") and not re.match(
                r"\s*/// @[{}]|\s*/// @name", lines[index]):
            comment.append(lines[index].strip()[3:].strip())
            index += 1
        code = ""
        depth = 0
        start = index
        while index < len(lines):
            text = re.sub(r"\s*//.*", "", lines[index]).strip()
            if not text and not code:
                break
            code = (code + " " + text).strip()
            index += 1
            depth += text.count("(") - text.count(")") + text.count("{") - text.count("}")
            if depth <= 0 and re.search(r"[;},:{]$|^#", text):
                break
            if depth == 1 and text.endswith("{") and re.search(r"\b(class|struct|enum|namespace|extern)\b", code):
                break
        if index == start and index == first:
            index += 1
        yield first, index, comment, code


def main():
    lines = open(sys.argv[1], encoding="utf-8").read().split("\n")
    previous, text, group = (None, None), "", ""
    for first, end, comment, code in statements(lines):
        name, kind = name_of(code) if code and not code.startswith("#") else (None, None)
        block = lines[first:end]
        if not code:
            previous = (None, None)
            title = re.match(r"\s*/// @name (.*)", block[0])
            group = title.group(1) + "." if title else "" if "/// @}" in block[0] else group
        elif name and left_out(name, kind, code, bool(comment)) or left_out("", None, code, False):
            block = [""] * len(block)
        elif name and comment:
            previous, text = (name, kind), " ".join(comment)
        elif name and "///<" in "".join(block):
            pass
        elif name and text and continues(previous, name, kind):
            block[0] = re.sub(r"^(\s*)", lambda indent: f"{indent.group(1)}/*! {text} */ ", block[0], count=1)
            previous = (name, kind)
        elif name and group:
            block[0] = re.sub(r"^(\s*)", lambda indent: f"{indent.group(1)}/*! {group} */ ", block[0], count=1)
            previous = (None, None)
        elif name:
            previous = (None, None)
        # A marker would run together with the comment behind it.
        block = [re.sub(r"^(\s*)/// (@[{}])$", r"\1/*! \2 */", line) for line in block]
        sys.stdout.write("\n".join(block) + "\n")


if __name__ == "__main__":
    main()
