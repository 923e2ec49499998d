"""Every text that the panel has, letter for letter, where a screen reader finds it."""

import json
import os
import subprocess

from desktop import PROGRAM, keys, main, run, wait_until
from reader import SETTINGS, ReaderTest, tree

HEADER = ("Nettlecap", "Histórico", "Salvos", "Ajustes")
EMPTY_HISTORY = (
    *HEADER,
    "Buscar no histórico",
    "Nenhuma cópia ainda",
    "Textos e imagens copiados aparecerão aqui.",
    "Monitorando",
    "Limpar",
    "Sair",
)
NOTHING_FOUND = ("Nada encontrado", "Tente buscar por outro termo.")
NO_MESSAGES = (
    *HEADER,
    "Buscar no salvos",
    "Nenhuma mensagem salva",
    "Salve respostas, assinaturas e textos usados com frequência.",
    "Criar mensagem",
    "Adicionar",
    "Sair",
)
MENU = ["Colar agora", "Copiar", "Favoritar", "", "Excluir…"]  # "" is the divider
PICTURE_MENU = ["Colar agora", "Copiar", "Favoritar", "Ver imagem", "", "Excluir…"]
FAVORITE_MENU = ["Colar agora", "Copiar", "Remover dos favoritos", "", "Excluir…"]
MESSAGE_MENU = ["Colar agora", "Copiar", "Editar", "", "Excluir"]
DELETION = "Tem certeza de que deseja excluir permanentemente “{}” do histórico?"
SHORTCUTS = (
    "Atalhos globais",
    *("Item anterior", "Item seguinte", "Abrir Nettlecap", "Alternar favorito"),
    *("Tecla", "⌃", "⌥", "⇧", "⌘"),
    "Restaurar atalhos padrão",
    "As alterações são aplicadas imediatamente.",
    "Padrões: ⌘1 para voltar, ⌘2 para avançar, ⌘⇧V para pesquisar e ⌥F para favoritar ou desfavoritar a seleção.",
)
BEHAVIOR = (
    "Comportamento",
    "Guardar imagens",
    "Iniciar automaticamente com o Mac",
    "Colar automaticamente ao clicar em um item",
    "Usar dois cliques para colar no histórico",
    "Ao navegar com os atalhos, o item é colado quando você solta as teclas.",
    "Permissão de Acessibilidade concedida",
    *("Ativado", "Desativado"),
)
STORAGE = (
    "Armazenamento",
    "Limite do histórico: 500 itens",
    "Itens favoritados e mensagens da guia Salvos não são removidos pelo limite do histórico.",
    "Limpar histórico…",
    "Remove permanentemente do Nettlecap os textos e imagens não favoritados. O histórico do Spotlight é "
    "controlado pelo macOS; o Nettlecap não tem acesso para excluí-lo ou modificá-lo.",
)
PRIVACY = (
    "Privacidade",
    "O histórico fica somente neste Mac. Conteúdos marcados por outros aplicativos como temporários ou "
    "confidenciais são ignorados.",
    "Ocultar cartões, senhas e tokens",
)
PROTECTED = (
    "Conteúdos provavelmente sensíveis ficam mascarados na lista, na busca, no preview e durante a navegação. "
    "Eles só são revelados ao copiar ou colar.",
    "Caminhos, nomes de usuário, repositórios e URLs não são tratados como senhas.",
)
UNPROTECTED = "Proteção desativada: conteúdos sensíveis ficarão visíveis no Nettlecap."
NO_PASTING = "Ative a colagem automática para escolher entre um ou dois cliques."
PASTING = "Ativado: um clique seleciona e copia; dois cliques colam. Desativado: um clique cola."
PURGE = (
    "Limpar o histórico?",
    "Os itens não favoritados e seus arquivos serão excluídos permanentemente do aplicativo Nettlecap. Favoritos "
    "e mensagens da guia Salvos serão preservados. O histórico do Spotlight é controlado pelo macOS; o Nettlecap "
    "não tem acesso para excluí-lo ou modificá-lo.",
    *("Limpar", "Cancelar"),
)


