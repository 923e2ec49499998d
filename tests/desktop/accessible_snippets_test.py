"""Saved messages written, used and thrown away without a mouse and without eyes."""

from desktop import keys, main, wait_until
from reader import Announcements, ReaderTest

HELP = "Clique para colar esta mensagem"
TITLE = ("text", "Título")
CONTENT = ("text", "Conteúdo")
CANCEL = ("push button", "Cancelar")
SAVE = ("push button", "Salvar")


class SnippetsTest(ReaderTest):
    def setUp(self):
        super().setUp()
        self.show_messages()

    def fill_in(self, title, *lines):
        """In the editor that is open; leaves the keyboard in the content."""
        self.wait_for_focus(*TITLE)
        self.type(title)
        keys("Tab")
        self.wait_for_focus(*CONTENT)
        for number, line in enumerate(lines):
            if number:
                keys("Return")
            self.type(line)
        self.wait_for_written("\n".join(lines), *CONTENT)

    def write(self, title, *lines):
        self.press("push button", "Adicionar")
        self.fill_in(title, *lines)
        self.press(*SAVE)
        self.wait_until_sheet_closed()
        self.wait_for("list item", title)

    def test_the_first_one_is_written_with_the_keyboard(self):
        announced = Announcements(self)
        self.operate("push button", "Criar mensagem")
        self.wait_for("dialog", "Nova mensagem salva")
        wait_until(lambda: TITLE in announced, "the place to write in is announced")
        self.fill_in("Fim", "Bom dia,", "Ana")

        keys("ctrl+Tab")
        self.wait_for_focus(*CANCEL)
        keys("Tab")
        self.wait_for_focus(*SAVE)
        keys("Return")

        self.wait_for_messages(("Fim", "Bom dia,\nAna"))
        self.wait_for_rows("Fim")
        self.wait_for_focus("text", "Buscar no salvos")

    def test_another_one_is_written_from_the_footer(self):
        self.write("um", "1")
        self.operate("push button", "Adicionar")

        self.fill_in("dois", "2")
        keys("shift+Tab")
        self.wait_for_focus(*TITLE)
        keys("Return")

        wait_until(lambda: len(self.program.document()["snippets"]) == 2, "both are kept")
        self.wait_until_gone("dialog")

    def test_a_row_tells_title_content_and_what_pressing_it_does(self):
        self.write("Assinatura", "Bom dia,", "Ana")

        row = self.wait_for("list item", "Assinatura", HELP)

        self.assertEqual(row.node.get_parent().get_name(), "Salvos")
        self.wait_until_said("Bom dia, Ana", "Editar mensagem")

    def test_a_message_is_pasted(self):
        self.write("um", "primeira mensagem")
        keys("Escape")
        self.wait_until_hidden()
        target = self.target()
        self.show_messages()
        announced = Announcements(self)
        keys("Down")
        wait_until(lambda: ("list item", "um") in announced, "the row is announced")

        keys("Return")

        target.expect("primeira mensagem")

    def test_a_message_is_copied(self):
        self.write("um", "primeira mensagem")

        self.press("list item", "um", HELP)

        wait_until(lambda: self.pasted() == b"primeira mensagem", "the message can be pasted")

    def test_what_is_typed_searches_titles_and_contents(self):
        self.write("um", "laranja")
        self.write("dois", "banana")

        self.search_for("lara")

        self.wait_for_rows("um")

    def test_a_message_is_edited_from_its_pencil_and_from_its_menu(self):
        self.write("um", "velho")
        self.press("push button", "Editar mensagem")
        self.wait_for("dialog", "Editar mensagem")
        self.wait_for_focus(*TITLE)
        keys("Tab", "ctrl+a")
        self.type("novo")
        self.wait_for_written("novo", *CONTENT)
        keys("shift+Tab", "shift+Tab")
        self.wait_for_focus(*SAVE)
        keys("space")
        self.wait_for_messages(("um", "novo"))
        self.wait_until_sheet_closed()
        self.wait_for_focus("text", "Buscar no salvos")

        keys("Down", "shift+F10", "Down", "Down", "Down")
        self.wait_for_focus("menu item", "Editar")
        keys("Return")
        self.wait_for_focus(*TITLE)
        keys("ctrl+a")
        self.type("outro")
        keys("Return")

        self.wait_for_messages(("outro", "novo"))

    def test_what_is_cancelled_changes_nothing(self):
        self.write("um", "1")
        with_keyboard = lambda: self.operate(*CANCEL, key="shift+Tab")  # noqa: E731
        for cancel in (lambda: keys("Escape"), lambda: self.press(*CANCEL), with_keyboard):
            self.press("push button", "Editar mensagem")
            self.wait_for_focus(*TITLE)
            self.type("x")

            cancel()

            self.wait_until_gone("dialog")
            self.wait_for_focus("text", "Buscar no salvos")
            self.wait_for_rows("um")
        self.wait_for_messages(("um", "1"))

    def test_a_message_is_deleted_from_its_menu(self):
        self.write("um", "1")
        keys("Down", "Menu")
        self.wait_for("popup menu")
        keys("Up")
        self.wait_for_focus("menu item", "Excluir")

        keys("Return")

        self.wait_for_messages()
        self.wait_until_said("Nenhuma mensagem salva")

    def test_the_menu_of_a_message_is_read_out_line_by_line(self):
        self.write("um", "1")
        self.press("list item", "um", action="Toggle")
        for line in ("Colar agora", "Copiar", "Editar", "Excluir"):
            keys("Down")

            self.wait_for_focus("menu item", line)

    def test_without_content_there_is_nothing_to_save(self):
        self.press("push button", "Adicionar")
        self.wait_for_focus(*TITLE)
        self.assertNotIn("focusable", self.wait_for(*SAVE))
        self.assertIn("read-only", self.wait_for(*SAVE))

        self.press(*SAVE)
        keys("Return")

        self.assertEqual(self.round("shift+Tab", TITLE), [CANCEL, CONTENT, TITLE])
        self.wait_for("dialog", "Nova mensagem salva")
        keys("Tab")
        self.wait_for_focus(*CONTENT)
        self.type("x")
        wait_until(lambda: "focusable" in self.wait_for(*SAVE), "it can be saved")

    def test_the_keyboard_goes_round_within_the_editor(self):
        self.write("um", "1")
        self.press("push button", "Editar mensagem")
        self.wait_for_focus(*TITLE)

        self.assertEqual(self.round("shift+Tab", TITLE), [SAVE, CANCEL, CONTENT, TITLE])
        forwards = [self.step(key)[:2] for key in ("Tab", "ctrl+Tab", "Tab", "Tab")]  # Tab is a letter of the content
        self.assertEqual(forwards, [CONTENT, CANCEL, SAVE, TITLE])

    def test_the_keyboard_goes_through_all_controls_as_they_stand(self):
        order = [
            ("push button", "Criar mensagem"),
            ("push button", "Monitorando"),
            ("push button", "Adicionar"),
            ("push button", "Sair"),
            ("radio button", "Histórico"),
            ("radio button", "Salvos"),
            ("push button", "Ajustes"),
            ("text", "Buscar no salvos"),
        ]

        self.expect_rounds(order)
        keys("Escape")
        self.wait_until_hidden()


if __name__ == "__main__":
    main()
