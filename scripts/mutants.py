#!/usr/bin/env python3
"""Mutation check of the core: plant one small fault at a time, run the tests.

Every candidate mutant of src/data, src/map, src/analysis and src/interact is
listed, a reproducible sample is drawn (--seed), and each sampled mutant is
compiled into the shared core library of a build of its own and tested with
CTest. A mutant is killed when a test fails or times out, survives when every
test passes, and is stillborn (not counted) when it does not compile.

Called by scripts/mutate.sh, which configures the build first.
"""
import argparse
import os
import random
import re
import shutil
import signal
import subprocess
import sys
import time

CORE_DIRS = ("src/data", "src/map", "src/analysis", "src/interact")

# Function swaps: a rounding for another, a floor for a ceiling.
CALL_SWAPS = {
    "std::floor(": ["std::ceil(", "std::round("],
    "std::ceil(": ["std::floor("],
    "std::round(": ["std::floor(", "conv::roundHalfEven("],
    "conv::roundHalfEven(": ["std::round(", "std::floor("],
    "conv::floorInt32(": ["conv::toInt32("],
    "conv::toInt32(": ["conv::floorInt32("],
    "conv::toInt16(": ["conv::floorInt32("],
    "conv::intDiv(": ["conv::divide("],
}
RELATIONS = {" < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > "}
CLAMPS = ("std::clamp(", "std::min(", "std::max(", "qBound(")


def masked(line):
    """The line with string and character literals blanked and the comment
    cut, so that mutants only touch code."""
    out, i, quote = [], 0, None
    while i < len(line):
        c = line[i]
        if quote:
            if c == "\\":
                out.append("  ")
                i += 2
                continue
            out.append(c if c == quote else " ")
            if c == quote:
                quote = None
        elif c in "\"'":
            # A digit separator (1'000) is no character literal.
            if c == "'" and i > 0 and line[i - 1].isdigit():
                out.append(c)
            else:
                quote = c
                out.append(c)
        elif line.startswith("//", i):
            break
        else:
            out.append(c)
        i += 1
    return "".join(out)


def argument_end(text, start):
    """Index of the comma or parenthesis that ends the argument at start."""
    depth = 0
    for i in range(start, len(text)):
        c = text[i]
        if c in "([{":
            depth += 1
        elif c in ")]}":
            if depth == 0:
                return i
            depth -= 1
        elif c == "," and depth == 0:
            return i
    return -1


def line_mutants(code):
    """(column, old text, new text, kind) for one masked line of code."""
    for old, news in CALL_SWAPS.items():
        for m in re.finditer(re.escape(old), code):
            if old.startswith("std::") and m.start() > 0 and code[m.start() - 1] in ":_":
                continue
            for new in news:
                yield m.start(), old, new, "rounding"
    for old, new in RELATIONS.items():
        for m in re.finditer(re.escape(old), code):
            yield m.start(), old, new, "relation"
    for m in re.finditer(r"(?<![\w.])([+-]) 1(?![\w.])", code):
        other = "-" if m.group(1) == "+" else "+"
        yield m.start(), m.group(0), f"{other} 1", "plus-minus one"
    for m in re.finditer(r"(?<![\w.])(\d+)(\.\d+)?(?![\w.'])", code):
        whole = int(m.group(1))
        if whole > 1 or m.group(2):
            yield m.start(), m.group(0), f"{whole + 1}{m.group(2) or ''}", "constant"
    for name in CLAMPS:
        for m in re.finditer(re.escape(name), code):
            if m.start() > 0 and (code[m.start() - 1].isalnum() or code[m.start() - 1] in "_:"):
                continue
            open_at = m.end()
            first = argument_end(code, open_at)
            close = first
            while close >= 0 and code[close] == ",":
                close = argument_end(code, close + 1)
            if first < 0 or close < 0 or code[first] != ",":
                continue
            yield m.start(), code[m.start():close + 1], code[open_at:first], "dropped clamp"


def candidates(root):
    found = []
    for folder in CORE_DIRS:
        for dirpath, _, files in sorted(os.walk(os.path.join(root, folder))):
            for name in sorted(files):
                if not name.endswith(".cpp"):
                    continue
                path = os.path.relpath(os.path.join(dirpath, name), root)
                in_block = False
                with open(os.path.join(root, path), encoding="utf-8") as f:
                    for number, line in enumerate(f, 1):
                        stripped = line.strip()
                        if in_block:
                            in_block = "*/" not in stripped
                            continue
                        if stripped.startswith("/*"):
                            in_block = "*/" not in stripped
                            continue
                        if stripped.startswith("#") or stripped.startswith("static_assert"):
                            continue
                        for column, old, new, kind in line_mutants(masked(line)):
                            found.append((path, number, column, old, new, kind))
    return found


def run(command, cwd, timeout=None):
    return subprocess.run(command, cwd=cwd, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                          timeout=timeout).returncode


