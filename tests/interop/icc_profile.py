"""A colour profile of any size, for the tests."""
import struct


def xyz(x, y, z):
    return b"XYZ \0\0\0\0" + struct.pack(">3i", *(round(value * 65536) for value in (x, y, z)))


def make_profile(size):
    """A monitor profile of this many bytes, most of them in a private tag."""
    name = b"Test profile\0"
    gamma = b"curv\0\0\0\0" + struct.pack(">IH", 1, 0x0233) + b"\0\0"
    tags = [(b"desc", b"desc\0\0\0\0" + struct.pack(">I", len(name)) + name + bytes(78) + b"\0"),
            (b"cprt", b"text\0\0\0\0Nobody's\0\0\0\0"), (b"wtpt", xyz(0.9642, 1, 0.8249)),
            (b"rXYZ", xyz(0.4361, 0.2225, 0.0139)), (b"gXYZ", xyz(0.3851, 0.7169, 0.0971)),
            (b"bXYZ", xyz(0.1431, 0.0606, 0.7141)), (b"rTRC", gamma), (b"gTRC", gamma), (b"bTRC", gamma)]
    tags = [(tag, data + bytes(-len(data) % 4)) for tag, data in tags]
    start = 128 + 4 + 12 * (len(tags) + 1)
    filler = size - start - sum(len(data) for _, data in tags)
    tags.append((b"fill", b"data\0\0\0\0\0\0\0\1" + bytes(i * 7 % 256 for i in range(filler - 12))))
    table, body = b"", b""
    for tag, data in tags:
        table += tag + struct.pack(">II", start + len(body), len(data))
        body += data
    header = (struct.pack(">I4sI4s4s4s6H4s4sI4s4sQI", size, b"none", 0x02100000, b"mntr", b"RGB ", b"XYZ ",
                          2024, 1, 2, 3, 4, 5, b"acsp", b"none", 0, b"none", b"none", 0, 0)
              + xyz(0.9642, 1, 0.8249)[8:] + b"none" + bytes(44))
    return header + struct.pack(">I", len(tags)) + table + body
