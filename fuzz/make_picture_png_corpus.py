#!/usr/bin/env python3
"""Writes the seed corpus of fuzz_picture_png: small PNG files of every colour type and bit
depth that the picture paths meet, written with zlib alone."""
import os
import struct
import zlib

OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "corpus", "picture_png")


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png(width, height, colour_type, depth, row, extra=b"", interlace=0):
    """`row(y)` gives the bytes of row y without its filter byte."""
    raw = b"".join(b"\x00" + row(y) for y in range(height))
    ihdr = struct.pack(">IIBBBBB", width, height, depth, colour_type, 0, 0, interlace)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", ihdr) + extra
            + chunk(b"IDAT", zlib.compress(raw)) + chunk(b"IEND", b""))


def main():
    os.makedirs(OUT, exist_ok=True)
    files = {
        "rgba_1x1": png(1, 1, 6, 8, lambda y: b"\xff\x00\x00\x80"),
        "rgb_4x3": png(4, 3, 2, 8, lambda y: bytes([y * 80, 255 - y * 80, 17] * 4)),
        "gray_8x4": png(8, 4, 0, 8, lambda y: bytes(range(y, y + 8))),
        "gray_alpha_2x2": png(2, 2, 4, 8, lambda y: b"\x80\xff\x10\x00"),
        "palette_3x2": png(3, 2, 3, 8, lambda y: bytes([0, 1, 2]),
                           extra=chunk(b"PLTE", b"\xff\x00\x00\x00\xff\x00\x00\x00\xff")
                           + chunk(b"tRNS", b"\xff\x80")),
        "bits1_16x2": png(16, 2, 0, 1, lambda y: b"\xaa\x55"),
        "rgb16_2x2": png(2, 2, 2, 16, lambda y: bytes(range(12))),
        "strip_10x2": png(10, 2, 6, 8, lambda y: b"\x00\x00\xff\xff" * 10),
        "wide_200x2": png(200, 2, 2, 8, lambda y: b"\x10\x20\x30" * 200),
    }
    for name, data in files.items():
        with open(os.path.join(OUT, name), "wb") as out:
            out.write(data)


if __name__ == "__main__":
    main()