def restore_object(obj):
    """Puts back the untouched object file saved beside obj, newer than its
    source and its library, so that the next build only relinks."""
    os.replace(obj + ".pristine", obj)
    os.utime(obj)


def object_file(build, path):
    return os.path.join(build, "src", "CMakeFiles", "veltro-core.dir", os.path.relpath(path, "src") + ".o")


def main():
    # A run stopped from outside still puts the mutated source back (the
    # finally below) before it ends.
    for stop in (signal.SIGTERM, signal.SIGHUP):
        signal.signal(stop, lambda number, _: sys.exit(128 + number))
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--root", default=".")
    parser.add_argument("--build", default="build-mutate")
    parser.add_argument("--count", type=int, default=150)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--list", action="store_true", help="list the sampled mutants and stop")
    parser.add_argument("--only", help="only mutants of files whose path contains this text")
    parser.add_argument("--recheck", metavar="LOG",
                        help="only the mutants that an earlier run, whose output is LOG, killed")
    args = parser.parse_args()
    root = os.path.abspath(args.root)
    build = os.path.abspath(args.build)

    every = candidates(root)
    if args.only:
        every = [m for m in every if args.only in m[0]]
    sample = random.Random(args.seed).sample(every, min(args.count, len(every)))
    sample.sort(key=lambda m: (m[0], m[1], m[2]))
    if args.recheck:
        # After a change to the tests: is every mutant the old tests killed
        # still killed? The survivors, the costly ones, are not run again.
        with open(args.recheck, encoding="utf-8") as f:
            killed_before = set(re.findall(r"^\[\d+/\d+\] killed +(\S+:\d+: .*)$", f.read(), re.M))
        sample = [m for m in sample if f"{m[0]}:{m[1]}: {m[3].strip()} -> {m[4].strip()}" in killed_before]
    print(f"{len(every)} candidate mutants in the core, {len(sample)} sampled (seed {args.seed})"
          + (f", those {args.recheck} reports killed" if args.recheck else ""), flush=True)
    if args.list:
        for path, number, _, old, new, kind in sample:
            print(f"{path}:{number}: {kind}: {old.strip()} -> {new.strip()}")
        return 0

    # A run killed outright (power cut, machine restart) leaves a mutant's
    # object file with the untouched one saved beside it; the sources are
    # copied afresh with their old times, so make would keep the mutant.
    for folder, _, files in os.walk(build):
        for name in files:
            if name.endswith(".o.pristine"):
                restore_object(os.path.join(folder, name.removesuffix(".pristine")))

    build_core = ["cmake", "--build", build, "--target", "veltro-core", "-j", str(args.jobs)]
    # The tests labelled slow (the browser's) take longer than all the others
    # together: they run only for a mutant the others let through, so that
    # a mutant the quick tests kill does not wait for them.
    ctest = ["ctest", "--test-dir", build, "-j", str(args.jobs), "--timeout", "120"]
    quick, slow = ctest + ["--stop-on-failure", "-LE", "slow"], ctest + ["-L", "slow"]

    def tests_fail():
        return run(quick, root) != 0 or run(slow, root) != 0

    if run(build_core, root) != 0 or tests_fail():
        print("the unmutated build fails its tests: fix that first", file=sys.stderr)
        return 1

    killed, survived, stillborn = 0, [], 0
    started = time.monotonic()
    for index, (path, number, column, old, new, kind) in enumerate(sample, 1):
        source = os.path.join(root, path)
        obj = object_file(build, path)
        with open(source, encoding="utf-8") as f:
            lines = f.readlines()
        pristine = "".join(lines)
        stat = os.stat(source)
        line = lines[number - 1]
        lines[number - 1] = line[:column] + new + line[column + len(old):]
        shutil.copy2(obj, obj + ".pristine")
        try:
            with open(source, "w", encoding="utf-8") as f:
                f.write("".join(lines))
            if run(build_core, root) != 0:
                stillborn += 1
                outcome = "stillborn"
            elif tests_fail():
                killed += 1
                outcome = "killed"
            else:
                survived.append(f"{path}:{number}: {kind}: {old.strip()} -> {new.strip()}")
                outcome = "SURVIVED"
        finally:
            # The source back with its old time and the untouched object file
            # newer than it, so that the next build only relinks.
            with open(source, "w", encoding="utf-8") as f:
                f.write(pristine)
            os.utime(source, ns=(stat.st_atime_ns, stat.st_mtime_ns))
            restore_object(obj)
        print(f"[{index}/{len(sample)}] {outcome:9} {path}:{number}: {old.strip()} -> {new.strip()}", flush=True)
    run(build_core, root)

    counted = killed + len(survived)
    minutes = (time.monotonic() - started) / 60
    print(f"\n{killed} of {counted} mutants killed ({100.0 * killed / max(counted, 1):.1f} %), "
          f"{stillborn} did not compile; {minutes:.1f} minutes")
    if survived:
        print("survived:")
        for s in survived:
            print("  " + s)
    return 0


if __name__ == "__main__":
    sys.exit(main())