NO_PERMISSION = (
    "A colagem automática pedirá permissão de Acessibilidade",
    "Copiado. Autorize Acessibilidade para colar automaticamente.",
)
SWITCHED_OFF = (
    "O macOS aguarda sua autorização nos Itens de Início.",
    "Abrir Itens de Início",
    "Autorize o Nettlecap nos Itens de Início do macOS",
)


class HistoryTextsTest(ReaderTest):
    def lines_of_the_menu(self):
        self.wait_for("menu item", "Copiar")
        return [told.name for told in tree() if told.role in ("menu item", "separator")]

    def select_top_row(self):
        self.show_panel()
        keys("Down")
        self.wait_for_selection(self.wait_for("list item").name)

    def copied_picture(self):
        file = self.folder / "picture.png"
        subprocess.run(["convert", "-size", "300x200", "gradient:red-blue", file], check=True)
        self.offer(file.read_bytes(), "image/png")
        self.program.wait_for_image()

    def test_of_the_empty_history(self):
        self.show_panel()
        self.wait_until_said(*EMPTY_HISTORY)

    def test_of_a_search_in_vain(self):
        self.copied("um")
        self.show_panel()
        self.search_for("x")
        self.wait_until_said(*NOTHING_FOUND)

    def test_of_a_short_text(self):
        self.copied("um")
        self.select_top_row()
        self.wait_until_said("um", "Outro dispositivo · agora", "Favoritar", "Copiado")

        keys("Menu")

        self.assertEqual(self.lines_of_the_menu(), MENU)

    def test_of_a_favourite(self):
        self.copied("um")
        self.select_top_row()
        self.press("push button", "Favoritar")
        self.wait_until_said("Remover dos favoritos", "Adicionado aos favoritos")

        keys("Menu")

        self.assertEqual(self.lines_of_the_menu(), FAVORITE_MENU)

    def test_of_a_long_text(self):
        long = "palavra " * 40
        self.copied(long)
        self.select_top_row()
        self.wait_until_said("Texto copiado", long, long.strip())

        keys("Delete")

        self.wait_until_said(DELETION.format(long[:90].strip() + "..."))

    def test_of_a_picture(self):
        self.copied_picture()
        self.select_top_row()
        keys("Menu")
        self.assertEqual(self.lines_of_the_menu(), PICTURE_MENU)
        self.press("menu item", "Ver imagem")
        self.wait_for("heading", "Imagem copiada")

        keys("Delete")

        self.wait_until_said(DELETION.format("Imagem copiada"))

    def test_of_the_questions(self):
        self.copied("um")
        self.select_top_row()
        keys("Delete")
        self.wait_until_said("Excluir item do histórico?", DELETION.format("um"), "Excluir", "Cancelar")
        keys("Escape")
        self.wait_until_gone("dialog")

        self.press("push button", "Limpar")

        self.wait_until_said("Limpar os itens não favoritados?", "Limpar histórico", "Cancelar")

    def test_of_the_pause(self):
        self.show_panel()
        self.press("push button", "Monitorando")
        self.wait_until_said("Pausado", "Monitoramento pausado")

        self.press("push button", "Pausado")

        self.wait_until_said("Monitorando", "Monitoramento ativado")

    def test_of_the_messages(self):
        self.show_messages()
        self.wait_until_said(*NO_MESSAGES)
        self.press("push button", "Criar mensagem")
        self.wait_until_said("Nova mensagem salva", "Título", "Cancelar", "Salvar")
        self.wait_for_focus("text", "Título")
        keys("Tab", "a", "shift+Tab", "Return")
        self.wait_until_sheet_closed()
        keys("Down")
        self.wait_until_said("Clique para colar esta mensagem", "Editar mensagem", "Mensagem salva", "a")

        keys("Menu")
        self.assertEqual(self.lines_of_the_menu(), MESSAGE_MENU)
        self.press("menu item", "Editar")

        self.wait_for("dialog", "Editar mensagem")


class FormTextsTest(ReaderTest):
    def read_the_form(self, last):
        """With the keyboard, from its first control to its last text."""
        said = set()
        while self.step("Tab")[1] != "Ocultar cartões, senhas e tokens":
            said |= self.said()
        keys("Page_Down")
        self.wait_until_said("Ocultar cartões, senhas e tokens", last)
        return said | self.said()


