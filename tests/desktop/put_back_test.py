"""What the history holds goes back to other programs, by click and by keyboard."""

import hashlib

import accessible
from desktop import DesktopTest, keep_doing, keys, main, run, wait_until


class PutBackTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.program = self.nettlecap(environment=accessible.ENVIRONMENT).start()

    def copied(self, *texts):
        for text in texts:
            self.offer(text)
            self.program.wait_for_text(text)

    def click_row(self, number):
        self.program.show_panel()
        self.program.click_row(number)

    def test_a_click_on_a_row_puts_its_text_on_the_clipboard(self):
        self.copied("o primeiro", "o segundo", "o terceiro")

        self.click_row(2)

        wait_until(lambda: self.pasted() == b"o primeiro", "the text of the third row can be pasted")

    def test_what_was_put_back_is_not_recorded_again(self):
        self.copied("o primeiro", "o segundo")
        before = self.program.history()
        self.click_row(1)
        wait_until(lambda: self.pasted() == b"o primeiro", "the text can be pasted")

        self.copied("um marco")

        self.assertEqual(self.program.history()[1:], before)

    def test_return_puts_back_the_row_chosen_with_the_arrows(self):
        self.copied("o primeiro", "o segundo", "o terceiro")
        self.program.show_panel()

        keys("Down", "Down", "Return")

        wait_until(lambda: self.pasted() == b"o segundo", "the text of the second row can be pasted")

    def test_return_with_nothing_chosen_puts_back_the_first_row(self):
        self.copied("o primeiro", "o segundo")
        self.offer("de fora", "text/html")  # no text, no picture: no entry
        self.program.show_panel()

        keys("Return")

        wait_until(lambda: self.pasted() == b"o segundo", "the text of the first row can be pasted")

    def test_an_editor_pastes_with_ctrl_v_what_was_put_back(self):
        self.copied("colado no editor", "mais novo")
        path = self.file("editor.txt", "")
        self.client("mousepad", "--disable-server", str(path))
        editor = self.window_of("Mousepad")
        self.click_row(1)
        wait_until(lambda: self.pasted() == b"colado no editor", "the text can be pasted")

        self.program.close_panel()
        wait_until(lambda: self.screen.active() == editor.id, "the editor is in front again")

        def paste_and_save():
            keys("ctrl+v", "ctrl+s")

        keep_doing(paste_and_save, lambda: "colado no editor" in path.read_text(), "the editor saved it")

    def test_a_picture_goes_back_byte_for_byte(self):
        run("convert", "-size", "200x100", "gradient:gold-teal", str(self.folder / "picture.png"))
        png = (self.folder / "picture.png").read_bytes()
        self.offer(png, "image/png")
        self.program.wait_for_image()
        self.copied("por cima")

        self.click_row(1)

        wait_until(lambda: self.pasted("image/png") == png, "the picture can be pasted")

    def test_a_picture_is_given_as_tiff_too(self):
        run("convert", "-size", "200x100", "xc:teal", str(self.folder / "picture.png"))
        self.offer((self.folder / "picture.png").read_bytes(), "image/png")
        self.program.wait_for_image()
        self.copied("por cima")
        self.click_row(1)
        wait_until(lambda: self.pasted("image/png"), "the picture can be pasted")

        tiff = self.pasted("image/tiff")

        self.assertEqual(run("identify", "-format", "%m %wx%h", "-", input=tiff), b"TIFF 200x100")

    def test_eight_megabytes_go_in_and_come_back_whole(self):
        text = "".join(f"{n:07x} ação ☘\n" for n in range(8_700_000 // 18))
        self.assertGreater(len(text.encode()), 8_000_000)
        self.copied(text, "por cima")

        self.click_row(1)
        wait_until(lambda: self.pasted() not in (None, b"por cima"), "the text can be pasted")

        self.assertEqual(digest(self.pasted()), digest(text.encode()))

    def test_it_stays_on_the_clipboard_for_many_readers(self):
        self.copied("para todos", "por cima")
        self.click_row(1)
        wait_until(lambda: self.pasted() == b"para todos", "the text can be pasted")

        answers = {self.pasted("UTF8_STRING"), self.pasted("text/plain;charset=utf-8"), self.pasted("STRING")}

        self.assertEqual(answers, {b"para todos"})


def digest(content):
    return hashlib.sha256(content).hexdigest()


if __name__ == "__main__":
    main()
