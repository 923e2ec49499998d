"""Folders that can't be written, disks that are full, files that are damaged, and a second start."""

import os
import pathlib
import subprocess

import accessible
from desktop import AS_ANYBODY, DEADLINE, PROGRAM, DesktopTest, main, wait_until


class FailingSaveTest(DesktopTest):
    def running(self, wrapper):
        program = self.nettlecap(wrapper=wrapper, environment=accessible.ENVIRONMENT).start()
        program.show_panel()
        return program

    def copied_in_vain(self, text):
        """The panel says that a copy could not be saved."""
        self.offer(text)
        wait_until(
            lambda: any(name.startswith("Não foi possível salvar o histórico: ") for name in accessible.names("alert")),
            "the panel says that nothing could be saved",
        )

    def saved_again(self):
        wait_until(lambda: not any(accessible.names("alert")), "the panel takes that back")


class DamagedFileTest(DesktopTest):
    def started_on(self, content):
        program = self.nettlecap()
        program.data.mkdir(parents=True, mode=0o700)
        program.state_file.write_bytes(content)
        return program.start()

    def test_a_damaged_history_is_kept_beside_the_new_one(self):
        damaged = b'{"entries":[{"id":"cortado'
        program = self.started_on(damaged)
        self.assertEqual(program.state_file.read_bytes(), damaged)

        self.offer("recomeço")
        kept = program.data / "history.unreadable.json"
        wait_until(kept.exists, "the copy of the damaged file")

        self.assertEqual(kept.read_bytes(), damaged)
        self.assertEqual(kept.stat().st_mode & 0o777, 0o600)
        program_history = wait_until(lambda: self.readable(program), "the new history")
        self.assertEqual([entry["text"] for entry in program_history], ["recomeço"])

    def readable(self, program):
        try:
            return program.history()
        except ValueError:
            return None

    def test_an_empty_file_is_a_damaged_one(self):
        program = self.started_on(b"")

        self.offer("recomeço")

        wait_until(lambda: self.readable(program), "the new history")
        self.assertEqual(program.texts(), ["recomeço"])

    def test_what_a_killed_run_left_half_written_is_removed_at_start(self):
        first = self.nettlecap().start()
        self.offer("salvo")
        first.wait_for_text("salvo")
        first.stop()
        (first.data / ".nettlecap-4321-7").write_bytes(b'{"entries":[{"id"')

        program = self.nettlecap().start()

        self.assertEqual(program.texts(), ["salvo"])
        self.assertEqual(program.leftovers(), [])


class UnwritableFolderTest(FailingSaveTest):
    def test_a_folder_that_became_read_only_costs_nothing_once_it_is_writable_again(self):
        program = self.running(AS_ANYBODY)
        self.offer("antes")
        program.wait_for_text("antes")
        self.protect(program.data)

        self.copied_in_vain("durante")
        self.assertEqual(program.texts(), ["antes"])
        program.data.chmod(0o700)
        self.offer("depois")

        program.wait_for_text("depois")
        self.assertEqual(program.texts(), ["depois", "durante", "antes"])
        self.saved_again()

    def test_a_start_on_a_read_only_folder_runs_and_changes_nothing(self):
        first = self.nettlecap().start()
        self.offer("de ontem")
        first.wait_for_text("de ontem")
        first.stop()
        before = first.state_file.read_bytes()
        (first.data / ".lock").unlink()  # it can't be made anew there
        self.protect(first.data)

        self.running(AS_ANYBODY)
        self.copied_in_vain("de hoje")

        self.assertEqual(first.state_file.read_bytes(), before)

    def protect(self, folder):
        folder.chmod(0o500)
        self.addCleanup(folder.chmod, 0o700)


class FullDiskTest(FailingSaveTest):
    """A small file system that only the program sees, gone with its process."""

    def setUp(self):
        super().setUp()
        if subprocess.run(["unshare", "--mount", "true"], capture_output=True).returncode != 0:
            self.skipTest("a small file system can be mounted only by root, and not below a chroot")
        (self.folder / "data").mkdir()
        mount = 'mount -t tmpfs -o size=512k,mode=0700 tmpfs "$XDG_DATA_HOME" && exec "$@"'
        self.wrapper = ["unshare", "--mount", "sh", "-c", mount, "sh"]

    def test_a_full_disk_keeps_the_last_good_history_and_recovers(self):
        program = self.running(self.wrapper)
        seen_by_it = pathlib.Path(f"/proc/{program.process.pid}/root")
        program.state_file = seen_by_it / program.state_file.relative_to("/")
        self.offer("antes")
        program.wait_for_text("antes")
        filler = seen_by_it / (program.data / "filler").relative_to("/")
        self.fill(filler)

        self.copied_in_vain("durante" * 2000)
        self.assertEqual(program.texts(), ["antes"])
        filler.unlink()
        self.offer("depois")

        program.wait_for_text("depois")
        self.assertEqual(program.texts(), ["depois", "durante" * 2000, "antes"])
        self.saved_again()

    def fill(self, path):
        with path.open("wb", buffering=0) as file:
            try:
                while True:
                    file.write(b"\0" * 4096)
            except OSError:
                pass


class SecondStartTest(DesktopTest):
    def test_a_second_start_ends_at_once_and_the_first_one_stays(self):
        program = self.nettlecap().start()

        second = subprocess.run([PROGRAM], env={**os.environ, **program.environment}, timeout=DEADLINE)

        self.assertEqual(second.returncode, 0)
        program.wait_for_panel()
        self.offer("ainda aqui")
        program.wait_for_text("ainda aqui")

    def test_a_start_on_another_bus_leaves_the_history_to_the_first(self):
        program = self.nettlecap().start()
        self.offer("só uma vez")
        program.wait_for_text("só uma vez")

        second = subprocess.run(
            ["dbus-run-session", "--", PROGRAM],
            env={**os.environ, **program.environment},
            capture_output=True,
            timeout=DEADLINE,
        )

        self.assertEqual(second.returncode, 1)
        program.check_alive()
        self.assertEqual(program.texts(), ["só uma vez"])


if __name__ == "__main__":
    main()
