#!/usr/bin/env python3
"""Writes the seed corpus of fuzz_program_decoder_g6: small G6 program and data file pairs laid
out by hand, each as a u16 length of the program file, the program file, then the data file."""
import os
import struct
import zlib

OUT = os.path.join(os.path.dirname(os.path.abspath(__file__)), "corpus", "program_decoder_g6")


def closed(f):
    return f + struct.pack("<I", zlib.crc32(f) & 0xFFFFFFFF)


def head(name, background, count):
    return bytes([0]) + name + bytes(24) + bytes([0, 0, background, count])


def page_record(effect, width, offset, length):
    header = bytes([0, effect, 0, 0, 0, 0, 0]) + struct.pack("<H", width) + bytes(9)
    return struct.pack("<I", 26) + header + struct.pack("<II", offset, length)


def picture_area(kind, x, w, h, records, frame=None, sound=None):
    body = bytes([kind]) + struct.pack("<HHHH", x, 0, w, h)
    body += (bytes([1]) + frame[0] + frame[1]) if frame else bytes([0])
    body += bytes(3)
    body += (bytes([1]) + sound[0] + struct.pack("<I", len(sound[1])) + sound[1]) if sound else bytes([0])
    body += bytes(5) + struct.pack("<H", len(records)) + b"".join(records)
    declared = len(body) - (7 if kind == 11 and frame else 0)
    return struct.pack("<I", declared) + body


def data(name, pixels):
    return closed(bytes([9]) + name + bytes(8) + pixels)


def pair(program, data_file):
    return struct.pack("<H", len(program)) + program + data_file


def main():
    os.makedirs(OUT, exist_ok=True)
    seeds = {}
    seeds["empty"] = pair(closed(head(b"P001", 0, 0)), data(b"D001", b""))
    # One colour, 16 x 2 at x 4: 3 bytes a row.
    seeds["sound"] = pair(
        closed(head(b"P003", 0, 1) + picture_area(0, 4, 16, 2, [page_record(1, 16, 14, 6)],
                                                  sound=(bytes(16), b"hi"))),
        data(b"D003", bytes([0xF7]) + bytes([0xFF]) * 5))
    # A background 16 x 6 with a strip of one byte: its page 14 x 4 at column 1.
    frame = (bytes([1, 1, 2, 3, 4, 5, 6]) + bytes(7), bytes([0]))
    seeds["background"] = pair(
        closed(head(b"P001", 1, 1) + picture_area(11, 0, 16, 6, [page_record(0, 14, 14, 8)],
                                                  frame=frame)),
        data(b"D001", bytes(8)))
    # A clock of 8 x 2: a background of 2 bytes, two items with a table of one 1 x 1 glyph each.
    table = struct.pack("<IHI", 10, 1, 0) + bytes([1, 1, 1, 0])
    clock = bytes([2]) + struct.pack("<HHHH", 0, 0, 8, 2) + bytes([0]) + bytes(27) + bytes(2)
    clock += struct.pack("<II", 14, 2) + bytes([2])
    for i, offset in enumerate((16, 30)):
        clock += struct.pack("<HHBB", 1 + i, 0, 3 + i, 0) + bytes([1, 0]) + struct.pack("<II", offset, 14)
    seeds["clock"] = pair(closed(head(b"P002", 0, 1) + struct.pack("<I", len(clock)) + clock),
                          data(b"D002", bytes([0xFF, 0xFF]) + table + table))
    for name, seed in seeds.items():
        with open(os.path.join(OUT, name), "wb") as f:
            f.write(seed)


if __name__ == "__main__":
    main()
