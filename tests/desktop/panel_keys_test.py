"""The panel under a real keyboard: everything is done from the search field."""

from desktop import main, wait_until
from panel import PanelTest

DELETE = "Excluir item do histórico?"


class PanelKeysTest(PanelTest):
    def setUp(self):
        super().setUp()
        self.copied("linha um", "linha dois", "linha três", "outra")
        self.open_panel()

    def texts(self):
        return self.program.texts()

    def test_left_and_right_switch_sections_inside_a_query(self):
        self.keyboard.tap(*"lina")
        self.wait_for_query("lina")

        self.keyboard.tap("Right")
        self.wait_for_section("Salvos")
        self.keyboard.tap("Left", "Left")
        self.wait_for_section("Histórico")

        self.keyboard.tap("BackSpace")  # the caret is still at the end
        self.wait_for_query("lin")
        self.wait_for_rows("linha três", "linha dois", "linha um")

    def test_the_arrows_stop_at_both_ends(self):
        self.keyboard.tap("Up")
        self.wait_for_selection("linha um")
        self.keyboard.tap("Down", "Down", "Up")
        self.wait_for_selection("linha dois")
        self.keyboard.tap("Up", "Up")
        self.wait_for_selection("outra")
        self.keyboard.tap("Up", "Up", "Down")
        self.wait_for_selection("linha três")

    def test_with_nothing_selected_backspace_and_delete_edit_the_query(self):
        self.keyboard.tap(*"xlin")
        self.keyboard.tap("BackSpace")
        self.wait_for_query("xli")

        self.keyboard.tap("Home", "Delete")

        self.wait_for_query("li")

    def test_with_a_row_selected_backspace_and_delete_ask_and_leave_the_query(self):
        self.keyboard.tap(*"linha", "Down")
        self.wait_for_selection("linha três")
        for asking in ("BackSpace", "Delete"):
            for answer in ("Escape", "Return"):
                with self.subTest(asking, answer=answer):
                    self.keyboard.tap(asking)
                    self.wait_for_dialog(DELETE)

                    self.keyboard.tap(answer)

                    self.wait_until_answered()
                    self.wait_for_query("linha")
                    self.wait_for_selection("linha três")
                    self.assertEqual(len(self.texts()), 4)

    def test_after_the_question_the_search_field_has_the_keyboard_again(self):
        self.keyboard.tap(*"linha", "Down", "Delete")
        self.wait_for_dialog(DELETE)
        self.keyboard.tap("Escape")
        self.wait_until_answered()

        self.keyboard.tap("space", "t")

        self.wait_for_query("linha t")
        self.wait_for_rows("linha três")

    def delete_selected(self):
        self.keyboard.tap("Delete")
        self.wait_for_dialog(DELETE)
        self.keyboard.tap("Tab", "Return")
        self.wait_until_answered()

    def test_deleting_selects_the_neighbour_so_that_it_can_go_on(self):
        self.keyboard.tap("Down", "Down", "Down")
        self.wait_for_selection("linha dois")

        self.delete_selected()
        self.wait_for_selection("linha um")  # it has moved up
        self.delete_selected()
        self.wait_for_selection("linha três")  # it is the last one now

        self.wait_for_rows("outra", "linha três")
        wait_until(lambda: self.texts() == ["outra", "linha três"], "the two are gone from the history")

    def test_deleting_the_only_row_of_a_query_leaves_nothing_selected(self):
        self.keyboard.tap(*"outra", "Down")
        self.wait_for_selection("outra")

        self.delete_selected()

        self.wait_for_rows()
        self.keyboard.tap("BackSpace")  # there is nothing to ask about
        self.wait_for_query("outr")

    def test_return_with_no_row_to_paste_does_nothing(self):
        self.keyboard.tap(*"nada", "Return", "s")

        self.wait_for_query("nadas")
        self.assertEqual(self.pasted(), b"outra")

    def test_a_selected_row_shows_its_preview_until_the_other_section_comes(self):
        self.keyboard.tap("Down")
        self.wait_for_preview("Copiado")

        self.keyboard.tap("Right")

        self.wait_for_section("Salvos")
        self.wait_until_no_preview()

    def test_escape_closes_the_panel_with_its_preview(self):
        self.keyboard.tap("Down")
        self.wait_for_preview("Copiado")

        self.keyboard.tap("Escape")

        self.wait_until_closed()
        self.wait_until_no_preview()


if __name__ == "__main__":
    main()
