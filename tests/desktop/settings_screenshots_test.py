"""Pictures of the settings from top to bottom for people to look at, in the artefacts
folder, light and dark."""

import accessible
from appearance import AppearanceTest, entry
from desktop import keep_doing, keys, main, run

TOGGLES = {"autoPaste": False, "pasteHistoryOnDoubleClick": True, "captureImages": True, "launchAtLogin": True}
SHORTCUTS = {
    name: {"keyCode": code, "modifiers": modifiers}
    for name, code, modifiers in (("previousShortcut", 18, 0x100000), ("nextShortcut", 19, 0x1E0000),
                                  ("openSearchShortcut", 9, 0x120000), ("toggleFavoriteShortcut", 3, 0x80000))
}
PROTECTED = "Ocultar cartões, senhas e tokens"
AUTO_PASTE = "Colar automaticamente ao clicar em um item"


class SettingsScreenshotsTest(AppearanceTest):
    def walk(self, appearance):
        self.start_with(appearance, [entry("um"), entry("dois", 3)],
                        preferences=TOGGLES | SHORTCUTS | {"protectSensitiveContent": True, "maxHistoryItems": 5000})
        self.press("push button", "Ajustes")
        self.told("heading", "Atualizações", "Atalhos globais")
        self.panel = self.screen.window("Nettlecap", "Ajustes do Nettlecap")
        self.assertTrue(self.panel)
        self.take("settings-1")
        self.keys_of_a_shortcut()
        self.behaviour()
        self.storage()
        self.privacy()

    def seen(self, role, name):
        """Whether the middle of it is in sight."""
        height = self.panel.get_geometry().height
        return any(60 < top + tall // 2 < height - 20 for _, top, _, tall in accessible.places(role, name)[:1])

    def scroll_to(self, role, name):
        left, top = self.screen.position(self.panel)
        run("xdotool", "mousemove", str(left + 4), str(top + 300))
        keep_doing(lambda: run("xdotool", "click", "5"), lambda: self.seen(role, name), name, every=0.4)
        self.park()

    def keys_of_a_shortcut(self):
        self.press("combo box", "Tecla")
        self.told("list item", "1", "2")
        self.take("settings-keys")
        keys("Escape")
        self.gone("list", "Tecla")

    def behaviour(self):
        self.scroll_to("label", "Permissão de Acessibilidade concedida")
        self.take("settings-2")
        self.press("check box", AUTO_PASTE)
        self.told("label", "Ativado: um clique seleciona e copia; dois cliques colam. Desativado: um clique cola.")
        self.take("settings-auto-paste")

    def storage(self):
        self.scroll_to("push button", "Limpar histórico…")
        self.take("settings-3")
        self.press("push button", "Limpar histórico…")
        self.told("dialog", "Limpar o histórico?")
        self.take("settings-alert")
        keys("Escape")
        self.gone("dialog", "Limpar o histórico?")

    def privacy(self):
        self.scroll_to("label", "Caminhos, nomes de usuário, repositórios e URLs não são tratados como senhas.")
        self.take("settings-4")
        self.press("check box", PROTECTED)
        self.told("label", "Proteção desativada: conteúdos sensíveis ficarão visíveis no Nettlecap.")
        self.take("settings-unprotected")
        keys("Tab", "Tab")
        self.take("settings-focused")

    def test_light(self):
        self.walk("light")

    def test_dark(self):
        self.walk("dark")


if __name__ == "__main__":
    main()
