#!/usr/bin/env python3
"""Writes the seed corpus of fuzz_program_decoder: small G5 program files laid out by hand."""
import os
import struct
import zlib

OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "corpus", "program_decoder")


def header(name):
    return bytes([0]) + name + bytes([0, 0, 1, 0, 0, 0xFF, 0xFF, 0xFF, 0x12, 0x12, 0xFF, 0xFF, 0x12, 0x12])


def area(x, y, w, h, pages, frame=None):
    body = bytes([0]) + struct.pack("<HHHH", x, y, w, h)
    body += (bytes([1]) + frame[0] + frame[1]) if frame else bytes([0])
    body += struct.pack("<H", len(pages))
    for effect, width, pixels in pages:
        page_header = bytes([0, effect, 0, 0, 0, 0, 0]) + struct.pack("<H", width) + bytes(4)
        body += struct.pack("<I", 13 + len(pixels)) + page_header + pixels
    return struct.pack("<I", len(body)) + body


def program(name, areas, periods=b"", frame=None, count=None):
    f = header(name)
    f += bytes([1 if periods else 0]) + periods
    f += (frame[0] + frame[1]) if frame else bytes([0])
    f += bytes([0, len(areas) if count is None else count])
    for a in areas:
        f += a
    return f + struct.pack("<I", zlib.crc32(f))


def main():
    os.makedirs(OUT, exist_ok=True)
    # One colour, bytes of 8: a page of 16 x 2 at x 4 takes 3 bytes a row.
    page = bytes([0xF7, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF])
    files = {
        "empty": program(b"P000", []),
        "periods": program(b"P001", [], periods=bytes(range(1, 19))),
        "one_area": program(b"P002", [area(4, 3, 16, 2, [(1, 16, page)])]),
        "two_pages": program(b"P003", [area(4, 0, 16, 2, [(4, 16, page), (4, 5, page)])], count=2),
        "area_frame": program(b"P004", [area(0, 0, 20, 8, [(0, 16, bytes([0xFF] * 12))],
                                             frame=(bytes([1, 1, 2, 3, 4, 5, 0]), bytes([0x0F, 0xF0])))]),
        "program_frame": program(b"P005", [area(0, 0, 8, 1, [])],
                                 frame=(bytes([0, 5, 6, 7, 8, 9, 0]), bytes([0x00, 0xFF, 0x7F, 0x00]))),
        "clock": program(b"P006", [struct.pack("<I", 13) + bytes([2, 0, 0, 0, 0, 8, 0, 8, 0, 0, 0, 0, 0])]),
    }
    for name, data in files.items():
        with open(os.path.join(OUT, name), "wb") as out:
            out.write(data)


if __name__ == "__main__":
    main()
