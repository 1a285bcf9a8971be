#!/usr/bin/env bash
# Sets up, builds and runs the demo host program against the built-in controller simulator.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh
cmake -S . -B build -G Ninja >/dev/null
cmake --build build -j2

exec build/examples/zel_demo "$@"
