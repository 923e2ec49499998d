"""Pictures of what nobody expects to copy, in the artefacts folder: texts and pictures of
strange shapes, and everything on screens of other scales."""

import struct
import zlib

import accessible
from appearance import AppearanceTest, entry, message
from desktop import keys, main, wait_until
from hot_keys import OLDER
from keyboard import SUPER, Keyboard

TEXTS = {
    "unbroken": "x" * 1000,
    "words": "palavra comprida " * 90,
    "lines": "\n".join(f"linha {number}" for number in range(200)),
    "arabic": "مرحبا بالعالم، هذا نص عربي طويل بما يكفي ليتجاوز سطرا واحدا في القائمة: الطلب 12345 من Nettlecap",
    "hebrew": "שלום 123 Nettlecap עולם",
    "emoji": "👩‍👩‍👧‍👦 família 👍🏽 🇧🇷 " * 12,
    "combining": "Z̸̡͍̪̈́͊a̵͚͑l̶̯̈g̷̬̓o̷̠͒ " + "a" + "̈" * 60 + " fim",
    "controls": "a\rb\u0085c\td\u0000e\u2028f\u2029g\u001bh",
    "spaces": "      ",
}
PICTURES = {"dot": (1, 1), "wide": (20000, 10), "high": (10, 20000)}


def png(width, height):
    """A gradient. ImageMagick refuses pictures as long as these."""

    def chunk(kind, content):
        return struct.pack(">I", len(content)) + kind + content + struct.pack(">I", zlib.crc32(kind + content))

    across = [255 * x // width for x in range(width)]
    rows = (bytes(b for red in across for b in (red, 128, 255 * y // height)) for y in range(height))
    pixels = zlib.compress(b"".join(b"\0" + row for row in rows))
    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", pixels) + chunk(b"IEND", b"")


class ExtremesScreenshotsTest(AppearanceTest):
    def entries(self):
        texts = [entry(text, age, "Programa de nome muito comprido " * 4) for age, text in enumerate(TEXTS.values())]
        pictures = [entry(None, 20 + age, "GIMP", imageFilename=f"{name}.png") for age, name in enumerate(PICTURES)]
        self.program_images().mkdir(parents=True, mode=0o700)
        for name, size in PICTURES.items():
            (self.program_images() / f"{name}.png").write_bytes(png(*size))
        (self.program_images() / "broken.png").write_bytes(b"\x89PNG\r\n\x1a\nquebrada")
        return [*texts, *pictures, entry(None, 30, "GIMP", imageFilename="broken.png")]

    def messages(self):
        return [message("título " * 143, "um"), message("T" * 200, "x" * 500, 1),
                message(TEXTS["arabic"], TEXTS["hebrew"], 2), message(TEXTS["controls"], TEXTS["controls"], 3)]

    def test_previews(self):
        self.start_with("light", self.entries(), self.messages())
        wait_until(lambda: len(accessible.names("list item")) >= 7, "the rows")
        self.take("extreme-rows")
        for name in (*TEXTS, *PICTURES, "broken"):
            keys("Down")
            self.told_preview()
            self.take(f"extreme-{name}")
        keys("Right")
        self.told("list", "Salvos")
        for number in range(4):
            keys("Down")
            self.told("heading", "Mensagem salva")
            self.take(f"extreme-message-{number}")

    def told_preview(self):
        """The preview of the chosen row, whichever it has."""
        wait_until(
            lambda: {"Texto copiado", "Imagem copiada", "Copiado"}
            & {*accessible.names("heading"), *accessible.names("label")},
            "a preview",
        )

    def test_alert(self):
        self.start_with("light", self.entries())
        wait_until(lambda: len(accessible.names("list item")) >= 7, "the rows")
        keys("Down", "Delete")
        self.told("dialog", "Excluir item do histórico?")
        self.take("extreme-alert")

    def test_cards(self):
        self.start_with("light", self.entries())
        self.program.close_panel()
        keyboard = Keyboard()
        self.addCleanup(keyboard.close)
        with keyboard.holding(SUPER):
            names = (*TEXTS, *PICTURES, "broken")
            for position, name in enumerate(names[1:], 2):
                keyboard.tap(OLDER)
                caption = f"Item {position} de {len(names)} • solte as teclas para colar"
                wait_until(lambda: caption in accessible.names("label"), f"the card of {name}")
                self.take(f"extreme-card-{name}")
            keys("Escape")


if __name__ == "__main__":
    main()
