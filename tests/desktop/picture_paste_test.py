"""A picture of 3840x2160 is reached with the keys and pasted by letting go."""

import sys

from desktop import HERE, keep_doing, keys, main, run, screenshot, wait_until
from hot_keys import OLDER, HotKeyTest
from keyboard import SUPER


class PicturePasteTest(HotKeyTest):
    def setUp(self):
        super().setUp()
        path = self.folder / "picture.png"
        run("convert", "-size", "3840x2160", "gradient:navy-gold", "-depth", "8", f"png24:{path}")
        self.picture = path.read_bytes()
        self.offer(self.picture, "image/png")
        self.program.wait_for_image()
        self.copied("por cima", "mais por cima")

    def pixels(self, png):
        return run("convert", "-", "-depth", "8", "rgb:-", input=png)

    def gesture_into(self, window, name):
        with self.focus_stays(window):
            with self.keyboard.holding(SUPER):
                self.keyboard.tap(OLDER, OLDER)
                card = self.wait_for_card("3 de 3", "Imagem copiada")
                geometry = card.get_geometry()
                screenshot(f"paste-picture-{name}")
        self.assertEqual((geometry.width, geometry.height), (480, 330))
        self.wait_until_hidden()

    def test_pastes_into_a_picture_viewer_of_qt(self):
        settings = self.folder / "viewer" / "lximage-qt" / "settings.conf"
        settings.parent.mkdir(parents=True)
        settings.write_text("[Shortcuts]\nactionPaste=Ctrl+V\nactionCopy=Ctrl+C\n")  # it has none by itself
        self.client("lximage-qt", environment={"XDG_CONFIG_HOME": str(settings.parent.parent)})
        viewer = self.window_of("lximage-qt")

        self.gesture_into(viewer, "viewer")

        # Changed is what it calls a picture that was pasted.
        wait_until(lambda: self.screen.title(viewer) == "*Image Viewer", "the viewer has a picture")
        ours = self.screen.clipboard_owner()
        keep_doing(lambda: keys("ctrl+c"), lambda: self.screen.clipboard_owner() != ours, "it copies what it has")
        self.assertEqual(self.pixels(self.pasted("image/png")), self.pixels(self.picture))

    def test_pastes_into_a_program_of_gtk(self):
        received = self.folder / "received.rgb"
        self.client(sys.executable, "-B", str(HERE / "picture_frame.py"), str(received))
        frame = self.window_of("Picture_frame.py")

        self.gesture_into(frame, "gtk")

        wait_until(received.exists, "the program has a picture")
        self.assertEqual(received.read_bytes(), self.pixels(self.picture))


if __name__ == "__main__":
    main()
