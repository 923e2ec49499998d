"""Makes of what scripts/bench measured one table, build/artefacts/performance.json, and,
unless the run was a quick one, the tables and the picture of docs/performance.md.

Usage: report.py FOLDER TREE. The folder holds Google Benchmark's own JSON of each program
inside, and what the measurements from outside noted."""

import json
import os
import pathlib
import re
import sys

import plot

FRAME = 1000 / 60  # ms
BASE = "entries:5000/bytes:1000/pictures:0"

# Key, what is measured, its floor, and what to reach: so many times the floor, so much, or
# so much more than the floor.
WORKS = [
    ("capture", "one capture, to the file safely on the disk", "the same bytes, safely on the disk", ("times", 1.25)),
    ("load", "loading and repairing", "read, parse; per text NFC check, hash, card expression", ("times", 1.5)),
    ("searchToList", "one key in the search, to the new list", "one pass of `memmem`", ("times", 2)),
    ("searchMs", "the same, in ms", None, ("most", 4)),
    ("searchToRows", "one key in the search, to the rows of the view", "one pass of `memmem`", None),
    ("growth", "one more capture, 5,000 against 500, disk aside", "the same with 500", ("times", 10)),
    ("classify", "classifying 100 characters, the slowest kind", None, ("most", 2)),
    ("cardText", "hot key to card, text", None, ("most", FRAME)),
    ("cardSmooth", "hot key to card, a 3840 × 2160 drawing to follow", None, ("most", FRAME)),
    ("pictureSmooth", "hot key to that drawing on the card", "one bare decode", ("more", FRAME)),
    ("cardNoisy", "hot key to card, a 3840 × 2160 photograph to follow", None, ("most", FRAME)),
    ("pictureNoisy", "hot key to that photograph on the card", "one bare decode", ("more", FRAME)),
    ("panel", "hot key to panel, warm", None, ("most", 50)),
    ("wheel", "a notch of the wheel, to pixels", "the caret moves", None),
    ("letter", "a letter in the search, to pixels", "the caret moves", None),
    ("keyToDisk", "Ctrl+C in a window to the copy on the disk", "the same bytes, safely on the disk", None),
    ("start", "start to icon, 5,000 entries", "a program with an icon only", None),
    ("secondStart", "a second start, to its end", None, None),
    ("wakeups", "wake-ups while idle", None, ("most", 3)),
    ("processor", "processor while idle", None, ("most", 0.1)),
    ("memory", "memory, panel closed, 500 entries (PSS, alone)", "an empty Qt Quick program", ("most", 45)),
    ("dayMemory", "the same after a long day of use", "in the morning", None),
    ("panelMemory", "memory kept after 20 times through the panel", None, None),
    ("copyMemory", "memory kept of a text of 50 MB that has left the history", None, None),
]


def inside(folder):
    """Each measurement by its name: medians and the least, in µs, and classify's in ns."""
    found = {}
    for path in folder.glob("*.json"):
        for it in json.loads(path.read_text())["benchmarks"]:
            found[re.sub(r"(/iterations:\d+|/manual_time|/real_time)+$", "", it["name"])] = it
    return found


def beside(it, scale):
    return {
        "measured": it["work_us"] / scale, "least": it["work_least_us"] / scale,
        "floor": it["floor_us"] / scale, "floorLeast": it["floor_least_us"] / scale,
    }


def gather(folder):
    found = inside(folder)
    results = {}
    for key, name in (("capture", "captureToDisk"), ("load", "load"), ("searchToList", "searchToList"),
                      ("searchToRows", "searchToRows")):
        results[key] = beside(found[f"{name}/{BASE}"], 1000) | {"unit": "ms"}
    search = results["searchToList"]
    results["searchMs"] = {"measured": search["measured"], "least": search["least"], "unit": "ms"}
    results["growth"] = beside(found["captureInto5000Beside500"], 1) | {"unit": "µs"}
    kinds = {name.partition("/")[2]: it["cpu_time"] / 1000 for name, it in found.items() if name.startswith("classify/")}
    # Of processor time, which other programs hardly change, and in which no time is spent waiting.
    results["classify"] = {"measured": max(kinds.values()), "least": min(kinds.values()), "unit": "µs", "kinds": kinds}
    for line in (folder / "outside").read_text().splitlines():
        result = json.loads(line)
        results[result.pop("key")] = result
    grid = {name: beside(it, 1000) for name, it in found.items() if "entries:" in name}
    return results, grid


