#!/usr/bin/env bash
# Builds the project with gcov instrumentation in build-cov/, runs every test (all labels), and
# reports the line and branch coverage of src/ and tools/: the totals, then one row per folder
# (src/<layer>, tools/<tool>). The report is also kept in build-cov/coverage.txt and, per file,
# in build-cov/coverage.json.
#   bash scripts/coverage.sh            # everything
#   ZEL_COVERAGE_TESTS='-LE slow' bash scripts/coverage.sh   # ctest arguments of your choice
set -euo pipefail
cd "$(dirname "$0")/.."

if ! command -v gcovr >/dev/null; then
  if [ "$(id -u)" -ne 0 ]; then
    echo "coverage: gcovr is missing (apt-get install gcovr)" >&2
    exit 1
  fi
  DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends gcovr >/dev/null
fi

build=build-cov
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Debug -DZEL_COVERAGE=ON -DZEL_BENCH=OFF \
  >/dev/null
cmake --build "$build" -j2
find "$build" -name '*.gcda' -delete
# shellcheck disable=SC2086
ctest --test-dir "$build" -j2 --output-on-failure ${ZEL_COVERAGE_TESTS:-}

# Branches the compiler adds for exceptions are not the code's own decisions.
gcovr -r . --object-directory "$build" --filter 'src/' --filter 'tools/' \
  --exclude-throw-branches --exclude-unreachable-branches \
  --json-summary "$build/coverage.json" --json-summary-pretty -j 2 >/dev/null

python3 - "$build/coverage.json" <<'EOF' | tee "$build/coverage.txt"
import collections, json, sys

report = json.load(open(sys.argv[1]))
folders = collections.defaultdict(lambda: [0, 0, 0, 0])
for f in report["files"]:
    parts = f["filename"].split("/")
    key = "/".join(parts[:2]) if len(parts) > 2 else parts[0]
    row = folders[key]
    row[0] += f["line_covered"]; row[1] += f["line_total"]
    row[2] += f["branch_covered"]; row[3] += f["branch_total"]

def pct(a, b):
    return f"{100.0 * a / b:5.1f} %" if b else "    - "

def line(name, row):
    print(f"| {name:<14} | {pct(row[0], row[1])} | {row[0]:>6} / {row[1]:<6} "
          f"| {pct(row[2], row[3])} | {row[2]:>6} / {row[3]:<6} |")

print("| folder         |  lines  | covered / total |  branches | covered / total |")
print("|----------------|---------|-----------------|-----------|-----------------|")
for top in ("src", "tools"):
    total = [0, 0, 0, 0]
    for key in sorted(k for k in folders if k.startswith(top + "/")):
        line(key, folders[key])
        total = [a + b for a, b in zip(total, folders[key])]
    line(top + "/ (all)", total)
EOF
