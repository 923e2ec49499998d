"""A whole run of the program under Valgrind, whose memcheck sees what the sanitizers do not: reads
of what was never written, and what becomes of it in the libraries. An error, or a leak that is
ours, is the program's exit status. It takes minutes, so scripts/soak runs it, with a
NETTLECAP_DEADLINE to match."""

import shutil

from desktop import ARTEFACTS, HERE, DesktopTest, keys, main, run, wait_until

VALGRIND = (
    "valgrind", "--error-exitcode=99", "--leak-check=full", "--show-leak-kinds=definite",
    "--errors-for-leak-kinds=definite", "--num-callers=40", f"--suppressions={HERE / 'memcheck.supp'}",
)  # fmt: skip
# Code that the engine of QML makes while the program runs has no names.
ENVIRONMENT = {"QV4_FORCE_INTERPRETER": "1"}


class MemcheckTest(DesktopTest):
    def test_a_whole_run_touches_nothing_it_may_not_and_loses_nothing(self):
        program = self.nettlecap(wrapper=VALGRIND, environment=ENVIRONMENT)
        self.addCleanup(shutil.copy, program.log, ARTEFACTS / "memcheck.log")
        program.start()
        long = "uma linha comprida\n" * 40_000
        for text in ("o primeiro", "o segundo, com senha=Xk29fjw0qPz", long):
            self.offer(text)
            program.wait_for_text(text)
        owner = self.owner("--offer", f"UTF8_STRING={self.file('text', long)}", "--incremental", "UTF8_STRING")
        wait_until(lambda: "gave UTF8_STRING" in owner.events(), "it is taken in pieces")
        for kind in ("png", "tiff"):
            before = program.history()[0]["id"]
            self.offer(run("convert", "-size", "320x200", "gradient:tomato-navy", f"{kind}:-"), f"image/{kind}")
            wait_until(lambda: program.wait_for_image()[0]["id"] != before, f"the {kind} is kept")
        self.offer("o último")
        program.wait_for_text("o último")

        program.show_panel()
        keys(*"primeiro")
        keys("Return")

        wait_until(lambda: self.pasted() == b"o primeiro", "what was found can be pasted")
        wait_until(lambda: not program.panel(), "the panel is closed")
        program.stop()
        self.assertNotIn("TypeError", program.log.read_text(errors="replace"))


if __name__ == "__main__":
    main()
