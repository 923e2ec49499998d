"""What the measurements of the running program share. Each looks at it from outside."""

import contextlib
import json
import os
import pathlib
import statistics
import sys

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[1] / "tests" / "desktop"))

from desktop import Desktop  # noqa: E402

QUICK = "NETTLECAP_QUICK" in os.environ
ROUNDS = 6 if QUICK else 20


class Benchmark(contextlib.ExitStack, Desktop):
    """A virtual desktop and what was started on it, ended with the measurement."""

    def addCleanup(self, function, *arguments, **options):
        self.callback(function, *arguments, **options)

    def program_with(self, entries, preferences, **options):
        """Not yet running; with that history."""
        program = self.nettlecap(**options)
        program.images.mkdir(parents=True, mode=0o700)
        program.state_file.write_text(json.dumps({"entries": entries, "snippets": []}))
        stored = program.config / "Nettlecap" / "Nettlecap.preferences.v1"
        stored.parent.mkdir(parents=True, mode=0o700)
        stored.write_text(json.dumps({"maxHistoryItems": len(entries), **preferences}))
        return program

    @staticmethod
    def report(what, values, last=None):
        """A line of a table: the least, the median and the most, and what there is besides."""
        numbers = (min(values), statistics.median(values), max(values), *(() if last is None else (last,)))
        print(f"{what:<48}" + "".join(f"{number:9.2f}" for number in numbers), flush=True)


def note(key, values, floors=(), **more):
    """For the table of scripts/bench, when it is who asks: medians and the least of both."""
    if "NETTLECAP_RESULTS" not in os.environ:
        return
    result = {"key": key, "measured": statistics.median(values), "least": min(values), **more}
    if floors:
        result |= {"floor": statistics.median(floors), "floorLeast": min(floors)}
    with open(os.environ["NETTLECAP_RESULTS"], "a") as results:
        print(json.dumps(result), file=results)
