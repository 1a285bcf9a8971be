"""Commands through the package against zel-sim, read back through its live view."""

import socket
import time

import pytest

import zel_sdk_dual
from zel_sdk_dual import Controller, ZelError


def test_ping_gives_the_controller_type(sim):
    record = Controller("127.0.0.1", sim.tcp_port).ping()
    assert record.ControllerType == 0x0051
    # A probe and the ping itself (group A2, code 00).
    assert any(" A2 00 ping" in line for line in sim.state()["requests"]["last"])


def test_the_clock_set_is_the_clock_read(sim):
    controller = Controller("127.0.0.1", sim.tcp_port)
    before = time.time()
    controller.set_time()
    after = time.time()
    clock = sim.state()["settings"]["clock"]
    # The time stamp is this host's local time, BCD, with the weekday 0 for Sunday.
    sent = time.mktime(time.strptime(clock["time"], "%Y-%m-%d %H:%M:%S"))
    assert int(before) - 1 <= sent <= after + 1
    now = time.localtime(sent)
    assert clock["weekday"] == (now.tm_wday + 1) % 7
    year = f"{now.tm_year:04d}"
    assert clock["hex"][:4] == year[2:] + year[:2]  # the year word, little-endian BCD
    assert clock["hex"][4:] == "".join(f"{v:02d}" for v in (
        now.tm_mon, now.tm_mday, now.tm_hour, now.tm_min, now.tm_sec, (now.tm_wday + 1) % 7))


def test_failures_raise_with_the_library_code(sim):
    controller = Controller("127.0.0.1", sim.tcp_port)
    # The controller refuses a wrong old password with its own error code (0x3C here). It
    # starts without one: six zero bytes.
    controller.set_password("", "654321")
    with pytest.raises(ZelError) as refused:
        controller.set_password("000000", "111111")
    assert refused.value.code == 0x3C
    assert refused.value.function == "zelDual_cmd_setPassword"
    assert sim.state()["settings"]["passwordSet"] is True

    # Nobody listens on the port: a transport failure, -1.
    with socket.socket() as s:
        s.bind(("127.0.0.1", 0))
        closed_port = s.getsockname()[1]
    with pytest.raises(ZelError) as unreachable:
        Controller("127.0.0.1", closed_port).set_time()
    assert unreachable.value.code == zel_sdk_dual.FAILURE == -1
