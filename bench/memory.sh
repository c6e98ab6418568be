#!/usr/bin/env bash
# Memory of the driver and of the benchmark programs: the peak resident size
# of `kiv run` on a script of 1,000 and of 100,000 lines of common calls, of
# the benchmarks (each run briefly) and of the leak check, which calls each
# benchmarked operation a million times and fails when the heap grows.
#   bench/memory.sh [BUILD_DIR]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --build "$build" --target kiv kiv_bench kiv_leak_check >/dev/null

# LINES lines cycling through a dozen everyday calls, half of them printed.
calls=(
  'x = FmtNum(1234.5, 12, 2)'
  '? FmtNum(-987654.321, 15, 3, True)'
  's = SostChar("Rossi, Mario.", " ,.", "")'
  '? Is_CFTest("RSSMRA80A01H501U")'
  'r = GetPipeStr("alfa|beta|gamma", 2)'
  '? PipeCount("a|b|c|d")'
  'v = ToNumber("1.234,56")'
  '? CalcIVA(100, 22)'
  't = PoniADes("42", 10)'
  '? Dat2Str(#2026-03-15#)'
  'w = SostWord("a x b x c", "x", "yy")'
  '? Is_PITest("01234567897")'
)
script() {
  local i
  for ((i = 0; i < $1; i++)); do printf '%s\n' "${calls[i % ${#calls[@]}]}"; done >"$work/script$1.kiv"
}

peak() {  # COMMAND...: the peak resident size in KiB
  /usr/bin/time -f "%M" -o "$work/peak" "$@" >/dev/null 2>"$work/stderr" || { cat "$work/stderr" >&2; return 1; }
  cat "$work/peak"
}

for n in 1000 100000; do
  script "$n"
  echo "kiv run, $n lines: peak $(peak "$build/kiv" --now "2026-03-15 14:05:09" run "$work/script$n.kiv") KiB"
done
echo "kiv_bench, every benchmark briefly: peak $(peak "$build/kiv_bench" --benchmark_min_time=0.01) KiB"
# The code checks hold their sets of a million codes, one String each.
codes='IsCFTest|IsPITest|EAN'
echo "kiv_bench, all but the million-code sets: peak $(peak "$build/kiv_bench" --benchmark_min_time=0.01 --benchmark_filter="-$codes") KiB"
"$build/kiv_leak_check"
