"""Pictures of the program for people to look at, in the artefacts folder."""

from desktop import ARTEFACTS, DesktopTest, keys, main, run, settled_screenshot


class ScreenshotsTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.program = self.nettlecap().start()
        run("convert", "-size", "640x400", "plasma:royalblue-gold", str(self.folder / "picture.png"))
        for text in (
            "Bom dia! Segue o relatório que combinamos.",
            "https://exemplo.com.br/pedidos?pagina=2",
            "4539 1488 0343 6467",
            "Reunião na quinta-feira, às 14h30, na sala do segundo andar; levar o contrato assinado.",
        ):
            self.offer(text)
            self.program.wait_for_text(text)
        self.offer((self.folder / "picture.png").read_bytes(), "image/png")
        self.program.wait_for_image()
        self.offer("const int resposta = 42;")
        self.program.wait_for_text("const int resposta = 42;")

    def test_the_panel_with_texts_a_masked_card_and_a_picture(self):
        self.program.show_panel()

        self.taken("panel")

        card = next(entry for entry in self.program.history() if entry.get("sensitiveKind"))
        self.assertEqual(card["sensitiveKind"], "paymentCard")

    def test_the_panel_with_a_row_chosen(self):
        self.program.show_panel()
        keys("Down", "Down", "Down")

        self.taken("panel-with-a-row-chosen")

    def taken(self, name):
        settled_screenshot(name)
        colours = run("identify", "-format", "%k", str(ARTEFACTS / f"{name}.png"))
        self.assertGreater(int(colours), 100)


if __name__ == "__main__":
    main()
