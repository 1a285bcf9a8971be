#!/usr/bin/env bash
# Sets up, builds and runs every test: the normal build with all tests (slow ones and the soak
# included), the AddressSanitizer + UndefinedBehaviorSanitizer build and the ThreadSanitizer
# build with the unit and integration tests, and a bounded libFuzzer run of every fuzz target.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh

jobs=2
fuzz_seconds=${ZEL_FUZZ_SECONDS:-10}

echo "== build"
cmake -S . -B build -G Ninja -DZEL_WERROR=ON >/dev/null
cmake --build build -j"$jobs"

echo "== tests"
ctest --test-dir build -j"$jobs" --output-on-failure

echo "== reference documentation (fails on an undocumented export)"
cmake --build build --target docs

echo "== Debian package, installed into a scratch root, and a host project built against it"
bash scripts/package_test.sh build

echo "== sanitizer build"
cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DZEL_SANITIZE=ON -DZEL_BENCH=OFF >/dev/null
cmake --build build-asan -j"$jobs"

echo "== tests under AddressSanitizer and UndefinedBehaviorSanitizer"
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
  ctest --test-dir build-asan -j"$jobs" --output-on-failure -LE 'slow|soak'

echo "== thread sanitizer build"
cmake -S . -B build-tsan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DZEL_SANITIZE=thread -DZEL_BENCH=OFF \
  >/dev/null
cmake --build build-tsan -j"$jobs"

# setarch -R: the sanitizer's fixed memory layout does not fit every randomised address space.
echo "== tests under ThreadSanitizer"
TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1 \
  setarch "$(uname -m)" -R ctest --test-dir build-tsan -j"$jobs" --output-on-failure -LE 'slow|soak'

echo "== fuzz build"
CC=clang CXX=clang++ cmake -S . -B build-fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DZEL_FUZZ=ON -DZEL_TESTS=OFF -DZEL_BENCH=OFF >/dev/null
cmake --build build-fuzz -j"$jobs" --target zel_fuzz_targets

echo "== bounded fuzz run (${fuzz_seconds} s per target)"
for target in build-fuzz/fuzz/fuzz_*; do
  name=$(basename "$target")
  corpus=$(mktemp -d)
  cp fuzz/corpus/"${name#fuzz_}"/* "$corpus"/
  "$target" -max_total_time="$fuzz_seconds" -print_final_stats=0 "$corpus" 2>&1 | tail -n 3
  rm -rf "$corpus"
done

echo "== all tests passed"
