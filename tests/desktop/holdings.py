"""What a running program holds on to: memory, descriptors, things within the X server."""

import pathlib

from desktop import wait_until
from Xlib.ext import res

MIB = 1 << 20


class Holdings:
    """Who may not look into a release build may know this much."""

    def __init__(self, program):
        self.program, self.display = program, program.screen.display

    def memory(self, kind="RssAnon"):
        """In bytes, once it is the same for a while: closing goes on behind the scenes."""
        seen = []

        def settled():
            seen.append(self._status(kind) * 1024)
            return len(seen) >= 25 and max(seen[-25:]) - min(seen[-25:]) < MIB // 16

        wait_until(settled, "the memory stands still")
        return seen[-1]

    def descriptors(self):
        """Room that the kernel made for them; it doubles when they no longer fit."""
        return self._status("FDSize")

    def x_resources(self):
        """Windows, pixmaps, cursors and the like, of all its connections."""
        return sum(
            kind["count"]
            for client in self._x_clients()
            for kind in self.display.res_query_client_resources(client).types
        )

    def _x_clients(self):
        every = self.display.res_query_client_ids([{"client": 0, "mask": res.LocalClientPIDMask}]).ids
        return [one["spec"]["client"] for one in every if self.program.process.pid in one["value"]]

    def _status(self, kind):
        for line in pathlib.Path(f"/proc/{self.program.process.pid}/status").read_text().splitlines():
            if line.startswith(f"{kind}:"):
                return int(line.split()[1])
        raise AssertionError(f"the kernel tells no {kind}")

    def all(self):
        return self.memory(), self.descriptors(), self.x_resources()


def assert_flat(test, holdings, before, rounds):
    """That nothing grew but what memory always does, in rounds of use since `before`."""
    memory, descriptors, resources = holdings.all()
    print(
        f"{rounds} rounds: {before[0] / MIB:.1f} MiB of its own, {(memory - before[0]) / MIB:+.2f} MiB;"
        f" X resources {before[2]}, {resources - before[2]:+}",
        end=" ... ",
        flush=True,
    )
    test.assertLess(memory - before[0], 2 * MIB)
    test.assertEqual(descriptors, before[1])
    test.assertLessEqual(resources, before[2])
