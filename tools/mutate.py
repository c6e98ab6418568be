#!/usr/bin/env python3
"""Mutation testing of src/: applies one small change at a time (a comparison
moved across its limit, a logical operator swapped, an integer literal moved
by one, a `!` dropped), rebuilds incrementally and runs the fast tests (units
and conformance files). A mutant no test fails on is a survivor: either a
missing case or an equivalent change, to be judged by reading it.

  tools/mutate.py [--build DIR] [--max N] [--seed S] [--list] FILE...
"""
import argparse
import random
import re
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

# (pattern, replacement) pairs; each match of a pattern is one mutant.
# (pattern, replacement) pairs; each match of a pattern is one mutant. The
# comparisons are the ones written between blanks, as the code's layout has
# them, which leaves template brackets and shifts alone.
SWAPS = [
    (r"(?<= )<=(?= )", "<"),
    (r"(?<= )<(?= )", "<="),
    (r"(?<= )>=(?= )", ">"),
    (r"(?<= )>(?= )", ">="),
    (r"(?<= )==(?= )", "!="),
    (r"(?<= )!=(?= )", "=="),
    (r"(?<= )&&(?= )", "||"),
    (r"(?<= )\|\|(?= )", "&&"),
    (r"(?<![!=])!(?=[\w(*])", ""),
]
INT = re.compile(r"(?<![\w.'])(\d+)(?![\w.'])")


def code_spans(line):
    """The parts of a line outside comments, strings and character literals."""
    spans, i, start, n = [], 0, 0, len(line)
    while i < n:
        c = line[i]
        if line.startswith("//", i):
            break
        if c in "\"'" or (c == "u" and i + 1 < n and line[i + 1] in "\"'" and (i == 0 or not line[i - 1].isalnum())):
            spans.append((start, i))
            if c == "u":
                i += 1
            q = line[i]
            i += 1
            while i < n and line[i] != q:
                i += 2 if line[i] == "\\" else 1
            start = i + 1
        i += 1
    spans.append((start, min(i, n)))
    return [(a, b) for a, b in spans if b > a]


def mutants(path):
    lines = path.read_text().splitlines(keepends=True)
    found = []
    for no, line in enumerate(lines):
        s = line.lstrip()
        if s.startswith(("#", "//", "* ", "*/", "/*")) or s.strip() == "*" or "static_assert" in line:
            continue
        for a, b in code_spans(line):
            part = line[a:b]
            for pat, rep in SWAPS:
                for m in re.finditer(pat, part):
                    new = line[: a + m.start()] + rep + line[a + m.end():]
                    found.append((no, new, f"{m.group(0)} -> {rep or 'drop'}"))
            for m in INT.finditer(part):
                v = int(m.group(1))
                for d in (1, -1):
                    if v + d < 0:
                        continue
                    new = line[: a + m.start()] + str(v + d) + line[a + m.end():]
                    found.append((no, new, f"{v} -> {v + d}"))
    return lines, found


def run(cmd, timeout):
    try:
        return subprocess.run(cmd, cwd=ROOT, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              timeout=timeout).returncode
    except subprocess.TimeoutExpired:
        return -1


def main():
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument("files", nargs="+", help="source files under src/ to mutate")
    ap.add_argument("--build", default="build")
    ap.add_argument("--max", type=int, default=0, help="at most this many mutants (a seeded random sample)")
    ap.add_argument("--seed", type=int, default=17)
    ap.add_argument("--list", action="store_true", help="only list the mutants")
    ap.add_argument("--tests", default="", help="ctest -R regex (default: every fast test)")
    args = ap.parse_args()

    todo = []
    for f in args.files:
        path = (ROOT / f).resolve()
        lines, found = mutants(path)
        todo += [(path, lines, m) for m in found]
    if args.max and len(todo) > args.max:
        keep = sorted(random.Random(args.seed).sample(range(len(todo)), args.max))
        todo = [todo[i] for i in keep]
    if args.list:
        for path, lines, (no, new, what) in todo:
            print(f"{path.relative_to(ROOT)}:{no + 1}: {what}: {new.strip()}")
        return 0

    build = ["cmake", "--build", args.build, "-j2", "--target", "kiv", "kiv_tests"]
    test = ["ctest", "--test-dir", args.build, "-j2", "--stop-on-failure", "--timeout", "60",
            "-E", r"^(windows|install)\."] + (["-R", args.tests] if args.tests else [])
    if run(build, 1800) != 0 or run(test, 1800) != 0:
        print("the unmutated tree does not build or pass its tests", file=sys.stderr)
        return 2

    killed, unbuilt, survivors = 0, 0, []
    try:
        for k, (path, lines, (no, new, what)) in enumerate(todo, 1):
            original = "".join(lines)
            path.write_text("".join(lines[:no] + [new] + lines[no + 1:]))
            t = time.time()
            where = f"{path.relative_to(ROOT)}:{no + 1}: {what}"
            try:
                if run(build, 1800) != 0:
                    unbuilt += 1
                    verdict = "does not build"
                elif run(test, 1800) != 0:
                    killed += 1
                    verdict = "killed"
                else:
                    survivors.append(f"{where}: {new.strip()}")
                    verdict = "SURVIVED"
            finally:
                path.write_text(original)
            print(f"[{k}/{len(todo)}] {where}: {verdict} ({time.time() - t:.0f} s)", flush=True)
    finally:
        run(build, 1800)  # leave the build matching the tree
    built = killed + len(survivors)
    print(f"\n{built} mutants built, {killed} killed ({100.0 * killed / max(built, 1):.1f}%), "
          f"{unbuilt} did not build, {len(survivors)} survived:")
    for s in survivors:
        print("  " + s)
    return 0 if not survivors else 1


if __name__ == "__main__":
    sys.exit(main())
