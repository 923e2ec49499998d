"""What a process costs while nobody uses it, as the kernel tells."""

import contextlib
import pathlib
import re
import time

from desktop import wait_until


def files_without_qt():
    """Those that some program has in memory which does not use Qt."""
    files = set()
    for maps in pathlib.Path("/proc").glob("[0-9]*/maps"):
        try:
            mapped = {line.split(maxsplit=5)[5] for line in maps.read_text().splitlines() if "/" in line}
        except OSError:  # it ended meanwhile, or is not ours to look at
            continue
        if not any("libQt6Core" in path for path in mapped):
            files |= mapped
    return files


def memory_alone(pid):
    """In KiB: the process's PSS, its part of what it shares, if no other program used Qt. So
    of what only those have in memory too, the whole is its part."""
    common, mapping, sizes, total = files_without_qt(), "", {}, 0
    for line in pathlib.Path(f"/proc/{pid}/smaps").read_text().splitlines():
        words = line.split(maxsplit=5)
        if not words[0].endswith(":"):
            mapping = words[5] if len(words) == 6 else ""
        elif words[0] in ("Rss:", "Pss:"):
            sizes[words[0]] = int(words[1])
            if words[0] == "Pss:":
                total += sizes["Pss:" if mapping in common else "Rss:"]
    return total


def private_dirty(pid):
    """In KiB: what it alone has, and no file holds."""
    rollup = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text()
    return int(re.search(r"Private_Dirty:\s+(\d+)", rollup)[1])


def settle(pid):
    """Until what it holds of its own has stood still."""
    status, seen = pathlib.Path(f"/proc/{pid}/status"), []

    def settled():
        seen.append(int(re.search(r"RssAnon:\s+(\d+)", status.read_text())[1]))
        return len(seen) >= 25 and max(seen[-25:]) - min(seen[-25:]) < 64

    wait_until(settled, "the memory stands still")


def wakings(pid):
    """How often each thread went to sleep of its own accord, and so woke before."""
    found = {}
    for path in pathlib.Path(f"/proc/{pid}/task").glob("*/status"):
        with contextlib.suppress(OSError):  # it ended meanwhile
            found[path.parent.name] = int(re.search(r"^voluntary_ctxt_switches:\s+(\d+)", path.read_text(), re.M)[1])
    return found


def used(pid):
    """Of processor time by each thread, in ns."""
    found = {}
    for path in pathlib.Path(f"/proc/{pid}/task").glob("*/schedstat"):
        with contextlib.suppress(OSError):
            found[path.parent.name] = int(path.read_text().split()[0])
    return found


def growth(measure, pid, seconds):
    """Of what is told of each thread, in all; nothing for those that ended meanwhile."""
    before = measure(pid)
    time.sleep(seconds)
    return sum(value - before.get(thread, 0) for thread, value in measure(pid).items())


def calm_down(pid):
    """Until half a minute has brought no quieter seconds: use leaves timers behind, which run
    out unheard."""
    seen = []

    def calm():
        seen.append(growth(wakings, pid, 5))
        return len(seen) > 6 and min(seen[-6:]) >= min(seen[:-6])

    wait_until(calm, "it is as quiet as it gets", 180)


def idle(pid, seconds):
    """How often it wakes in a second, and how many % of a processor it uses."""
    before = used(pid)
    wakes = growth(wakings, pid, seconds)
    spent = sum(value - before.get(thread, 0) for thread, value in used(pid).items())
    return wakes / seconds, spent / 1e9 / seconds * 100
