"""A G5 program built and sent through the package, as the simulator's panel shows it."""

import json
import struct
import zlib

from zel_sdk_dual import SCREEN_TWO_COLORS, Controller, ProgramG5, ProgramG6, set_screen

FONT = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"


def solid_png(path, width, height, rgb):
    def chunk(kind, body):
        return struct.pack(">I", len(body)) + kind + body + struct.pack(">I", zlib.crc32(kind + body))
    rows = (b"\0" + bytes(rgb) * width) * height
    path.write_bytes(b"\x89PNG\r\n\x1a\n"
                     + chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0))
                     + chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def rgb_pixels(path):
    """The rows of an 8-bit RGB PNG (the simulator's pictures), unfiltered."""
    data = path.read_bytes()
    at, idat, width, height = 8, b"", 0, 0
    while at < len(data):
        length, kind = struct.unpack(">I4s", data[at:at + 8])
        body = data[at + 8:at + 8 + length]
        if kind == b"IHDR":
            width, height, depth, colour = struct.unpack(">IIBB", body[:10])
            assert (depth, colour) == (8, 2)
        elif kind == b"IDAT":
            idat += body
        at += 12 + length
    raw, stride, rows, previous = zlib.decompress(idat), width * 3, [], bytearray(width * 3)
    for y in range(height):
        kind, line = raw[y * (stride + 1)], bytearray(raw[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
        for i in range(stride):
            left = line[i - 3] if i >= 3 else 0
            up, corner = previous[i], previous[i - 3] if i >= 3 else 0
            if kind == 1:
                line[i] = (line[i] + left) & 0xFF
            elif kind == 2:
                line[i] = (line[i] + up) & 0xFF
            elif kind == 3:
                line[i] = (line[i] + (left + up) // 2) & 0xFF
            elif kind == 4:
                p = left + up - corner
                pa, pb, pc = abs(p - left), abs(p - up), abs(p - corner)
                guess = left if pa <= pb and pa <= pc else up if pb <= pc else corner
                line[i] = (line[i] + guess) & 0xFF
        rows.append(bytes(line))
        previous = line
    return rows


def test_a_g5_program_reaches_the_panel(sim, tmp_path):
    solid_png(tmp_path / "green.png", 64, 32, (0, 255, 0))
    set_screen(SCREEN_TWO_COLORS, 0x0051)
    with ProgramG5(1) as program:
        assert program.name == "P001"
        program.add_area(1, 0, 0, 64, 32)
        program.add_text(1, "Hi", font_path=FONT, fontSize=16, fontColor=1)
        program.add_area(2, 64, 0, 64, 32)
        program.add_picture(2, tmp_path / "green.png")
        with program.integrate() as image:
            data = image.data
            Controller("127.0.0.1", sim.tcp_port).send(image)
        # The library's buffer went back, and its pointer with it.
        assert not image.record.fileData

    assert image.name == "P001" and image.record.fileType == 0
    assert image.record.fileLen == len(data)
    # The image ends in the CRC-32 of everything before it.
    assert struct.unpack("<I", data[-4:])[0] == zlib.crc32(data[:-4]) == image.record.fileCrc

    summary = json.loads((sim.panel / "P001.json").read_text())
    assert summary["size"] == len(data)
    assert [(a["type"], a["rect"]) for a in summary["areas"]] == [
        (0, {"x": 0, "y": 0, "width": 64, "height": 32}),
        (0, {"x": 64, "y": 0, "width": 64, "height": 32})]
    state = sim.state()
    assert state["panel"]["program"] == "P001" and state["panel"]["decoded"] is True
    assert {"name": "P001", "type": 0, "size": len(data)} in state["programs"]

    # On a two-colour panel the green picture lights green, the text red, the rest nothing.
    rows = rgb_pixels(sim.panel / "P001-panel.png")
    assert len(rows) == 64 and len(rows[0]) == 128 * 3
    pixel = lambda x, y: rows[y][x * 3:x * 3 + 3]
    assert pixel(96, 16) == b"\x00\xff\x00"
    assert pixel(10, 50) == b"\x00\x00\x00"
    assert any(pixel(x, y) == b"\xff\x00\x00" for y in range(32) for x in range(64))


def test_a_g6_program_comes_as_two_files_and_reaches_the_panel(sim_g6, tmp_path):
    set_screen(SCREEN_TWO_COLORS, 0x0063)
    with ProgramG6(5) as program:
        program.add_area(1, 0, 0, 64, 32)
        program.add_text(1, "Hi", font_path=FONT, fontSize=16, fontColor=2)
        with program.integrate() as images:
            files = images.files()
            Controller("127.0.0.1", sim_g6.tcp_port).send(images)
        assert not images.record.programFileData and not images.record.dataFileData

    # "P005" with its data file "D005" of type 9, each closed by the CRC-32 of what comes
    # before it, and both written with their types.
    assert [name for name, _, _ in files] == ["P005", "D005"]
    assert files[1][1] == 9
    for _, _, data in files:
        assert struct.unpack("<I", data[-4:])[0] == zlib.crc32(data[:-4])
    state = sim_g6.state()
    assert {"name": "D005", "type": 9, "size": len(files[1][2])} in state["programs"]
    assert state["controller"]["family"] == "G6"
    assert state["panel"]["program"] == "P005" and state["panel"]["decoded"] is True
    rows = rgb_pixels(sim_g6.panel / "P005-panel.png")
    assert any(rows[y][x * 3:x * 3 + 3] == b"\x00\xff\x00" for y in range(32) for x in range(64))
    assert all(rows[y][x * 3:x * 3 + 3] == b"\x00\x00\x00" for y in range(32, 64) for x in range(128))
