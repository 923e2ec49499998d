"""Counts instructions: runs the program named first under callgrind, which collects only
within the functions nettlecap::workload::…, and adds up for each what was executed in
functions of ours. What the libraries do meanwhile is theirs: it changes with the system.
Compares with instructions.json, or with --update writes that; --functions tells where the
instructions are."""

import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys
import tempfile

NOTED = pathlib.Path(__file__).with_name("instructions.json")
TOLERANCE = 0.02
WORKLOADS = ("capture", "classify", "load", "navigate", "search", "updateRows")
NAME = re.compile(r"^\((\d+)\)(?: (.*))?$")


def costs(program, workload):
    """Of each function of ours within that workload."""
    with tempfile.TemporaryDirectory() as folder:
        file = pathlib.Path(folder) / "costs"
        run = subprocess.run(
            ["setarch", "-R", "valgrind", "--tool=callgrind", f"--callgrind-out-file={file}",
             f"--toggle-collect=nettlecap::workload::{workload}(*", str(program), workload],
            capture_output=True, text=True, timeout=600,
            env={"PATH": "/usr/sbin:/usr/bin:/sbin:/bin", "LC_ALL": "C.UTF-8", "TMPDIR": folder},
        )
        if run.returncode != 0:
            sys.exit(f"{workload} failed:\n{run.stderr}")
        return {name: cost for name, cost in per_function(file.read_text(), str(program)).items() if is_ours(name)}


def per_function(text, program):
    """What was executed in each function of the program itself. A name stands in the file
    once, and then only by its number."""
    names, found = {}, {}

    def name(kind, value):
        number, written = NAME.match(value).groups()
        return names.setdefault((kind, number), written)

    of_object = of_function = ""
    is_call = False
    for line in text.splitlines():
        key, _, value = line.partition("=")
        if key in ("ob", "cob"):
            called = name("object", value)
            of_object = called if key == "ob" else of_object
        elif key in ("fn", "cfn"):
            called = name("function", value)
            of_function = called if key == "fn" else of_function
        elif key == "calls":
            is_call = True  # the next line is what the callee cost
        elif re.match(r"[\d+*-]", line):
            if not is_call and of_object == program:
                found[of_function] = found.get(of_function, 0) + int(line.split()[1])
            is_call = False
    return found


def is_ours(function):
    """Templates of the library on types of ours included, the fakes of the tests not."""
    return "nettlecap::" in function and "nettlecap::Fake" not in function


def count(program):
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        return dict(zip(WORKLOADS, pool.map(lambda workload: costs(program, workload), WORKLOADS)))


def compare(counts, noted):
    print(f"{'':<18}{'noted':>14}{'counted':>14}{'change':>10}")
    higher, lower = [], []
    for name in sorted({*counts, *noted}):
        now, before = counts.get(name, 0), noted.get(name, 0)
        change = now / before - 1 if before else float("inf")
        far = abs(change) > TOLERANCE
        if far:
            (higher if change > 0 else lower).append(name)
        print(f"{name:<18}{before:>14,}{now:>14,}{change:>+10.2%}{'  <--' if far else ''}")
    return higher, lower


def main(program, *options):
    program = pathlib.Path(program).resolve()
    functions = count(program)
    counts = {workload: sum(ours.values()) for workload, ours in functions.items()}
    if "--functions" in options:
        for workload, ours in functions.items():
            print(f"{workload}: {counts[workload]:,}")
            for name, cost in sorted(ours.items(), key=lambda it: -it[1])[:12]:
                print(f"    {cost:>14,} {name[:110]}")
    if "--update" in options:
        NOTED.write_text(json.dumps(counts, indent=2) + "\n")
        print(f"Written to {NOTED.name}.")
    higher, lower = compare(counts, json.loads(NOTED.read_text()))
    if higher:
        sys.exit(f"More instructions than noted in benchmarks/{NOTED.name}: {', '.join(higher)}. Where that has "
                 "to be, note it: scripts/check-instructions --update")
    if lower:
        sys.exit(f"Fewer instructions than noted, which is good: {', '.join(lower)}. Note it, so that it stays "
                 "so: scripts/check-instructions --update")


main(*sys.argv[1:])
