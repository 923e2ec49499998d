"""Copies in quick succession, and a program that is killed in the middle of them."""

import json
import os
import pathlib
import random
import shutil
import tempfile
import threading
import time

from desktop import DesktopTest, main, wait_until

ROUNDS = int(os.environ.get("NETTLECAP_KILL_ROUNDS", "25"))


class BurstTest(DesktopTest):
    """On a disk in memory: while a busy one makes the program wait, owners come and go, and
    nobody can read what they had."""

    def setUp(self):
        super().setUp()
        self.folder = pathlib.Path(tempfile.mkdtemp(dir="/dev/shm", prefix="nettlecap-test-"))
        self.addCleanup(shutil.rmtree, self.folder)

    def test_none_of_200_copies_a_tenth_of_a_second_apart_is_missing(self):
        program = self.nettlecap().start()
        texts = [f"cópia {n}" for n in range(200)]

        for text in texts:
            next_one = time.monotonic() + 0.1
            self.offer(text)
            while time.monotonic() < next_one:
                time.sleep(0.005)

        program.wait_for_text(texts[-1])
        self.assertEqual(program.texts(), texts[::-1])


# Copies a new text again and again; its first argument makes the texts of a run its own.
COPIES = """
for ((n = 1; ; n++)); do
    printf '%s, texto %d %*d' "$0" $n $((n % 50 * 40)) $n | xclip -selection clipboard -i
    sleep 0.03
done
"""


class Watcher(threading.Thread):
    """Reads the state file at every change; it must be a whole document each time. Keeps
    what the last one held."""

    def __init__(self, path):
        super().__init__(daemon=True)
        self.path, self.stopping, self.saved, self.broken = path, False, set(), []

    def run(self):
        seen = None
        while not self.stopping:
            time.sleep(0.002)
            try:
                with self.path.open("rb") as file:
                    status = os.fstat(file.fileno())
                    if (status.st_ino, status.st_mtime_ns) == seen:
                        continue
                    seen = status.st_ino, status.st_mtime_ns
                    content = file.read()
            except FileNotFoundError:
                continue
            try:
                self.saved = {entry["id"] for entry in json.loads(content)["entries"]}
            except (ValueError, KeyError):
                self.broken.append(len(content))

    def stop(self):
        self.stopping = True
        self.join(10)


class KilledTest(DesktopTest):
    def test_being_killed_at_any_moment_loses_nothing_that_was_saved(self):
        seed = int(os.environ.get("NETTLECAP_SEED", random.randrange(10**6)))
        print(f"{ROUNDS} rounds, NETTLECAP_SEED={seed}", flush=True)
        chance = random.Random(seed)
        for number in range(ROUNDS):
            self.one_round(number, chance.random() * 0.6)

    def one_round(self, number, delay):
        program = self.nettlecap()
        if len(program.history()) > 300:  # or the history's limit would drop entries by right
            shutil.rmtree(program.data)
        before = {entry["id"] for entry in program.history()}
        program.spawn()
        watcher = Watcher(program.state_file)
        watcher.start()
        copies = self.client("bash", "-c", COPIES, f"vez {number}")
        wait_until(lambda: watcher.saved - before, "copies are saved")
        time.sleep(delay)  # the moment of death is what varies here, nothing is waited for
        program.kill()
        self.end(copies)
        watcher.stop()

        kept = {entry["id"] for entry in program.history()}
        self.assertEqual(watcher.broken, [], "sizes of documents that could not be read")
        self.assertEqual(watcher.saved - kept, set(), "entries that were saved, and are gone")

        program.start()
        self.assertEqual({entry["id"] for entry in program.history()} & kept, kept)
        self.assertEqual(program.leftovers(), [])
        program.stop()


if __name__ == "__main__":
    main()
