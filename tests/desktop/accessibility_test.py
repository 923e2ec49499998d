"""What a mouse can do, a screen reader can do too."""

import accessible
from desktop import DesktopTest, main, wait_until


class AccessibilityTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.program = self.nettlecap(environment=accessible.ENVIRONMENT).start()

    def copied(self, *texts):
        for text in texts:
            self.offer(text)
            self.program.wait_for_text(text)

    def shown_with(self, *texts):
        self.copied(*texts)
        self.program.show_panel()
        wait_until(lambda: accessible.names("list item") == [*reversed(texts)], "a row for each text")
        return accessible.nodes("list item")

    def test_an_empty_history_says_so(self):
        self.program.show_panel()

        wait_until(lambda: "Nenhuma cópia ainda" in accessible.names("label"), "the text of the empty history")
        self.assertEqual(accessible.names("list item"), [])

    def test_a_row_has_its_text_and_its_source(self):
        newer, _ = self.shown_with("o primeiro", "o segundo")

        self.assertEqual(newer.get_name(), "o segundo")
        self.assertEqual(newer.get_description(), "Outro dispositivo · agora")

    def test_the_window_and_the_list_have_names(self):
        self.shown_with("uma linha")

        self.assertEqual(accessible.names("frame"), ["Nettlecap"])
        self.assertEqual(accessible.names("list"), ["Histórico"])

    def test_a_masked_text_is_not_read_out(self):
        self.copied("4539 1488 0343 6467")

        self.program.show_panel()

        wait_until(lambda: accessible.names("list item") == ["45••••••••••••"], "the masked text")
        self.assertNotIn("4539", accessible.nodes("list item")[0].get_description())

    def test_pressing_a_row_puts_its_text_back(self):
        self.shown_with("o primeiro", "o segundo")

        wait_until(lambda: accessible.press("list item", "o primeiro"), "the row is pressed")

        wait_until(lambda: self.pasted() == b"o primeiro", "the text of the pressed row can be pasted")

    def test_the_result_is_told(self):
        self.shown_with("o primeiro", "o segundo")

        wait_until(lambda: accessible.press("list item", "o primeiro"), "the row is pressed")

        told = "Copiado — use ⌘V para colar"
        wait_until(lambda: told in accessible.names("alert"), "the status text")


if __name__ == "__main__":
    main()
