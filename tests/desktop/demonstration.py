"""Shows on a virtual desktop what the program does, with real programs and real keys, and
fails unless all of it happened."""

import contextlib
import sys

import accessible
from desktop import ARTEFACTS, Desktop, keep_doing, keys, run, screenshot, settled_screenshot, wait_until

TYPED = "Bom dia! Este texto foi digitado num editor e copiado com Ctrl+C."
CARD = "4539 1488 0343 6467"


class Demonstration(contextlib.ExitStack, Desktop):
    def addCleanup(self, function, *arguments, **options):
        self.callback(function, *arguments, **options)

    def show(self):
        self.open()
        self.client("tint2")
        self.say("Nettlecap starts; its panel appears by itself")
        self.program = self.nettlecap(environment=accessible.ENVIRONMENT).spawn()
        self.program.wait_for_panel()
        screenshot("1-first-start")
        self.program.close_panel()

        self.copy_in_an_editor()
        self.copy_a_card_number()
        self.copy_a_picture()
        self.put_back()
        self.tell_history()

    def say(self, text):
        print(f" - {text}", flush=True)

    def copy_in_an_editor(self):
        self.say("a text is typed in Mousepad and copied with Ctrl+C")
        self.client("mousepad", "--disable-server", str(self.file("carta.txt", "")))
        self.window_of("Mousepad")

        def type_and_copy():
            keys("ctrl+a")
            run("xdotool", "type", "--delay", "5", TYPED)
            keys("ctrl+a", "ctrl+c")

        keep_doing(type_and_copy, lambda: TYPED in self.program.texts(), "the text in the history", every=5)
        screenshot("2-copied-in-an-editor")

    def copy_a_card_number(self):
        self.say("xclip copies what looks like a card number")
        self.offer(CARD)
        self.program.wait_for_text(CARD)

    def copy_a_picture(self):
        self.say("xclip copies a picture made by ImageMagick, as image/png")
        self.picture = self.folder / "figura.png"
        run("convert", "-size", "640x400", "plasma:royalblue-gold", str(self.picture))
        self.offer(self.picture.read_bytes(), "image/png")
        _, kept = self.program.wait_for_image()
        self.expect(kept == self.picture.read_bytes(), "the picture was kept byte for byte")

    def put_back(self):
        self.say("the panel is opened by a second start; the card number is masked in it")
        self.program.show_panel()
        settled_screenshot("3-panel")
        self.say("a click on the third row puts the text back; xclip -o reads it")
        self.program.click_row(2)
        wait_until(lambda: self.pasted() == TYPED.encode(), "the text of the third row can be pasted")
        screenshot("4-put-back")

    def tell_history(self):
        history = self.program.history()
        print("\nFound in the history, newest first:")
        for entry in history:
            content = entry.get("text") or f"picture {entry['imageFilename']}"
            print(f"   {entry['sourceApplication']:<18} {entry.get('sensitiveKind', '-'):<12} {content}")
        self.expect(len(history) == 3, "three copies, three entries")
        self.expect(history[1]["sensitiveKind"] == "paymentCard", "the card number is known as one")
        self.expect(history[2]["sourceApplication"] == "Mousepad", "the text is credited to Mousepad")
        print(f"\nScreenshots: {ARTEFACTS}")

    def expect(self, holds, what):
        if not holds:
            raise AssertionError(f"this should hold: {what}")


try:
    with Demonstration() as demonstration:
        demonstration.show()
except AssertionError as failure:
    screenshot("failure")
    sys.exit(f"\nThe demonstration failed: {failure}\nScreenshots: {ARTEFACTS}")
print("All went as it should.")
