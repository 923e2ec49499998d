"""Every setting changed without a mouse and without eyes, and found again in the file."""

from desktop import keys, main, wait_until
from reader import SETTINGS, Announcements, ReaderTest, tree

COMMAND, SHIFT, OPTION, CONTROL = 0x100000, 0x20000, 0x80000, 0x40000
MODIFIERS = {"⌃": CONTROL, "⌥": OPTION, "⇧": SHIFT, "⌘": COMMAND}
SHORTCUTS = {
    "Item anterior": ("previousShortcut", "1", 18, COMMAND),
    "Item seguinte": ("nextShortcut", "2", 19, COMMAND),
    "Abrir Nettlecap": ("openSearchShortcut", "V", 9, COMMAND | SHIFT),
    "Alternar favorito": ("toggleFavoriteShortcut", "F", 3, OPTION),
}
SWITCHES = {
    "Guardar imagens": "captureImages",
    "Iniciar automaticamente com o Mac": "launchAtLogin",
    "Colar automaticamente ao clicar em um item": "autoPaste",
    "Usar dois cliques para colar no histórico": "pasteHistoryOnDoubleClick",
    "Ocultar cartões, senhas e tokens": "protectSensitiveContent",
}
PURGE = "Limpar o histórico?"
BACK = ("push button", "Voltar ao histórico")


class SettingsTest(ReaderTest):
    preferences = {"autoPaste": True}  # else one of the switches is disabled

    def setUp(self):
        super().setUp()
        self.show_settings()

    def wait_for_checked(self, role, name, description, is_on):
        wait_until(
            lambda: (told := self.find(role, name, description)) and ("checked" in told) == is_on,
            f"{name} is {'on' if is_on else 'off'}",
        )

    def wait_for_shortcut(self, title, code, modifiers):
        wanted = {"keyCode": code, "modifiers": modifiers}
        self.wait_for_preference(SHORTCUTS[title][0], wanted)


class SwitchesTest(SettingsTest):
    def change(self, operate):
        for name, field in SWITCHES.items():
            with self.subTest(name):
                self.reach("check box", name)
                before = "checked" in self.wait_for("check box", name)
                for is_on in (not before, before):
                    operate(name)

                    self.wait_for_preference(field, is_on)
                    self.wait_for_checked("check box", name, None, is_on)
                    state = "Ativado" if is_on else "Desativado"
                    switch = self.wait_for("check box", name).node
                    self.assertEqual(switch.get_child_at_index(0).get_name(), state)

    def test_each_is_changed_by_pressing_it(self):
        self.change(lambda name: self.press("check box", name))

    def test_each_is_changed_by_toggling_it(self):
        self.change(lambda name: self.press("check box", name, action="Toggle"))

    def test_each_is_changed_with_the_keyboard(self):
        self.change(lambda name: keys("space"))
        self.change(lambda name: keys("Return"))

    def test_the_switch_of_two_clicks_is_out_of_reach_without_automatic_pasting(self):
        self.reach("check box", "Colar automaticamente ao clicar em um item")
        keys("space")
        self.wait_for_preference("autoPaste", False)
        keys("Page_Down")

        switch = self.wait_for(
            "check box",
            "Usar dois cliques para colar no histórico",
            "Ative a colagem automática para escolher entre um ou dois cliques.",
        )

        self.assertNotIn("focusable", switch)
        self.assertIn("read-only", switch)
        self.press("check box", switch.name)
        self.assertEqual(self.step("Tab")[0], "spin button")
        self.assertTrue(self.preference("pasteHistoryOnDoubleClick"))


