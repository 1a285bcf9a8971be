#!/usr/bin/env python3
"""Writes the seed corpus of fuzz_dynamic_decoder: a family byte (0 G5, 1 G6) and a command."""
import os
import struct

out = os.path.join(os.path.dirname(__file__), "corpus", "dynamic_decoder")
os.makedirs(out, exist_ok=True)

HEAD_ADD = bytes([1, 0xA7, 0, 0, 0])


def g5_add(area, pages, x=0, w=32, h=8):
    body = struct.pack("<BBHBH", area, 0, 5, 1, 0) + struct.pack("<BIB", 0, 0, 16)
    body += struct.pack("<HHHH", x, 0, w, h) + b"\x00" + struct.pack("<H", len(pages))
    for p in pages:
        body += struct.pack("<IBBBBHBHI", len(p) + 13, 0, 1, 1, 1, 300, 1, w, 0) + p
    return HEAD_ADD + struct.pack("<I", len(body)) + body


def g6_block(area, pages, offset0, sound=b""):
    records = b""
    off = offset0
    for p in pages:
        records += struct.pack("<I", 26) + bytes([0, 1, 0, 0, 0, 0, 1, 32, 0]) + bytes(9)
        records += struct.pack("<II", off, len(p))
        off += len(p)
    item = struct.pack("<BBHBHBIB", area, 0, 5, 1, 0, 1, 0, 16) + struct.pack("<HHHH", 0, 0, 32, 8)
    item += b"\x00" + bytes([0, 0, 0, 1 if sound else 0])
    if sound:
        item += bytes(16) + struct.pack("<I", len(sound)) + sound
    item += bytes(5) + struct.pack("<H", len(pages)) + records
    return struct.pack("<I", len(item)) + item


page = bytes([0xF0]) * 32  # 32 x 8 in one colour: 4 bytes a row
seeds = {
    "g5_add": b"\x00" + g5_add(1, [page]),
    "g5_two_pages": b"\x00" + g5_add(2, [page, page]),
    "g6_layout_a": b"\x01" + HEAD_ADD + struct.pack("<H", 1) + g6_block(1, [page], 0, b"hi") + page,
    "g6_layout_b": b"\x01" + HEAD_ADD + struct.pack("<H", 2) + g6_block(1, [page], 0)
    + g6_block(2, [page], 32) + page + page,
    "delete_one": b"\x00" + bytes([1, 0xA7, 1, 0, 0, 1, 1]),
    "delete_all": b"\x01" + bytes([1, 0xA7, 1, 0, 0, 0xFF]),
    "sound_insert": b"\x01" + bytes([1, 0xA7, 7, 0, 0, 1, 2, 0, 0, 0])
    + struct.pack("<I", 22) + bytes(16) + struct.pack("<I", 2) + b"ok",
}
for name, data in seeds.items():
    with open(os.path.join(out, name), "wb") as f:
        f.write(data)