class SettingsTextsTest(FormTextsTest):
    preferences = {"captureImages": False}

    def test_of_the_form(self):
        self.show_settings()

        said = self.read_the_form(PROTECTED[-1])

        self.assertLessEqual(
            {
                *(SETTINGS, "Voltar ao histórico", "Fechar ajustes e voltar ao histórico", "Buscar atualizações…"),
                *SHORTCUTS,
                *BEHAVIOR,
                *STORAGE,
                *("Histórico armazenado: 0 itens • 0 imagens", NO_PASTING),
                *PRIVACY,
                *PROTECTED,
            },
            said,
        )
        self.assertTrue([text for text in said if text.startswith("Espaço utilizado: ")])
        self.assertFalse({PASTING, UNPROTECTED} & said)

    def test_of_the_purge(self):
        self.show_settings()
        self.reach("push button", "Limpar histórico…")
        keys("space")
        self.wait_until_said(*PURGE)


class OtherSettingsTextsTest(FormTextsTest):
    preferences = {"autoPaste": True, "protectSensitiveContent": False, "maxHistoryItems": 50}

    def test_of_the_form(self):
        self.copied("um")
        self.show_settings()

        said = self.read_the_form(UNPROTECTED)

        wanted = {PASTING, UNPROTECTED, "Limite do histórico: 50 itens", "Histórico armazenado: 1 item • 0 imagens"}
        self.assertLessEqual(wanted, said)
        self.assertFalse({NO_PASTING, *PROTECTED} & said)


class EmptyTextTest(ReaderTest):
    def start(self):
        self.program.data.mkdir(parents=True, mode=0o700)
        empty = {"id": "00000000-0000-4000-8000-000000000000", "kind": "text", "text": "", "createdAt": 0,
                 "fingerprint": "", "isFavorite": False, "sourceApplication": "Mousepad"}
        self.program.state_file.write_text(json.dumps({"entries": [empty], "snippets": []}))
        super().start()

    def test_of_a_text_without_any_characters(self):
        self.show_panel()
        self.wait_for("list item", "Texto vazio")


class PermissionTextsTest(ReaderTest):
    """On an X server that takes no keys from programs. Nobody can press any there, either."""

    preferences = {"autoPaste": True, "pasteHistoryOnDoubleClick": False}

    def start(self):
        _, self.program.environment["DISPLAY"] = self.x_server("-extension", "XTEST")
        self.program.data.mkdir(parents=True, mode=0o700)
        kept = {"id": "00000000-0000-4000-8000-000000000000", "kind": "text", "text": "um", "createdAt": 0,
                "fingerprint": "", "isFavorite": False, "sourceApplication": "Mousepad"}
        self.program.state_file.write_text(json.dumps({"entries": [kept], "snippets": []}))
        self.addCleanup(self.program.stop)  # before its X server
        self.program.spawn()

    def test_of_pasting_that_nobody_permits(self):
        self.press("push button", "Ajustes")
        wait_until(lambda: NO_PERMISSION[0] in self.said(everything=True), "it says that it will ask")
        self.press("push button", "Voltar ao histórico")

        self.press("list item", "um")
        self.wait_until_gone("frame")
        run(PROGRAM, env={**os.environ, **self.program.environment})

        self.wait_until_said(NO_PERMISSION[1])


class SwitchedOffTextsTest(FormTextsTest):
    """The user took the program out of the session's start, in the desktop's own settings."""

    def start(self):
        entry = self.program.config / "autostart" / "com.nettlecap.Nettlecap.desktop"
        entry.parent.mkdir(parents=True)
        entry.write_text("[Desktop Entry]\nType=Application\nName=Nettlecap\nExec=nettlecap\nHidden=true\n")
        super().start()

    def test_of_a_start_that_the_user_switched_off(self):
        self.show_panel()
        self.wait_until_said(SWITCHED_OFF[2])
        self.press("push button", "Ajustes")
        self.wait_for("frame", SETTINGS)

        self.assertLessEqual({*SWITCHED_OFF[:2]}, self.read_the_form(PROTECTED[-1]))


if __name__ == "__main__":
    main()
