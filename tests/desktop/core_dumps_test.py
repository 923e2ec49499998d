"""What people install leaves nothing of its memory behind when it crashes, and lets no other
program of the user look into it."""

import pathlib
import signal

from desktop import DesktopTest, main


class CoreDumpsTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.program = self.nettlecap().start()
        self.process = pathlib.Path("/proc", str(self.program.process.pid))

    def test_it_may_leave_no_core_dump(self):
        limit = next(line for line in (self.process / "limits").read_text().splitlines() if "core file size" in line)

        self.assertEqual(limit.split()[4:6], ["0", "0"])

    def test_its_memory_belongs_to_nobody_but_the_system(self):
        # Of a process that may not be dumped, these are root's, whoever runs it.
        self.assertEqual((self.process / "mem").stat().st_uid, 0)
        self.assertEqual((self.process / "environ").stat().st_uid, 0)

    def test_a_crash_leaves_no_file(self):
        process, self.program.process = self.program.process, None
        process.send_signal(signal.SIGSEGV)

        status = process.wait(20)

        self.assertEqual(status, -signal.SIGSEGV)
        self.assertEqual([*self.folder.rglob("core*")] + [*pathlib.Path().glob("core*")], [])


if __name__ == "__main__":
    main()