def judge(result, goal):
    """Adds the ratio, what to reach in the result's own unit, and whether it was reached."""
    if "floor" in result:
        result["ratio"] = result["measured"] / result["floor"]
        result["leastRatio"] = result["least"] / result["floorLeast"]
    if goal:
        kind, number = goal
        limit = {"times": result.get("floor", 0) * number, "most": number, "more": result.get("floor", 0) + number}[kind]
        result |= {"budget": number, "budgetKind": kind, "limit": limit, "met": result["measured"] <= limit}
    return result


def number(value):
    digits = 3 if abs(value) < 0.1 else 2 if abs(value) < 10 else 1 if abs(value) < 100 else 0
    return f"{value:,.{digits}f}"


def told(result):
    """The cells of a row: measured, floor, ratio, budget, met."""
    unit = result["unit"]
    goal = {
        "times": lambda: f"{result['budget']:g} ×",
        "most": lambda: f"{number(result['budget'])} {unit}",
        "more": lambda: f"floor + {number(result['budget'])} {unit}",
    }.get(result.get("budgetKind"), lambda: "")()
    measured = f"{number(result['measured'])} {unit}"
    if "floor" not in result:
        return measured, "", "", goal, verdict(result)
    return (measured, f"{number(result['floor'])} {unit}", f"{result['ratio']:.2f} ({result['leastRatio']:.2f})", goal,
            verdict(result))


def verdict(result):
    return {True: "yes", False: "**no**", None: ""}[result.get("met")]


def main_table(results):
    rows = [("work", "measured", "floor", "ratio (of the least)", "budget", "met?")]
    for key, work, _, _ in WORKS:
        if key in results:
            rows.append((work, *told(results[key])))
    return rows


def grid_table(grid):
    """A row for each history, with the three works as time and ratio."""
    rows = [("history", "capture, ms", "×", "load, ms", "×", "search, ms", "×")]
    names = sorted({name.partition("/")[2] for name in grid}, key=lambda it: [int(n) for n in re.findall(r"\d+", it)][::-1])
    for name in names:
        entries, size, pictures = map(int, re.findall(r"\d+", name))
        cells = [f"{entries:,} × {size // 1000} KB" if size >= 1000 else f"{entries:,} × {size} B"]
        cells[0] += ", a tenth pictures" if pictures else ""
        for work in ("captureToDisk", "load", "searchToList"):
            it = grid.get(f"{work}/{name}")
            cells += [number(it["measured"]), f"{it['measured'] / it['floor']:.2f}"] if it else ["", ""]
        rows.append(tuple(cells))
    return rows


def markdown(rows):
    head, *rest = rows
    lines = [head, ["---"] + ["---:"] * (len(head) - 1), *rest]
    return "\n".join("| " + " | ".join(line) + " |" for line in lines)


def plain(rows):
    widths = [max(len(row[column].replace("*", "")) for row in rows) for column in range(len(rows[0]))]
    return "\n".join("  ".join(cell.replace("*", "").ljust(width) for cell, width in zip(row, widths)) for row in rows)


def replace_between(text, marker, content):
    begin, end = f"<!-- {marker} -->", f"<!-- end of {marker} -->"
    before, _, rest = text.partition(begin)
    _, found, after = rest.partition(end)
    if not found:
        raise SystemExit(f"docs/performance.md has no {begin} … {end}")
    return f"{before}{begin}\n\n{content}\n\n{end}{after}"


def surroundings(folder):
    cpu = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    return {
        "processors": os.cpu_count(),
        "processor": cpu[1] if cpu else "",
        "loadBefore": (folder / "load-before").read_text().split()[:3],
        "loadAfter": (folder / "load-after").read_text().split()[:3],
        "quick": "NETTLECAP_QUICK" in os.environ,
    }


def main(folder, tree):
    folder, tree = pathlib.Path(folder), pathlib.Path(tree)
    results, grid = gather(folder)
    for key, work, floor, goal in WORKS:
        if key in results:
            results[key] = {"work": work, "floorIs": floor} | judge(results[key], goal)
    around = surroundings(folder)
    (tree / "build/artefacts/performance.json").write_text(
        json.dumps({"surroundings": around, "results": results, "histories": grid}, indent=2, ensure_ascii=False) + "\n")
    print(plain(main_table(results)))
    load = f"Load average {around['loadBefore'][0]} before, {around['loadAfter'][0]} after, {around['processors']} cores."
    print(f"\n{load}")
    if around["quick"]:
        return
    document = tree / "docs/performance.md"
    text = replace_between(document.read_text(), "table", f"{markdown(main_table(results))}\n\n{load}")
    document.write_text(replace_between(text, "histories", markdown(grid_table(grid))))
    (tree / "docs/pictures/performance.svg").write_text(plot.drawing(results, grid))


main(*sys.argv[1:])
