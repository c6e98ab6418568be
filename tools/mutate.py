#!/usr/bin/env python3
"""Mutation testing of src/: applies one small change at a time (a comparison
moved across its limit, a logical operator swapped, an integer literal moved
by one, a `!` dropped), rebuilds incrementally and runs the fast tests (units
and conformance files). A mutant no test fails on is a survivor: either a
missing case or an equivalent change, to be judged by reading it.

  tools/mutate.py [--build DIR] [--max N] [--seed S] [--list] FILE...
  tools/mutate.py --matrix OUT.jsonl [...] FILE...
  tools/mutate.py --redundant [--tests REGEX] OUT.jsonl...

With --matrix every mutant runs every fast case instead of stopping at the
first failure, and one line per mutant records which cases killed it: a
conformance case as FILE.kiv:LINE, a unit test by its name. A case that kills
nothing its siblings do not kill is a candidate to drop; --redundant lists
those printing cases of the conformance files. It keeps what a mutant cannot
reach: each operation's last case in its file, a case that calls nothing (it
reads what a call left in a variable) and a case with text beyond ASCII (it
checks a table: case folding, the code page). The list is to be read, not
applied: only src/ is mutated, so a case that checks what the driver or its
host objects hold looks redundant, and so does a case kept for a fault once
fixed (the fix removed the code a mutant would change). So does a case whose
only killers are mutants of files left out of the matrices (headers are
costly to mutate: each rebuilds its includers), and a case that checks the
words of a table (month names, numbers in words): no mutant changes a text.

Survivors read and judged equivalent (no input can tell them from the code)
or untestable here (they need a full disk, a failing kernel call) are listed
in tools/mutants_judged.txt, one per line as FILE: CHANGE: MUTATED LINE, a
tab, the verdict, a tab and why. They are not run again; a change to their
line makes them new mutants, to be judged anew.
"""
import argparse
import json
import os
import random
import re
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

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


def judged():
    """The judged mutants, keyed as FILE: CHANGE: MUTATED LINE."""
    path = ROOT / "tools/mutants_judged.txt"
    if not path.exists():
        return set()
    return {line.split("\t")[0] for line in path.read_text().splitlines() if line and not line.startswith("#")}


def run(cmd, timeout):
    try:
        return subprocess.run(cmd, cwd=ROOT, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              timeout=timeout).returncode
    except subprocess.TimeoutExpired:
        return -1


# The case files `kiv check` runs, with the options ctest gives them.
NOW = "2026-03-15 14:05:09"
PINS = ["--pin", "winver=Windows 10 10.0.19045", "--pin", "winbit=64", "--pin", "pcname=UFFICIO1",
        "--pin", "username=mario", "--pin", "ip=192.168.1.20"]
CASE_LINE = re.compile(r"^(?:.*/)?([\w.]+\.kiv):(\d+): ")
# Unit tests that spend seconds on processes or a million values: left out of
# the matrix, which would otherwise be run ten times slower.
SLOW_UNITS = "RegistryStoreCrash.*:IniProcesses.*:DelimitedScan.Longer*:LinearPaths.*:FmtNumDirectLayout.*:Table.NumbersFromOneTo511:DecimalDigitsOfADouble.*:RegistryStoreConcurrency.*"


def crashing_case(command, f, work):
    """The statement of `f` at which `command` (a `kiv ... check` without its
    file) crashes or hangs: the shortest crashing prefix of the file, found by
    halving. None when no prefix does (the whole file's state is needed)."""
    lines = f.read_text(encoding="utf-8").split("\n")
    starts = [i for i, l in enumerate(lines) if l.strip() and not l.lstrip().startswith("'")]
    prefix = Path(work, "prefix", f.name)
    prefix.parent.mkdir(exist_ok=True)

    def crashes(k):  # the first k statements, with their expected lines
        end = starts[k] if k < len(starts) else len(lines)
        prefix.write_text("\n".join(lines[:end]) + "\n", encoding="utf-8")
        try:
            return subprocess.run(command + [str(prefix)], cwd=work, capture_output=True, timeout=3,
                                  preexec_fn=bounded).returncode < 0
        except subprocess.TimeoutExpired:
            return True

    lo, hi = 1, len(starts)
    if not crashes(hi):
        return None
    while lo < hi:
        mid = (lo + hi) // 2
        if crashes(mid):
            hi = mid
        else:
            lo = mid + 1
    return starts[lo - 1] + 1


