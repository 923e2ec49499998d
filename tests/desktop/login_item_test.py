"""Starting with the session: what the program leaves for the desktop, and who has the last word."""

import os
import signal
import subprocess

from desktop import DEADLINE, PROGRAM, DesktopTest, main, run, wait_until

NAME = "com.nettlecap.Nettlecap.desktop"


class LoginItemTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.program = self.nettlecap()
        self.entry = self.program.config / "autostart" / NAME

    def status(self):
        """What the program last found, in the words of its diagnostics."""
        report = self.program.data / "launch-at-login-diagnostics.txt"
        lines = report.read_text().splitlines() if report.exists() else []
        return dict(line.split("=", 1) for line in lines).get("status")

    def run_once(self):
        """Starts it, and ends it again."""
        self.program.spawn()
        self.program.wait_for_panel()
        status = self.status()
        self.program.stop()
        return status

    def switch_off(self):
        """The way desktops do: with GLib's own writer, which keeps what it does not know."""
        run("/usr/bin/python3", "-c", "\n".join([
            "import sys",
            "from gi.repository import GLib",
            "file = GLib.KeyFile()",
            "file.load_from_file(sys.argv[1], GLib.KeyFileFlags.KEEP_COMMENTS | GLib.KeyFileFlags.KEEP_TRANSLATIONS)",
            "file.set_boolean('Desktop Entry', 'Hidden', True)",
            "file.save_to_file(sys.argv[1])",
        ]), str(self.entry))

    def test_the_entry_starts_the_program_as_a_desktop_does(self):
        self.assertEqual(self.run_once(), "enabled")
        wait_until(lambda: not self.program.panel(), "it has ended")

        # Not by run(): the program would keep what run() reads open.
        subprocess.run(["gio", "launch", str(self.entry)], env={**os.environ, **self.program.environment},
                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True, timeout=DEADLINE)

        panel = wait_until(self.program.panel, "the panel of the program that the desktop started")
        started = int(run("xdotool", "getwindowpid", str(panel.id)))
        self.assertEqual(os.readlink(f"/proc/{started}/exe"), os.path.realpath(PROGRAM))
        os.kill(started, signal.SIGTERM)
        wait_until(lambda: not os.path.exists(f"/proc/{started}"), "it ends")

    def test_a_copy_that_was_built_but_not_installed_leaves_the_entry_of_another(self):
        other = "[Desktop Entry]\nType=Application\nName=Nettlecap\nExec=/bin/true\n"
        self.entry.parent.mkdir(parents=True)
        self.entry.write_text(other)

        self.assertEqual(self.run_once(), "enabled")

        self.assertEqual(self.entry.read_text(), other)

    def test_switched_off_in_the_desktops_settings_it_stays_off(self):
        self.run_once()
        self.switch_off()
        before = self.entry.read_bytes()

        self.assertEqual(self.run_once(), "requiresApproval")

        self.assertEqual(self.entry.read_bytes(), before)
        answer = subprocess.run(["desktop-file-validate", "--no-hints", str(self.entry)],
                                capture_output=True, text=True, timeout=DEADLINE)
        self.assertEqual((answer.returncode, answer.stdout), (0, ""))


if __name__ == "__main__":
    main()
