#!/usr/bin/env python3
"""Builds a G5 program with a text area and a picture area and sends it to a controller.

    python3 python/examples/send_g5_program.py 127.0.0.1 5005 [picture.png]

The screen is taken as a two-colour 128 x 64 panel of controller type 0x0051. Without a
picture, a green one is made in the working directory. The library reads the picture when the
program is integrated, so the file must stay until then.
"""

import struct
import sys
import zlib

from zel_sdk_dual import SCREEN_TWO_COLORS, Controller, ProgramG5, ZelError, set_screen

FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"


def write_solid_png(path, width, height, rgb):
    """A PNG of one colour, written with the standard library alone."""
    def chunk(kind, body):
        return (struct.pack(">I", len(body)) + kind + body
                + struct.pack(">I", zlib.crc32(kind + body)))
    row = b"\0" + bytes(rgb) * width
    with open(path, "wb") as out:
        out.write(b"\x89PNG\r\n\x1a\n")
        out.write(chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)))
        out.write(chunk(b"IDAT", zlib.compress(row * height)))
        out.write(chunk(b"IEND", b""))


def main():
    address = sys.argv[1] if len(sys.argv) > 1 else "127.0.0.1"
    port = int(sys.argv[2]) if len(sys.argv) > 2 else 5005
    picture = sys.argv[3] if len(sys.argv) > 3 else None
    if picture is None:
        picture = "green.png"
        write_solid_png(picture, 64, 32, (0, 255, 0))

    controller = Controller(address, port)
    set_screen(SCREEN_TWO_COLORS, 0x0051)
    try:
        with ProgramG5(1) as program:
            program.add_area(1, 0, 0, 64, 32)
            program.add_text(1, "Hi", font_path=FONT, fontSize=16, fontColor=1)
            program.add_area(2, 64, 0, 64, 32)
            program.add_picture(2, picture)
            with program.integrate() as image:
                controller.send(image)
                print(f"sent {image.name}: {len(image.data)} bytes")
    except ZelError as error:
        print(f"failed: {error}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
