#!/usr/bin/env bash
# Is_CFTest against python-stdnum's codicefiscale.is_valid (Debian's
# python3-stdnum) on the same million generated codici fiscali, whole
# process against whole process; prints both times (wall and CPU), the
# ratios and the peak resident size of each.
#   [PEER_RUNS=3] bench/peer_stdnum.sh [BUILD_DIR]
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

cmake --build "$build" --target kiv >/dev/null
c++ -std=c++20 -O2 -Isrc bench/peer/cf_batch.cpp "$build/libkiv.a" -lsqlite3 -o "$work/cf_batch"

# A million codes of real shape, one in ten with a wrong check letter.
/usr/bin/python3 - "$work/codes.txt" <<'PY'
import random, sys
from stdnum.it import codicefiscale
r = random.Random(20260315)
L = "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
with open(sys.argv[1], "w") as f:
    for i in range(1_000_000):
        day = r.randint(1, 28) + (40 if r.random() < 0.5 else 0)
        body = ("".join(r.choice(L) for _ in range(6)) + f"{r.randint(0, 99):02d}" + r.choice("ABCDEHLMPRST")
                + f"{day:02d}" + r.choice(L) + f"{r.randint(0, 999):03d}")
        check = codicefiscale.calc_check_digit(body)
        if i % 10 == 0:
            check = L[(L.index(check) + 1) % 26]
        f.write(body + check + "\n")
PY

# Each side runs PEER_RUNS times (3); its best wall and best CPU time count,
# so that a moment of the shared machine's load does not decide the ratio.
runs=${PEER_RUNS:-3}
measure() {  # NAME COMMAND...: seconds (wall, CPU), peak KiB and the count accepted
  local name=$1; shift
  local best_secs=999999 best_cpu=999999 secs user sys kib cpu
  for ((run = 0; run < runs; run++)); do
    /usr/bin/time -f "%e %U %S %M" -o "$work/$name.time" "$@" <"$work/codes.txt" >"$work/$name.out"
    read -r secs user sys kib <"$work/$name.time"
    cpu=$(awk -v u="$user" -v s="$sys" 'BEGIN { printf "%.2f", u + s }')
    best_secs=$(awk -v a="$best_secs" -v b="$secs" 'BEGIN { print (b < a ? b : a) }')
    best_cpu=$(awk -v a="$best_cpu" -v b="$cpu" 'BEGIN { print (b < a ? b : a) }')
  done
  echo "$name: $(cat "$work/$name.out") valid, best of $runs: ${best_secs} s wall, ${best_cpu} s CPU, peak ${kib} KiB"
  eval "${name}_secs=$best_secs ${name}_cpu=$best_cpu"
}
measure stdnum /usr/bin/python3 -c '
import sys
from stdnum.it.codicefiscale import is_valid
print(sum(1 for line in sys.stdin if is_valid(line.rstrip("\n"))))'
measure kiv "$work/cf_batch"
if [ "$(cat "$work/stdnum.out")" != "$(cat "$work/kiv.out")" ]; then echo "note: the two count differently" >&2; fi
# On a shared machine the CPU times are the steadier of the two ratios.
awk -v a="$stdnum_secs" -v b="$kiv_secs" -v c="$stdnum_cpu" -v d="$kiv_cpu" 'BEGIN {
  printf "ratio: Is_CFTest is %.0fx python-stdnum in wall time, %.0fx in CPU time\n", a / (b > 0.01 ? b : 0.01), c / (d > 0.01 ? d : 0.01) }'