def bounded():
    """A mutant that loops appending to a text must not take the machine's
    memory (two workers run side by side): 6 GiB of address space each."""
    resource.setrlimit(resource.RLIMIT_AS, (6 << 30, 6 << 30))


def case_kills(build):
    """Every failing case of the fast tests: conformance lines and unit tests."""
    kiv = str(Path(build, "kiv").resolve())
    work = tempfile.mkdtemp(prefix="kiv-matrix-")
    kills, bisected = set(), 0
    try:
        os.makedirs(f"{work}/c/Windows")
        # In a session of its own: a mutant can leave a test's forked child
        # looping, and the whole group goes with the units when they are stopped.
        # Their output goes to a file: a program a test started in a session of
        # its own may outlive them, and a pipe it held would never end.
        log = open(f"{work}/units.log", "w+", encoding="utf-8", errors="replace")
        units = subprocess.Popen([str(Path(build, "kiv_tests").resolve()), f"--gtest_filter=-{SLOW_UNITS}"],
                                 cwd=work, stdout=log, stderr=subprocess.DEVNULL,
                                 start_new_session=True, preexec_fn=bounded)
        files = sorted(ROOT.glob("tests/conformance/*.kiv")) + [ROOT / "tests/system/empty_facts.kiv",
                                                                ROOT / "examples/tour.kiv"]
        for f in files:
            extra = ["--pin", "ip=", "--pin", "username=", "--pin", "winbit=x64"] if f.name == "empty_facts.kiv" else []
            command = [kiv, "--now", NOW, "--drive-c", f"{work}/c", "--registry", f"{work}/reg/{f.stem}",
                       *PINS, *extra, "check"]
            try:
                r = subprocess.run(command + [str(f)], cwd=work, capture_output=True, text=True, errors="replace",
                                   timeout=10, preexec_fn=bounded)
                found = {f"{m.group(1)}:{m.group(2)}" for m in map(CASE_LINE.match, r.stdout.splitlines()) if m}
                crashed = r.returncode < 0
            except subprocess.TimeoutExpired:
                found, crashed, r = set(), True, None
            if crashed:  # the output is lost with the process: find the case that took it down
                # (in the first few files only: a mutant that takes down many has killers enough)
                bisected += 1
                line = crashing_case(command, f, work) if bisected <= 3 else None
                found.add(f"{f.name}:{line if line else '*'}")
            elif r.returncode != 0 and not found:
                found = {f"{f.name}:*"}
            kills |= found
        try:
            units.wait(timeout=30)
        except subprocess.TimeoutExpired:
            pass
        try:  # the units if they hang, and children they left behind even when they ended in time
            os.killpg(units.pid, signal.SIGKILL)
        except ProcessLookupError:
            pass
        units.wait()
        log.seek(0)
        out = log.read()
        log.close()
        failed = set(re.findall(r"^\[  FAILED  \] ([\w/]+\.[\w/]+)", out, re.M))
        if units.returncode not in (0, 1) or (units.returncode == 1 and not failed):
            started = re.findall(r"^\[ RUN      \] ([\w/]+\.[\w/]+)", out, re.M)
            failed.add(f"{started[-1] if started else 'units'}:crashed")
        kills |= {f"unit:{t}" for t in failed}
    finally:
        shutil.rmtree(work, ignore_errors=True)
    return sorted(kills)


def matrix(args, todo, build):
    if run(build, 1800) != 0 or case_kills(args.build):
        print("the unmutated tree does not build or pass its tests", file=sys.stderr)
        return 2
    # A random order, so that a run stopped early is still a fair sample.
    random.Random(args.seed).shuffle(todo)
    done = set()
    out = Path(args.matrix)
    if out.exists():  # resumes a run that was stopped
        done = {json.loads(line)["where"] for line in out.read_text().splitlines() if line.strip()}
    with out.open("a") as sink:
        try:
            for k, (path, lines, (no, new, what)) in enumerate(todo, 1):
                where = f"{path.relative_to(ROOT)}:{no + 1}: {what}: {new.strip()}"
                if where in done:
                    continue
                original = "".join(lines)
                path.write_text("".join(lines[:no] + [new] + lines[no + 1:]))
                t = time.time()
                try:
                    kills = None if run(build, 1800) != 0 else case_kills(args.build)
                finally:
                    path.write_text(original)
                sink.write(json.dumps({"where": where, "kills": kills}) + "\n")
                sink.flush()
                verdict = "does not build" if kills is None else f"{len(kills)} cases" if kills else "SURVIVED"
                print(f"[{k}/{len(todo)}] {where[:90]}: {verdict} ({time.time() - t:.0f} s)", flush=True)
        finally:
            run(build, 1800)
    return 0


