"""Text copied in programs of all kinds, with their real keys, arrives whole and credited."""

from desktop import DesktopTest, click, keep_doing, keys, main, run, wait_until

TEXT = "Ação: 3 × 2 = 6, «até amanhã» 🌿"


class TextSourcesTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.program = self.nettlecap().start()

    def copied_with(self, action, text):
        """Does it until the text is on top: a window just mapped may not listen yet."""
        return keep_doing(action, lambda: self.on_top(text), f"{text!r} on top of the history")

    def on_top(self, text):
        self.program.check_alive()
        top = (self.program.history() or [{}])[0]
        return top if top.get("text") == text else None

    def test_xclip_without_a_window_in_front_is_another_device(self):
        self.offer(TEXT)

        self.assertEqual(self.program.wait_for_text(TEXT)["sourceApplication"], "Outro dispositivo")

    def test_xsel_without_a_window_in_front_is_another_device(self):
        run("xsel", "--clipboard", "--input", input=TEXT.encode())

        self.assertEqual(self.program.wait_for_text(TEXT)["sourceApplication"], "Outro dispositivo")

    def test_a_gtk_editor_is_credited_with_what_ctrl_c_copied_there(self):
        self.client("mousepad", "--disable-server", str(self.file("gtk.txt", TEXT)))
        self.window_of("Mousepad")

        entry = self.copied_with(lambda: keys("ctrl+a", "ctrl+c"), TEXT)

        self.assertEqual(entry["sourceApplication"], "Mousepad")

    def test_a_qt_editor_is_credited_with_what_ctrl_c_copied_there(self):
        self.client("featherpad", "--standalone", str(self.file("qt.txt", TEXT)))
        self.window_of("FeatherPad")

        entry = self.copied_with(lambda: keys("ctrl+a", "ctrl+c"), TEXT)

        self.assertEqual(entry["sourceApplication"], "FeatherPad")

    def test_text_typed_and_cut_in_an_editor_is_credited_too(self):
        self.client("mousepad", "--disable-server", str(self.file("empty.txt", "")))
        self.window_of("Mousepad")

        def type_and_cut():
            run("xdotool", "type", "--delay", "10", "cortado")
            keys("ctrl+a", "ctrl+x")

        entry = self.copied_with(type_and_cut, "cortado")

        self.assertEqual(entry["sourceApplication"], "Mousepad")

    def test_xterm_is_credited_with_a_word_selected_with_the_mouse(self):
        self.client(
            "xterm", "-xrm", "XTerm*selectToClipboard: true", "-e", "sh", "-c", "echo avelã; exec sleep 1000"
        )
        window = self.window_of("XTerm")

        entry = self.copied_with(lambda: self.double_click_first_word(window), "avelã")

        self.assertEqual(entry["sourceApplication"], "XTerm")

    def test_a_terminal_emulator_is_credited_with_what_ctrl_shift_c_copied_there(self):
        self.client(
            "xfce4-terminal", "--disable-server", "--hide-menubar", "-x", "sh", "-c", "echo pinhão; exec sleep 1000"
        )
        window = self.window_of("Xfce4-terminal")

        def select_and_copy():
            self.double_click_first_word(window)
            keys("ctrl+shift+c")

        entry = self.copied_with(select_and_copy, "pinhão")

        self.assertEqual(entry["sourceApplication"], "Xfce Terminal")

    def test_a_dialog_is_credited_by_its_class_where_it_has_no_desktop_entry(self):
        self.client("zenity", "--entry", "--text", "Nome", "--entry-text", TEXT)
        self.window_of("Zenity")

        entry = self.copied_with(lambda: keys("ctrl+a", "ctrl+c"), TEXT)

        self.assertEqual(entry["sourceApplication"].lower(), "zenity")

    def double_click_first_word(self, window):
        """The pause before it keeps it apart from an earlier try, which it would turn into
        a triple click that selects the line."""
        x, y = self.screen.position(window)
        click(x + 20, y + 12, times=2)


class TranslatedNameTest(DesktopTest):
    def test_the_name_comes_in_the_users_language(self):
        entries = self.folder / "data" / "applications"
        entries.mkdir(parents=True)
        (entries / "org.xfce.mousepad.desktop").write_text(
            "[Desktop Entry]\nType=Application\nName=Text Pad\nName[pt_BR]=Bloco de Texto\nExec=mousepad %U\n"
        )
        program = self.nettlecap(environment={"LANG": "pt_BR.UTF-8"}).start()
        self.client("mousepad", "--disable-server", str(self.file("gtk.txt", "traduzido")))
        self.window_of("Mousepad")

        keep_doing(lambda: keys("ctrl+a", "ctrl+c"), lambda: "traduzido" in program.texts(), "the copy")

        self.assertEqual(program.history()[0]["sourceApplication"], "Bloco de Texto")


if __name__ == "__main__":
    main()
