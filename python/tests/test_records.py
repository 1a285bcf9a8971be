"""The ctypes records against the C header: every size it asserts and every offset it
documents."""

import ctypes
import os
import pathlib
import re

import zel_sdk_dual
from zel_sdk_dual import records

HEADER = pathlib.Path(os.environ.get(
    "ZEL_SDK_DUAL_HEADER",
    pathlib.Path(__file__).resolve().parents[2] / "include" / "zel_sdk_dual.h"))


def header_text():
    return HEADER.read_text(encoding="utf-8")


def test_sizes_are_the_headers():
    asserted = re.findall(r"ZEL_STATIC_ASSERT\(sizeof\((\w+)\) == (\d+)", header_text())
    assert len(asserted) >= 21
    for name, size in asserted:
        if name == "E_ScreenColor_G56":
            continue  # an enum, passed as a 32-bit int
        assert ctypes.sizeof(getattr(records, name)) == int(size), name


def test_offsets_are_the_headers():
    # Each record's body: "typedef struct Name {" ... "} Name;", fields with "/**< offset N".
    checked = 0
    for name, body in re.findall(r"typedef struct (\w+) \{(.*?)\} \1;", header_text(), re.S):
        record = getattr(records, name)
        for field, offset in re.findall(r"(\w+)(?:\[[^\]]*\])*;\s*/\*\*<\s*offset (\d+)", body):
            assert getattr(record, field).offset == int(offset), f"{name}.{field}"
            checked += 1
    # Offsets of the records the tests lean on, from the header's own table.
    assert records.ZelPingRecord.address.offset == 32
    assert records.ZelProgramFile_G6.dataFileData.offset == 26
    assert records.TimeContentRecord.weekFormat.offset == 33
    assert checked > 150


def test_the_package_exports_every_record():
    for name in re.findall(r"typedef struct (\w+) \{", header_text()):
        assert getattr(zel_sdk_dual, name) is getattr(records, name)
