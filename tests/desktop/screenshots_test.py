"""Pictures of the main view in each of its states for people to look at, in the artefacts
folder, light and dark."""

import accessible
from appearance import AppearanceTest, entry, message
from desktop import keys, main, run, wait_until

LONG = (
    "Prezados, segue a ata da reunião de quinta-feira.\n\n"
    "1. O contrato foi revisto e será assinado até o dia 30.\n"
    "2. A mudança para a sala nova começa na segunda-feira.\n"
    "3. O orçamento do próximo trimestre ainda depende da diretoria, que responde nesta semana "
    "e pediu que ninguém faça compras grandes até lá.\n\n"
    "Qualquer correção, por favor, até amanhã ao meio-dia.\nAbraços,\nJoão"
)
ENTRIES = (
    entry("Bom dia! Segue o relatório que combinamos."),
    entry(LONG, 2, "Mousepad", isFavorite=True),
    entry(None, 5, "GIMP", imageFilename="figura.png"),
    entry("4539 1488 0343 6467", 12, "Firefox", sensitiveKind="paymentCard"),
    entry("https://exemplo.com.br/pedidos?pagina=2&ordem=data&filtro=abertos", 58, "Firefox"),
    entry("const int resposta = 42;", 60 * 5, "Terminal do Xfce"),
    entry(None, 60 * 26, "LibreOffice Writer", imageFilename="sumiu.png"),
    entry("Rua das Laranjeiras, 210, apto. 31", 60 * 24 * 3, "Outro dispositivo", isFavorite=True),
    entry("", 60 * 24 * 4, ""),
    entry("git log --oneline --graph", 60 * 24 * 9, "Terminal do Xfce"),
    entry("Relatório final, versão 3", 60 * 24 * 40, "LibreOffice Calc"),
    entry("mais antigo", 60 * 24 * 400),
)
MESSAGES = (
    message("Assinatura", "Atenciosamente,\nMaria da Silva\nDepartamento de Compras"),
    message("Resposta automática", "Olá! Recebi a sua mensagem e respondo assim que puder, em geral no mesmo dia.", 5),
    message("Endereço", "Rua das Laranjeiras, 210, apto. 31", 9),
)
EMPTY = ("Nenhuma cópia ainda", "Nenhuma mensagem salva")


class EmptyScreenshotsTest(AppearanceTest):
    def walk(self, appearance):
        self.start_with(appearance)
        self.told("label", EMPTY[0])
        self.take("history-empty")
        keys("Right")
        self.told("label", EMPTY[1])
        self.take("messages-empty")
        self.press("push button", "Criar mensagem")
        self.told("dialog", "Nova mensagem salva")
        self.take("editor-new")

    def test_light(self):
        self.walk("light")

    def test_dark(self):
        self.walk("dark")


class ScreenshotsTest(AppearanceTest):
    def start_filled(self, appearance):
        self.store_picture("figura.png", "-size", "640x400", "plasma:royalblue-gold")
        self.start_with(appearance, ENTRIES, MESSAGES)
        wait_until(lambda: len(accessible.names("list item")) >= 7, "the rows")

    def walk_history(self, appearance):
        self.start_filled(appearance)
        self.assertIn("45••••••••••••", accessible.names("list item"))
        self.take("history")
        self.hovered()
        self.chosen()
        self.menu()
        self.alerts()
        self.searched()
        self.messages_of_the_program()

    def hovered(self):
        self.hover("list item", "const int resposta = 42;")
        self.told("label", "Copiado")
        self.take("row-hovered")
        self.park()
        self.gone("label", "Copiado")
        self.hover("push button", "Ajustes")
        self.told("tool tip", "Ajustes")
        self.take("help")
        self.park()
        self.gone("tool tip", "Ajustes")

    def chosen(self):
        for heading, name in (("Texto copiado", "text"), ("Copiado", "age"), ("Copiado", "short"),
                              ("Imagem copiada", "picture")):
            keys("Down")
            self.told("label", heading) if heading == "Copiado" else self.told("heading", heading)
            self.take(f"preview-{name}")
        self.assertEqual(accessible.selected("list item"), ["Imagem copiada"])
        keys("Down")
        wait_until(lambda: accessible.selected("list item") == ["45••••••••••••"], "the masked row is chosen")
        self.told("label", "Copiado")
        self.take("row-chosen-masked")

    def menu(self):
        self.hover("list item", "Imagem copiada")
        run("xdotool", "click", "3")
        self.told("menu item", "Colar agora", "Copiar", "Favoritar", "Ver imagem", "Excluir…")
        keys("Down")
        self.take("menu")
        keys("Escape")
        self.gone("menu item", "Excluir…")
        self.park()

    def alerts(self):
        keys("Delete")
        self.told("dialog", "Excluir item do histórico?")
        self.take("alert-delete")
        keys("Escape")
        self.gone("dialog", "Excluir item do histórico?")
        self.press("push button", "Limpar")
        self.told("dialog", "Limpar os itens não favoritados?")
        self.take("alert-clear")
        keys("Escape")
        self.gone("dialog", "Limpar os itens não favoritados?")

    def searched(self):
        self.search("relat")
        self.rows("Bom dia! Segue o relatório que combinamos.", "Relatório final, versão 3")
        self.take("search")
        self.search("jabuticaba")
        self.told("label", "Nada encontrado")
        self.take("search-in-vain")
        keys("ctrl+a", "BackSpace")
        wait_until(lambda: len(accessible.names("list item")) >= 7, "all rows again")

    def messages_of_the_program(self):
        self.press("push button", "Monitorando")
        self.told("push button", "Pausado")
        self.told("alert", "Monitoramento pausado")
        self.take("paused")
        self.program.data.chmod(0o500)
        self.addCleanup(self.program.data.chmod, 0o700)
        self.press("push button", "Favoritar")
        wait_until(lambda: any("Não foi possível salvar" in name for name in accessible.names("alert")), "the error")
        self.take("status-and-error")

    def walk_messages(self, appearance):
        self.start_filled(appearance)
        keys("Right")
        self.rows("Assinatura", "Resposta automática", "Endereço")
        self.take("messages")
        keys("Down")
        self.told("heading", "Mensagem salva")
        self.take("preview-message")
        self.hover("list item", "Endereço")
        self.told("tool tip", "Clique para colar esta mensagem")
        self.take("message-hovered")
        run("xdotool", "click", "3")
        self.told("menu item", "Colar agora", "Copiar", "Editar", "Excluir")
        self.take("message-menu")
        keys("Escape")
        self.park()
        self.search("laranj")
        self.rows("Endereço")
        self.take("messages-search")
        self.press("push button", "Editar mensagem")
        self.told("dialog", "Editar mensagem")
        self.take("editor-edit")
        keys("Tab", "ctrl+a", "Delete")
        self.take("editor-emptied")
        accessible.press("push button", "Salvar")  # in vain: there is nothing to save
        self.told("dialog", "Editar mensagem")

    def test_history_light(self):
        self.walk_history("light")

    def test_history_dark(self):
        self.walk_history("dark")

    def test_messages_light(self):
        self.walk_messages("light")

    def test_messages_dark(self):
        self.walk_messages("dark")


if __name__ == "__main__":
    main()
