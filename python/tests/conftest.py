"""The simulator for the package's tests: zel-sim from the build tree ($ZEL_SIM) on free
loopback ports, with its panel pictures in a scratch folder and its live view's state."""

import json
import os
import pathlib
import re
import subprocess
import sys
import time
import urllib.request

import pytest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1]))


class Sim:
    def __init__(self, executable, folder, controller_type):
        self.panel = folder / "panel"
        self.log = open(folder / "sim.log", "w+")
        self.process = subprocess.Popen(
            [executable, "--type", controller_type, "--bind", "127.0.0.1", "--tcp-port", "0",
             "--no-udp", "--no-at", "--no-serial", "--screen", "128x64", "--color", "2",
             "--panel-out", str(self.panel), "--web", "0"],
            stdout=self.log, stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL)
        deadline = time.monotonic() + 10
        self.tcp_port = self.web_port = None
        while time.monotonic() < deadline and self.web_port is None:
            time.sleep(0.05)
            self.log.seek(0)
            text = self.log.read()
            tcp = re.search(r"^tcp: 127\.0\.0\.1:(\d+)$", text, re.M)
            web = re.search(r"^web: http://127\.0\.0\.1:(\d+)/$", text, re.M)
            if tcp and web:
                self.tcp_port, self.web_port = int(tcp.group(1)), int(web.group(1))
        if self.web_port is None:
            self.stop()
            raise RuntimeError("zel-sim did not start:\n" + text)

    def state(self):
        """The live view's state: programs, last requests, settings."""
        url = f"http://127.0.0.1:{self.web_port}/state.json"
        direct = urllib.request.build_opener(urllib.request.ProxyHandler({}))
        with direct.open(url, timeout=5) as answer:
            return json.load(answer)

    def output(self):
        self.log.seek(0)
        return self.log.read()

    def stop(self):
        self.process.terminate()
        try:
            self.process.wait(timeout=5)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        self.log.close()


def start(folder, controller_type):
    executable = os.environ.get("ZEL_SIM")
    if not executable:
        pytest.skip("ZEL_SIM names no zel-sim (ctest sets it)")
    return Sim(executable, folder, controller_type)


@pytest.fixture
def sim(tmp_path):
    """A G5 controller (0x0051)."""
    simulator = start(tmp_path, "0x0051")
    yield simulator
    simulator.stop()


@pytest.fixture
def sim_g6(tmp_path):
    """A G6 controller (0x0063)."""
    simulator = start(tmp_path, "0x0063")
    yield simulator
    simulator.stop()


@pytest.fixture(autouse=True)
def scratch_directory(tmp_path, monkeypatch):
    """The library writes files into the working directory ("dataFantx.bin", ...)."""
    monkeypatch.chdir(tmp_path)
