#!/usr/bin/env bash
# Long fuzz runs: builds the libFuzzer targets and runs each, as one job at low priority, for
# 10 million executions (or as many as ZEL_FUZZ_RUNS says; ZEL_FUZZ_MAX_SECONDS caps each run's
# time), one after the other, on copies of the seed corpora. Names given on the command line
# limit the run to those targets (e.g. fuzz_unpack fuzz_datagram). Each target's count, time
# and any crash go to build-fuzz/long/<target>.log; a crash leaves its input as
# build-fuzz/long/crash-* and stops the run with an error. The library's console lines (standard output) are dropped.
set -euo pipefail
cd "$(dirname "$0")/.."

runs=${ZEL_FUZZ_RUNS:-10000000}
max_seconds=${ZEL_FUZZ_MAX_SECONDS:-0}

CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DZEL_FUZZ=ON -DZEL_TESTS=OFF -DZEL_BENCH=OFF >/dev/null
cmake --build build-fuzz -j2 --target zel_fuzz_targets

mkdir -p build-fuzz/long
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  for target in build-fuzz/fuzz/fuzz_*; do targets+=("$(basename "$target")"); done
fi
for name in "${targets[@]}"; do
  corpus=build-fuzz/long/corpus-${name#fuzz_}
  mkdir -p "$corpus"
  cp -n fuzz/corpus/"${name#fuzz_}"/* "$corpus"/
  log=build-fuzz/long/$name.log
  echo "== $name: $runs executions (log in $log)"
  start=$(date +%s)
  if ! nice build-fuzz/fuzz/"$name" -runs="$runs" -max_total_time="$max_seconds" \
      -print_final_stats=1 -close_fd_mask=1 -artifact_prefix=build-fuzz/long/ "$corpus" \
      >"$log" 2>&1; then
    tail -n 30 "$log"
    echo "== $name found a crash: see $log" >&2
    exit 1
  fi
  end=$(date +%s)
  grep -E "stat::number_of_executed_units|Done [0-9]+ runs" "$log" | tail -n 2 || true
  echo "== $name: $((end - start)) s"
done