class LimitTest(SettingsTest):
    preferences = {"maxHistoryItems": 4900}

    def limit(self):
        """The stepper, once it has the keyboard and therefore is in sight."""
        for told in tree(everything=True):
            if told.role == "spin button":
                self.reach(told.role, told.name)
                return self.wait_for("spin button")
        raise AssertionError("there is no stepper")

    def wait_for_limit(self, limit):
        self.wait_for_preference("maxHistoryItems", limit)
        told = self.wait_for("spin button", f"Limite do histórico: {limit} itens")
        self.assertEqual(told.node.get_current_value(), limit)

    def test_it_is_a_number_in_steps_between_bounds(self):
        node = self.limit().node

        self.assertEqual(node.get_current_value(), 4900)
        self.assertEqual((node.get_minimum_value(), node.get_maximum_value()), (50, 5000))
        self.assertEqual(node.get_minimum_increment(), 50)

    def test_the_keyboard_steps_it_up_to_its_end(self):
        self.limit()
        for wanted in (4950, 5000, 5000):
            keys("Up")
            self.wait_for_limit(wanted)
        keys("Down")
        self.wait_for_limit(4950)

    def test_actions_step_it_down_to_its_end(self):
        self.limit().node.set_current_value(100)
        self.wait_for_limit(100)
        for wanted in (50, 50):
            self.press("spin button", action="Decrease")
            self.wait_for_limit(wanted)
        self.press("spin button", action="Increase")
        self.wait_for_limit(100)

    def test_a_number_beyond_a_bound_becomes_the_bound(self):
        node = self.limit().node
        for given, wanted in ((20, 50), (9000, 5000), (700, 700)):
            with self.subTest(given):
                node.set_current_value(given)

                self.wait_for_limit(wanted)


class ShortcutsTest(SettingsTest):
    def test_each_has_its_key_and_its_modifiers(self):
        for title, (_, label, _, modifiers) in SHORTCUTS.items():
            with self.subTest(title):
                self.reach("combo box", "Tecla", f"{title}: {label}")
                for symbol, bit in MODIFIERS.items():
                    self.wait_for_checked("check box", symbol, title, bool(modifiers & bit))

    def test_each_key_is_chosen_by_pressing(self):
        for title, (_, label, _, modifiers) in SHORTCUTS.items():
            with self.subTest(title):
                self.reach("combo box", "Tecla", f"{title}: {label}")
                self.press("combo box", "Tecla", f"{title}: {label}")
                self.wait_for("list", "Tecla")
                self.assertIn("selected", self.wait_for("list item", label))

                self.press("list item", {"1": "5", "2": "6", "V": "S", "F": "D"}[label])

                chosen = {"1": ("5", 23), "2": ("6", 22), "V": ("S", 1), "F": ("D", 2)}[label]
                self.wait_for_shortcut(title, chosen[1], modifiers)
                self.wait_for_focus("combo box", "Tecla", f"{title}: {chosen[0]}")

    def test_each_key_is_chosen_with_the_keyboard(self):
        for title, (_, label, _, modifiers) in SHORTCUTS.items():
            with self.subTest(title):
                self.reach("combo box", "Tecla", f"{title}: {label}")
                keys("space")
                self.wait_for_focus("list item", label)
                announced = Announcements(self)
                keys("k")
                self.wait_for_focus("list item", "K")
                keys("Down")
                wait_until(lambda: ("list item", "L") in announced, "each step in the list is announced")

                keys("Return")

                self.wait_for_shortcut(title, 37, modifiers)
                self.wait_for_focus("combo box", "Tecla", f"{title}: L")

    def test_the_list_of_keys_is_left_without_a_change(self):
        self.reach("combo box", "Tecla", "Item anterior: 1")
        keys("Down")
        self.wait_for_focus("list item", "1")
        keys("Down", "Escape")

        self.wait_for_focus("combo box", "Tecla", "Item anterior: 1")
        self.wait_until_gone("list", "Tecla")

    def change_modifiers(self, operate):
        for title, (_, _, code, modifiers) in SHORTCUTS.items():
            for symbol, bit in MODIFIERS.items():
                if modifiers == bit:
                    continue  # the last one has a test of its own
                with self.subTest(title, symbol=symbol):
                    self.reach("check box", symbol, title)
                    for wanted in (modifiers ^ bit, modifiers):
                        operate(symbol, title)

                        self.wait_for_shortcut(title, code, wanted)
                        self.wait_for_checked("check box", symbol, title, bool(wanted & bit))

    def test_each_modifier_is_changed_by_pressing(self):
        self.change_modifiers(lambda symbol, title: self.press("check box", symbol, title))

    def test_each_modifier_is_changed_with_the_keyboard(self):
        self.change_modifiers(lambda symbol, title: keys("space"))

    def test_the_last_modifier_springs_back(self):
        for title, (field, _, code, modifiers) in SHORTCUTS.items():
            for symbol, bit in MODIFIERS.items():
                if modifiers != bit:
                    continue
                with self.subTest(title):
                    self.reach("check box", symbol, title)
                    keys("space")
                    self.press("check box", symbol, title)

                    self.press("check box", "⇧", title)  # which is kept, and so what came before it is decided
                    self.wait_for_shortcut(title, code, modifiers | SHIFT)
                    self.wait_for_checked("check box", symbol, title, True)

    def test_all_four_are_restored(self):
        for title in SHORTCUTS:
            self.reach("check box", "⌃", title)
            keys("space")
            self.wait_for_checked("check box", "⌃", title, True)

        self.operate("push button", "Restaurar atalhos padrão")

        for title, (_, _, code, modifiers) in SHORTCUTS.items():
            self.wait_for_shortcut(title, code, modifiers)

    def test_a_changed_shortcut_is_the_one_that_opens_the_panel(self):
        self.reach("check box", "⌃", "Abrir Nettlecap")
        keys("space")
        self.reach("check box", "⌘", "Abrir Nettlecap")
        keys("space")
        self.wait_for_shortcut("Abrir Nettlecap", 9, CONTROL | SHIFT)
        keys("Escape")
        self.wait_until_hidden()

        keys("ctrl+shift+v")

        self.wait_for_focus("text", "Buscar no histórico")


