#!/usr/bin/env bash
# Builds the benchmarks in Release (build-bench/) and runs them all, each repeated, the
# repetitions of a program's benchmarks interleaved in random order so that a slow spell of the
# machine does not land on one side of a ratio; prints the machine, the compiler and the ratio
# table of every program, and keeps the whole report in build-bench/bench-report.md (the full
# benchmark output in build-bench/<program>.txt).
# ZEL_BENCH_REPETITIONS (default 9) and ZEL_BENCH_FILTER (a --benchmark_filter) change the run.
set -euo pipefail
cd "$(dirname "$0")/.."

bash scripts/setup.sh

repetitions=${ZEL_BENCH_REPETITIONS:-9}
filter=${ZEL_BENCH_FILTER:-.}
out=build-bench
programs=(crc_bench wire_bench encode_bench layout_bench program_bench transfer_bench dynamic_bench)

cmake -S . -B "$out" -G Ninja -DCMAKE_BUILD_TYPE=Release -DZEL_TESTS=OFF >/dev/null
cmake --build "$out" -j2 --target "${programs[@]}"

report=$out/bench-report.md
{
  echo "# Benchmark run of $(date -u '+%Y-%m-%d %H:%M UTC')"
  echo
  echo "- Processor: $(lscpu | sed -n 's/^Model name: *//p'), $(nproc) cores"
  echo "- Compiler: $(c++ --version | head -n 1), Release (-O3)"
  echo "- Load average at the start: $(cut -d ' ' -f 1-3 /proc/loadavg)"
  echo "- Repetitions: $repetitions, interleaved in random order, medians compared"
} | tee "$report"

for program in "${programs[@]}"; do
  echo "== $program" >&2
  "$out/bench/$program" --benchmark_repetitions="$repetitions" \
    --benchmark_enable_random_interleaving=true --benchmark_report_aggregates_only=true \
    --benchmark_min_time=0.2 --benchmark_filter="$filter" --benchmark_color=false \
    >"$out/$program.txt" 2>&1
  { echo; echo "# $program"; sed -n '/^## Ratios/,$p' "$out/$program.txt" | tail -n +2; } | tee -a "$report"
done
