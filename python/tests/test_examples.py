"""The examples run as a user runs them, against zel-sim: each ends with status 0 and leaves
on the simulator what it says it sends."""

import os
import pathlib
import subprocess
import sys

EXAMPLES = pathlib.Path(__file__).resolve().parents[1] / "examples"


def run(example, *args):
    env = dict(os.environ, PYTHONPATH=str(EXAMPLES.parent))
    done = subprocess.run([sys.executable, str(EXAMPLES / example), *map(str, args)], env=env,
                          capture_output=True, text=True, timeout=60)
    assert done.returncode == 0, done.stdout + done.stderr
    return done.stdout


def test_the_examples_reach_the_simulator(sim):
    run("ping_and_set_time.py", "127.0.0.1", sim.tcp_port)
    assert sim.state()["settings"]

    run("send_g5_program.py", "127.0.0.1", sim.tcp_port)
    assert list(sim.panel.glob("P*-panel.png")), sim.output()

    run("push_counter.py", "127.0.0.1", sim.tcp_port, 1)
    assert "dynamic areas" in sim.output()
