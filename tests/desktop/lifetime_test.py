"""How the program starts, is found again, and ends."""

import os
import signal
import subprocess

from desktop import DEADLINE, PROGRAM, DesktopTest, keep_doing, main, remains, run, wait_until


class LifetimeTest(DesktopTest):
    def started(self, **options):
        program = self.nettlecap(**options).spawn()
        program.wait_for_panel()
        return program

    def second_start(self, program, **environment):
        return subprocess.run(
            [PROGRAM],
            env={**os.environ, **program.environment, **environment},
            capture_output=True,
            text=True,
            timeout=DEADLINE,
        )

    def ends_after(self, program, number):
        program.process.send_signal(number)
        status = program.process.wait(DEADLINE)
        program.process = None
        return status

    def test_it_shows_its_panel_in_the_middle_under_its_names(self):
        program = self.started()

        panel = program.panel()

        self.assertEqual(panel.get_wm_class(), ("nettlecap", "Nettlecap"))
        size = panel.get_geometry()
        self.assertEqual((size.width, size.height), (430, 560))
        screen = self.screen.root.get_geometry()
        x, y = self.screen.position(panel)
        self.assertLess(abs(x + 215 - screen.width / 2), 20)
        self.assertLess(abs(y + 280 - screen.height / 2), 40)

    def test_the_close_button_hides_the_panel_and_the_program_goes_on(self):
        program = self.started()

        run("wmctrl", "-i", "-c", hex(program.panel().id))
        wait_until(lambda: not program.panel(), "the panel is gone")

        self.offer("copiado com o painel fechado")
        program.wait_for_text("copiado com o painel fechado")

    def test_a_second_start_shows_the_first_one_and_succeeds(self):
        program = self.started()
        program.close_panel()

        answer = self.second_start(program)

        self.assertEqual((answer.returncode, answer.stderr), (0, ""))
        panel = program.wait_for_panel()
        wait_until(lambda: self.screen.active() == panel.id, "the panel has the focus")

    def test_without_a_bus_the_history_still_has_one_program_only(self):
        program = self.started()

        answer = self.second_start(program, DBUS_SESSION_BUS_ADDRESS="unix:path=/nonexistent")

        self.assertEqual(answer.returncode, 1)
        self.assertEqual(answer.stderr, "nettlecap: o programa já está em execução\n")
        program.check_alive()

    def test_it_works_without_a_bus(self):
        program = self.started(environment={"DBUS_SESSION_BUS_ADDRESS": "unix:path=/nonexistent"})

        self.offer("sem barramento")
        program.wait_for_text("sem barramento")

    def test_it_answers_as_a_desktop_application(self):
        program = self.started()
        program.close_panel()

        def call(method, *arguments):
            return subprocess.run(
                ["gdbus", "call", "--session", "--dest", "com.nettlecap.Nettlecap",
                 "--object-path", "/com/nettlecap/Nettlecap",
                 "--method", f"org.freedesktop.Application.{method}", *arguments],
                capture_output=True, text=True, timeout=DEADLINE,
            )

        self.assertIn("InvalidArgs", call("ActivateAction", "dance", "[]", "{}").stderr)
        remains(lambda: not program.panel(), "nothing is shown")
        self.assertEqual(call("Open", "['file:///etc/hostname']", "{}").returncode, 0)
        program.wait_for_panel()

    def test_it_ends_when_it_is_told_to(self):
        for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP):
            with self.subTest(number):
                program = self.started()
                self.assertEqual(self.ends_after(program, number), 0)

    def test_it_ends_when_it_is_told_to_with_the_panel_closed(self):
        program = self.started()
        program.close_panel()

        self.assertEqual(self.ends_after(program, signal.SIGTERM), 0)

    def test_after_a_crash_it_starts_again(self):
        program = self.started()
        self.offer("antes")
        program.wait_for_text("antes")
        program.kill()

        program.spawn()
        program.wait_for_panel()

        self.assertEqual(program.texts(), ["antes"])

    def test_it_says_that_there_is_no_display(self):
        program = self.nettlecap()

        answer = self.second_start(program, DISPLAY=":4711")

        self.assertEqual(answer.returncode, 1)
        self.assertIn("nettlecap: não foi possível abrir a tela", answer.stderr)

    def test_losing_the_x_server_ends_it_with_a_message(self):
        server, number = self.x_server("-screen", "0", "640x700x24")
        program = self.nettlecap(environment={"DISPLAY": number}).spawn()
        keep_doing(
            lambda: self.copy_on(number, "noutra tela"),
            lambda: "noutra tela" in program.texts(),
            "it captures on the other server",
        )

        server.kill()
        status = program.process.wait(DEADLINE)
        program.process = None

        self.assertEqual(status, 1)
        self.assertIn("X", program.log.read_text())

    @staticmethod
    def copy_on(number, text):
        environment = {**os.environ, "DISPLAY": number}
        subprocess.run(["xclip", "-selection", "clipboard", "-i"], input=text.encode(), env=environment,
                       stdout=subprocess.DEVNULL, check=True, timeout=DEADLINE)


if __name__ == "__main__":
    main()