def printing_cases():
    """The `? ...` lines of the conformance files that a mutant can judge:
    FILE:LINE -> (the lines it takes, the names it calls, per file)."""
    cases = {}
    for f in sorted(ROOT.glob("tests/conformance/*.kiv")):
        lines = f.read_text(encoding="utf-8").splitlines()
        for no, line in enumerate(lines):
            if not line.startswith("? "):
                continue
            expected = 0
            while no + 1 + expected < len(lines) and lines[no + 1 + expected].lstrip().startswith("'=>"):
                expected += 1
            names = {n.lower() for n in re.findall(r"([A-Za-z_]\w*)\s*\(", line)}
            if expected and names and line.isascii():
                cases[f"{f.name}:{no + 1}"] = (1 + expected, {f"{f.name}:{n}" for n in names})
    return cases


def redundant(paths, only):
    """Cases whose kills all have another killer, dropped one at a time (the
    fewest kills and the most lines first) so no mutant loses its last one."""
    kills_of, killers = {}, {}
    mutants = built = 0
    for path in paths:
        for line in Path(path).read_text().splitlines():
            row = json.loads(line)
            mutants += 1
            if row["kills"] is None:
                continue
            built += 1
            for case in row["kills"]:
                kills_of.setdefault(case, set()).add(row["where"])
                killers.setdefault(row["where"], set()).add(case)
    cases = {c: v for c, v in printing_cases().items() if re.match(only, c)}
    calls = {}
    for case, (_, names) in cases.items():
        for n in names:
            calls[n] = calls.get(n, 0) + 1
    dropped, saved = [], 0
    for case in sorted(cases, key=lambda c: (len(kills_of.get(c, ())), -cases[c][0], c)):
        size, names = cases[case]
        if any(calls[n] < 2 for n in names) or any(len(killers[m]) < 2 for m in kills_of.get(case, ())):
            continue
        for m in kills_of.get(case, ()):
            killers[m].discard(case)
        for n in names:
            calls[n] -= 1
        dropped.append(case)
        saved += size
    killed = sum(1 for k in killers.values() if k)
    print(f"{mutants} mutants, {built} built, {killed} killed ({100.0 * killed / max(built, 1):.1f}%); "
          f"{len(dropped)} of {len(cases)} printing cases kill nothing the others do not ({saved} lines):")
    for case in sorted(dropped, key=lambda c: (c.split(":")[0], int(c.split(":")[1]))):
        print("  " + case)
    return 0


def main():
    # A stopped run puts the mutated file back (background jobs ignore Ctrl-C).
    signal.signal(signal.SIGTERM, lambda *_: sys.exit(3))
    ap = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    ap.add_argument("files", nargs="+", help="source files under src/ to mutate (with --redundant: matrices)")
    ap.add_argument("--build", default="build")
    ap.add_argument("--max", type=int, default=0, help="at most this many mutants (a seeded random sample)")
    ap.add_argument("--seed", type=int, default=17)
    ap.add_argument("--list", action="store_true", help="only list the mutants")
    ap.add_argument("--tests", default="", help="ctest -R regex (default: every fast test); with --redundant, the case files to look at")
    ap.add_argument("--matrix", default="", help="record which cases kill each mutant, as JSON lines")
    ap.add_argument("--redundant", action="store_true", help="list the cases a matrix shows to kill nothing of their own")
    args = ap.parse_args()
    if args.redundant:
        return redundant(args.files, args.tests)

    todo, skip = [], judged()
    for f in args.files:
        path = (ROOT / f).resolve()
        lines, found = mutants(path)
        todo += [(path, lines, m) for m in found
                 if f"{path.relative_to(ROOT)}: {m[2]}: {m[1].strip()}" not in skip]
    if args.max and len(todo) > args.max:
        keep = sorted(random.Random(args.seed).sample(range(len(todo)), args.max))
        todo = [todo[i] for i in keep]
    if args.list:
        for path, lines, (no, new, what) in todo:
            print(f"{path.relative_to(ROOT)}:{no + 1}: {what}: {new.strip()}")
        return 0

    build = ["cmake", "--build", args.build, "-j2", "--target", "kiv", "kiv_tests"]
    if args.matrix:
        return matrix(args, todo, build)
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
