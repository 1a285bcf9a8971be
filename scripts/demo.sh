#!/usr/bin/env bash
# Builds everything and runs both demo host programs against the controller simulator on
# loopback, each on a simulator of its own that is stopped afterwards:
#   - examples/demo.c, a G5 program (a text area, a picture area with a frame, a digital and an
#     analog clock), on a G5 controller (type 0x0051);
#   - examples/demo_g6.c, a G6 program (a background, a text area, a picture area with sound and
#     a digital clock) in its program and data files, on a G6 controller (type 0x0063);
#   - examples/demo_dynamic.c, a counter pushed as a dynamic area once a second for 4 seconds,
#     to a G5 and then to a G6 controller.
# The pictures of the panels land in ./demo-out (or the folder given as $1): P001* of the G5
# program, P002* of the G6 one, dynamic-g5.png and dynamic-g6.png the screens with the counter.
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
rm -f "$out"/P001* "$out"/P002* "$out"/live-panel.png "$out"/dynamic-g5.png "$out"/dynamic-g6.png
sim=""
stop_sim() {
  if [ -n "$sim" ]; then
    kill "$sim" 2>/dev/null || true
    wait "$sim" 2>/dev/null || true
    sim=""
  fi
}
trap 'stop_sim; rm -rf "$work"' EXIT

# Starts zel-sim as controller TYPE with a two-colour screen of 128 x 64 on a free loopback
# port, runs EXAMPLE against it in the scratch folder (the examples write their generated
# pictures into their working directory) with any further arguments, and stops the simulator.
run_demo() {
  local type="$1" example="$2" log="$work/sim-$1-$2.log" port=""
  shift 2
  build/tools/sim/zel-sim --type "$type" --bind 127.0.0.1 --tcp-port 0 --no-udp --no-at \
    --no-serial --screen 128x64 --color 2 --panel-out "$out" >"$log" 2>&1 &
  sim=$!
  for _ in $(seq 50); do
    port=$(sed -n 's/^tcp: 127\.0\.0\.1:\([0-9]*\)$/\1/p' "$log")
    [ -n "$port" ] && break
    sleep 0.1
  done
  if [ -z "$port" ]; then
    echo "demo: the simulator did not start:" >&2
    cat "$log" >&2
    exit 1
  fi
  (cd "$work" && "$OLDPWD/build/examples/$example" 127.0.0.1 "$port" "$out" "$@")
  stop_sim
  echo
  echo "== what the simulator ($type) saw"
  grep -v '^tcp:\|^zel-sim:' "$log" | tail -n 5
  echo
}

# A G5 controller: bit planes in bytes.
run_demo 0x0051 zel_demo
# A G6 controller: bit planes in 32-bit words; the program comes as two files.
run_demo 0x0063 zel_demo_g6
# Dynamic areas: the counter on a G5 and on a G6 controller, each screen kept under a name of
# its own.
run_demo 0x0051 zel_demo_dynamic g5
mv "$out/live-panel.png" "$out/dynamic-g5.png"
run_demo 0x0063 zel_demo_dynamic g6
mv "$out/live-panel.png" "$out/dynamic-g6.png"
