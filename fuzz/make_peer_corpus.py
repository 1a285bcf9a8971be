#!/usr/bin/env python3
"""Writes the seed corpora of fuzz_serial_read and fuzz_datagram: controllers' answers in a
row, each a little-endian 16-bit length and the bytes, as the two targets cut their input."""
import os
import struct

HERE = os.path.dirname(os.path.abspath(__file__))


def crc16(data):
    crc = 0
    for b in data:
        crc ^= b
        for _ in range(8):
            crc = (crc >> 1) ^ 0xA001 if crc & 1 else crc >> 1
    return crc


def escape(inner):
    table = {0x5A: b"\x5b\x02", 0x5B: b"\x5b\x01", 0xA5: b"\xa6\x02", 0xA6: b"\xa6\x01"}
    return b"\xa5" * 8 + b"".join(table.get(b, bytes([b])) for b in inner) + b"\x5a"


def answer(group, code, data, version=5, device=0x0051, error=0):
    """An answer frame: data answers carry code + 128, acknowledges group 0xA0."""
    if group == 0xA0:
        body = struct.pack("<BBBHHH", 1, 0xA0, 1 if error else 0, 0, error, 0)
    else:
        body = struct.pack("<BBBHHH", 1, group, code + 128, error, 0, len(data)) + data
    head = struct.pack("<HHBBHBBHBB", 0x8000, 0xFFFE, version, 0x11, device, 0, 2, 2, 0, 0x84)
    head += bytes([0x96, 0]) + bytes(6)
    head += struct.pack("<HH", len(body), crc16(body))
    if version == 7:
        head += b"\x00"  # the longer header has one more byte before its check
    x = 0
    for b in head:
        x ^= b
    return escape(head + bytes([x]) + body)


def probe(device=0x0051, version=5):
    return answer(0xA2, 0x00, struct.pack("<H", device) * 26, version, device)


def pieces(*parts):
    return b"".join(struct.pack("<H", len(p)) + p for p in parts)


def write(name, files):
    out = os.path.join(HERE, "corpus", name)
    os.makedirs(out, exist_ok=True)
    for file_name, data in files.items():
        with open(os.path.join(out, file_name), "wb") as f:
            f.write(data)


def main():
    ping = answer(0xA2, 0x00, struct.pack("<H", 0x0051) + bytes(30) + b"127.0.0.1".ljust(20, b"\0"))
    search6 = answer(0xA4, 0x03, bytes(range(206)), version=7, device=0x0163)
    search = answer(0xA4, 0x02, bytes(range(64)))
    dynamic = escape(struct.pack("<HHBBHBBHH", 0xFFFE, 0x8000, 240, 0, 0x62, 0, 0, 12, 0)
                     + bytes([1, 0xA7, 0x81, 0, 0, 0, 0, 3, 0, 1, 2, 3]))
    refused = answer(0xA0, 0, b"", error=9)
    write("serial_read", {
        "g5_session": pieces(probe(), ping, answer(0xA4, 0x03, bytes(range(206))), dynamic),
        "g6_session": pieces(probe(0x0163, 7), answer(0xA2, 0x00, bytes(52), 7, 0x0163), search6),
        "refused": pieces(probe(), refused, refused, refused),
        "tail_after_end": pieces(probe() + b"\x00\x5a\xa5", ping[:20], ping + ping),
    })
    write("datagram", {
        "g5_session": pieces(probe(), ping, search, b"OK\r\n",
                             b"MyNetwork,secret-password-1234,WPA2,11,0\r\n"),
        "short_inquiry": pieces(probe(), ping, search, b"ok", b"Net,pw,ok"),
        "silent_module": pieces(probe(), b"", b"", b"ERROR", b""),
        "g6_probe": pieces(probe(0x0163, 7), answer(0xA2, 0x00, bytes(52), 7, 0x0163)),
    })


if __name__ == "__main__":
    main()
