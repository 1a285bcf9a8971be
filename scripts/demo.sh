#!/usr/bin/env bash
# Builds everything, starts the controller simulator on loopback, runs the demo host program
# against it (a G5 program with a text area, a picture area with a frame, a digital and an analog
# clock), and stops the simulator. The pictures of the panel land in ./demo-out (or the folder given as $1).
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh
cmake -S . -B build -G Ninja >/dev/null
cmake --build build -j2 --target zel_sdk_dual zel-sim

# The examples are a host project of their own: they find the library where it is installed,
# here a staging prefix inside the build tree.
stage="$PWD/build/stage"
cmake --install build --prefix "$stage" >/dev/null
cmake -S examples -B build/examples -G Ninja -DCMAKE_PREFIX_PATH="$stage" \
  -DCMAKE_BUILD_RPATH="$stage/lib" >/dev/null
cmake --build build/examples

out=$(realpath -m "${1:-demo-out}")
work=$(mktemp -d)
mkdir -p "$out"
rm -f "$out"/P001*

# A G5 controller (type 0x0051: bit planes in bytes) with a two-colour screen of 128 x 64, on a
# free loopback port that the simulator prints.
build/tools/sim/zel-sim --type 0x0051 --bind 127.0.0.1 --tcp-port 0 --no-udp --no-at \
  --no-serial --screen 128x64 --color 2 --panel-out "$out" >"$work/sim.log" 2>&1 &
sim=$!
trap 'kill "$sim" 2>/dev/null; wait "$sim" 2>/dev/null || true; rm -rf "$work"' EXIT

port=""
for _ in $(seq 50); do
  port=$(sed -n 's/^tcp: 127\.0\.0\.1:\([0-9]*\)$/\1/p' "$work/sim.log")
  [ -n "$port" ] && break
  sleep 0.1
done
if [ -z "$port" ]; then
  echo "demo: the simulator did not start:" >&2
  cat "$work/sim.log" >&2
  exit 1
fi

# The demo writes its generated pictures into its working directory.
(cd "$work" && "$OLDPWD/build/examples/zel_demo" 127.0.0.1 "$port" "$out")

echo
echo "== what the simulator saw"
grep -v '^tcp:\|^zel-sim:' "$work/sim.log" | tail -n 5
