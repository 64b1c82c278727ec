"""Small ICC profiles for tests."""
import struct

SRGB = {b"rXYZ": (0.4361, 0.2225, 0.0139), b"gXYZ": (0.3851, 0.7169, 0.0971), b"bXYZ": (0.1431, 0.0606, 0.7139)}
WIDE = {b"rXYZ": (0.6097, 0.3111, 0.0195), b"gXYZ": (0.2053, 0.6257, 0.0609), b"bXYZ": (0.1492, 0.0632, 0.7446)}


def _number(value):
    return struct.pack(">i", round(value * 65536))


def _profile(space, parts, size=0):
    parts = {**parts, b"wtpt": b"XYZ " + bytes(4) + b"".join(map(_number, (0.9642, 1.0, 0.8249))),
             b"cprt": b"text" + bytes(4) + b"none\0"}
    start = 128 + 4 + 12 * (len(parts) + 1)
    table, body = b"", b""
    for key, value in parts.items():
        value += bytes(-len(value) % 4)
        table += struct.pack(">4sII", key, start + len(body), len(value))
        body += value
    rest = max(size - start - len(body), 8)
    table += struct.pack(">4sII", b"priv", start + len(body), rest)
    body += b"data" + bytes(i * i % 251 for i in range(rest - 4))
    header = struct.pack(">I4sI4s4s4s", start + len(body), b"lcms", 0x02100000, b"mntr", space, b"XYZ ")
    header += struct.pack(">6H4s", 2020, 1, 1, 0, 0, 0, b"acsp") + bytes(28) + b"".join(map(_number, (0.9642, 1, 0.8249)))
    return header.ljust(128, b"\0") + struct.pack(">I", len(parts) + 1) + table + body


def _described(name):
    name = name.encode() + b"\0"
    return b"desc" + bytes(4) + struct.pack(">I", len(name)) + name + bytes(8 + 67)


def _curve(gamma):
    return b"curv" + bytes(4) + struct.pack(">IH", 1, round(gamma * 256)) + bytes(2)


def rgb(name, primaries, gamma=2.2, size=0):
    """A matrix profile; a private tag fills it up to `size` bytes."""
    parts = {key: b"XYZ " + bytes(4) + b"".join(map(_number, value)) for key, value in primaries.items()}
    parts |= {key: _curve(gamma) for key in (b"rTRC", b"gTRC", b"bTRC")}
    return _profile(b"RGB ", {**parts, b"desc": _described(name)}, size)


def gray(name, gamma):
    return _profile(b"GRAY", {b"kTRC": _curve(gamma), b"desc": _described(name)})