class FormTest(SettingsTest):
    def test_the_purge_is_done_only_after_a_yes(self):
        self.copied("um", "dois")
        self.reach("push button", "Limpar histórico…")
        keys("space")
        self.wait_for("dialog", PURGE)
        self.wait_for_focus("push button", "Cancelar")
        keys("Return")
        self.wait_until_gone("dialog")
        self.assertEqual(self.program.texts(), ["dois", "um"])
        self.wait_for_focus("push button", "Limpar histórico…")

        self.press("push button", "Limpar histórico…")
        self.press("push button", "Limpar")

        self.wait_for_texts()
        self.wait_until_gone("dialog")

    def test_the_alert_keeps_the_keyboard(self):
        self.reach("push button", "Limpar histórico…")
        keys("Return")
        self.wait_for_focus("push button", "Cancelar")

        cancel, purge = ("push button", "Cancelar"), ("push button", "Limpar")
        self.assertEqual(self.round("Tab", cancel), [purge, cancel])
        self.assertEqual(self.round("shift+Tab", cancel), [purge, cancel])

    def test_the_way_back_leads_to_the_history(self):
        for lead_back in (lambda: self.press(*BACK), lambda: self.operate(*BACK)):
            lead_back()
            self.wait_for_focus("text", "Buscar no histórico")
            self.press("push button", "Ajustes")
            self.wait_for("frame", SETTINGS)

    def test_escape_hides_the_panel_and_the_next_one_shows_the_history(self):
        self.step("Tab")
        keys("Escape")
        self.wait_until_hidden()

        self.show_panel()

        self.wait_for("frame", "Nettlecap")

    def test_the_keyboard_goes_through_all_controls_as_they_stand(self):
        order = [BACK, ("push button", "Buscar atualizações…")]
        for _ in SHORTCUTS:
            order += [("combo box", "Tecla"), *(("check box", symbol) for symbol in MODIFIERS)]
        order += [("push button", "Restaurar atalhos padrão")]
        order += [("check box", name) for name in list(SWITCHES)[:4]]
        order += [("spin button", "Limite do histórico: 500 itens"), ("push button", "Limpar histórico…")]
        order += [("check box", "Ocultar cartões, senhas e tokens")]

        keys("Tab")
        self.wait_for_focus(*BACK)
        self.assertEqual(self.round("Tab", BACK), [*order[1:], BACK])
        self.assertEqual(self.round("shift+Tab", BACK), [*reversed(order[1:]), BACK])


if __name__ == "__main__":
    main()
