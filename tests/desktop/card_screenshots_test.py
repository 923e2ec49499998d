"""Pictures of the card for people to look at, in the artefacts folder."""

import accessible
from appearance import environment
from desktop import main, run, settled_screenshot, wait_until
from hot_keys import HINT, OLDER, HotKeyTest
from keyboard import SUPER

LONG = (
    "Prezados, segue a ata da reunião de quinta-feira.\n\n"
    "1. O contrato foi revisto e será assinado até o dia 30.\n"
    "2. A mudança para a sala nova começa na segunda-feira.\n"
    "3. O orçamento do próximo trimestre ainda depende da diretoria, que responde nesta semana "
    "e pediu que ninguém faça compras grandes até lá.\n"
    "4. Férias: enviar as datas à Marta.\n\n"
    "Qualquer correção, por favor, até amanhã ao meio-dia.\nAbraços,\nJoão"
)
TOP = ("Bom dia! Segue o relatório que combinamos.", "por cima")
CARDS = ("missing", "picture", "long", "masked", "short")  # in the order of being copied


class CardScreenshotsTest(HotKeyTest):
    def start(self):
        """The test itself does, under the appearance it wants."""

    def start_with(self, appearance):
        surroundings = environment(appearance, self.folder / "config")
        self.program = self.nettlecap(environment=surroundings).start()

    def copy_all(self):
        for name, colours in (("missing", "xc:gray"), ("picture", "plasma:royalblue-gold")):
            path = self.folder / f"{name}.png"
            run("convert", "-size", "960x540", colours, str(path))
            self.offer(path.read_bytes(), "image/png")
            wait_until(lambda: self.program.wait_for_image()[1] == path.read_bytes(), "the picture is kept")
        self.copied(LONG, "4539 1488 0343 6467", *TOP)
        missing = self.program.history()[-1]
        (self.program.images / missing["imageFilename"]).unlink()

    def background(self):
        """What a card is seen against: a window with text, and the desktop beside it."""
        run("xsetroot", "-solid", "#5b7083")
        path = self.file("carta.txt", (LONG + "\n\n") * 4)
        self.client("mousepad", "--disable-server", str(path))
        self.window_of("Mousepad")
        run("wmctrl", "-r", ":ACTIVE:", "-e", "0,40,40,1000,700")

    def photograph(self, appearance, composited):
        with self.keyboard.holding(SUPER):
            for position, name in enumerate(reversed(CARDS), 2):
                self.keyboard.tap(OLDER)
                caption = f"Item {position} de {len(CARDS) + 1}{HINT}"
                wait_until(lambda: caption in accessible.names("label"), f"the card of {name}")
                settled_screenshot(f"card-{name}-{appearance}-{composited}")

    def both(self, appearance):
        self.background()
        self.start_with(appearance)
        self.copy_all()
        self.photograph(appearance, "plain")
        self.wait_until_hidden()
        self.copied(*TOP)  # back to the start
        self.compositor()
        self.photograph(appearance, "composited")

    def test_light(self):
        self.both("light")

    def test_dark(self):
        self.both("dark")


if __name__ == "__main__":
    main()
