"""What a mouse can do, a screen reader can do too."""

import accessible
from desktop import DesktopTest, keys, main, wait_until


class AccessibilityTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.program = self.nettlecap(environment=accessible.ENVIRONMENT).start()

    def shown_with(self, *texts):
        for text in texts:
            self.offer(text)
            self.program.wait_for_text(text)
        self.program.show_panel()
        return wait_until(lambda: accessible.nodes("list item"), "rows")

    def test_an_empty_history_says_so(self):
        self.program.show_panel()

        wait_until(lambda: "Nenhuma cópia ainda" in accessible.names("label"), "the text of the empty history")
        self.assertEqual(accessible.names("list item"), [])

    def test_a_row_has_its_text_and_its_source(self):
        first, second = self.shown_with("o primeiro", "o segundo")

        self.assertEqual([first.get_name(), second.get_name()], ["o segundo", "o primeiro"])
        self.assertEqual(first.get_description(), "Outro dispositivo · agora")

    def test_the_window_and_the_list_have_names(self):
        self.shown_with("uma linha")

        self.assertEqual(accessible.names("frame"), ["Nettlecap"])
        self.assertEqual(accessible.names("list"), ["Histórico"])

    def test_a_masked_text_is_not_read_out(self):
        (row,) = self.shown_with("4539 1488 0343 6467")

        self.assertEqual(row.get_name(), "45••••••••••••")
        self.assertNotIn("4539", row.get_description())

    def test_pressing_a_row_puts_its_text_back(self):
        _, older = self.shown_with("o primeiro", "o segundo")

        accessible.press(older)

        wait_until(lambda: self.pasted() == b"o primeiro", "the text of the pressed row can be pasted")

    def test_the_result_is_told(self):
        self.shown_with("o primeiro", "o segundo")

        keys("Down", "Return")

        wait_until(lambda: any(accessible.names("alert")), "the status text")


if __name__ == "__main__":
    main()
