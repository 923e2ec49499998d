"""Pictures made to harm: offered by a program, or put in the place of one in the history. The
program lives, takes no more memory than a large picture may, and captures the next copy."""

import os
import pathlib
import struct
import time
import zlib

import accessible
from desktop import main, run, wait_until
from hot_keys import OLDER, HotKeyTest
from keyboard import SUPER

SIGNATURE = b"\x89PNG\r\n\x1a\n"
# As a picture of 64 Mi pixels may take, decoded and by its decoder; and the program itself.
MOST_MEMORY = (1200 + int(os.environ["NETTLECAP_MEMORY_SLACK"])) << 20


def chunk(kind, data=b""):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


def png(extra=b"", side=1, bits=8, pixels=None):
    """Of one grey pixel, unless it claims another side."""
    header = struct.pack(">IIBBBBB", side, side, bits, 0, 0, 0, 0)
    return SIGNATURE + chunk(b"IHDR", header) + extra + chunk(b"IDAT", pixels or zlib.compress(b"\0\0")) + chunk(b"IEND")


def png_of_texts():
    """7 MB of texts that unfold to 8 GB, of which Qt makes 39."""
    return png(chunk(b"zTXt", b"k\0\0" + zlib.compress(b"x" * 7_900_000, 9)) * 990)


def png_without_end():
    """A pixel and 2 GiB after it."""
    packer = zlib.compressobj(9)
    return png(pixels=b"".join([packer.compress(bytes(1 << 20)) for _ in range(2048)]) + packer.flush())


def tiff_of_inks():
    """200 bytes, of which libtiff makes 4 GB."""
    pixels = zlib.compress(bytes(1000))
    fields = {256: 8192, 257: 8192, 258: 8, 259: 8, 262: 5, 273: 122, 277: 60, 278: 8192, 279: len(pixels)}
    directory = b"".join(struct.pack("<HHII", tag, 4, 1, value) for tag, value in fields.items())
    return b"II*\0" + struct.pack("<IH", 8, len(fields)) + directory + struct.pack("<I", 0) + pixels


def jpeg_of_nothing():
    """64 Mi pixels whose only scan is empty."""
    code = b"\1" + bytes(16)
    return (
        b"\xff\xd8\xff\xdb\0\x43\0" + b"\1" * 64 + b"\xff\xc2\0\x0b\x08\x20\0\x20\0\1\1\x11\0"
        b"\xff\xc4\0\x14\0" + code + b"\xff\xda\0\x08\1\1\0\0\0\1\xff\xd9"
    )


class HostilePicturesTest(HotKeyTest):
    def good_picture(self):
        path = self.folder / "good.png"
        run("convert", "-size", "320x200", "gradient:tomato-navy", str(path))
        return path.read_bytes()

    def expect_well(self):
        """By the next copies of a text and of pictures, one of which has to be converted."""
        self.offer("ainda aqui")
        self.program.wait_for_text("ainda aqui")
        good = self.good_picture()
        self.offer(good, "image/png")
        wait_until(lambda: self.top_picture() == good, "the good picture on top")
        self.offer(run("convert", "-", "tiff:-", input=good), "image/tiff")
        wait_until(lambda: self.top_picture() not in (False, good), "the converted picture on top")
        wait_until(self.is_at_rest, "the program is at rest")
        self.assertLess(self.program.memory_peak(), MOST_MEMORY)

    def is_at_rest(self):
        """It used hardly any of the processor for a while, so no picture is being decoded."""
        before = self.processor_time()
        time.sleep(0.5)
        return self.processor_time() - before < 0.05

    def processor_time(self):
        fields = pathlib.Path(f"/proc/{self.program.process.pid}/stat").read_text().rpartition(")")[2].split()
        return (int(fields[11]) + int(fields[12])) / os.sysconf("SC_CLK_TCK")

    def top_picture(self):
        self.program.check_alive()
        top = (self.program.history() or [{}])[0]
        return top.get("kind") == "image" and (self.program.images / top["imageFilename"]).read_bytes()

    def see_everything(self):
        """Its thumbnail in the panel, and its picture on the card."""
        self.open_panel()
        wait_until(accessible.rows, "rows")
        self.program.close_panel()
        with self.keyboard.holding(SUPER):
            self.keyboard.tap(OLDER)
            wait_until(self.card, "the card")
        self.wait_until_hidden()
        wait_until(self.is_at_rest, "the program is at rest")

    def test_offers_that_unfold_without_bounds(self):
        for content, kind in (
            (tiff_of_inks(), "image/tiff"),
            (jpeg_of_nothing(), "image/jpeg"),
            (b"GIF89a\xff\xff\xff\xff\0\0\0" + bytes(100), "image/gif"),
            (b"<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>", "image/webp"),
        ):
            self.offer_and_end(content, kind)
            self.expect_well()

    def test_a_png_with_gigabytes_of_texts_is_captured_and_shown(self):
        content = png_of_texts()
        self.offer(content, "image/png")
        wait_until(lambda: self.top_picture() == content, "the picture on top")

        self.see_everything()

        self.expect_well()

    def test_an_svg_that_is_called_a_png_is_not_decoded(self):
        self.offer(b"<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>", "image/png")
        self.program.wait_for_image()

        self.see_everything()

        self.expect_well()

    def test_hostile_pictures_in_the_place_of_those_in_the_history(self):
        for content in (png_of_texts(), png_without_end(), png(side=60_000, bits=1), tiff_of_inks()):
            good = self.good_picture()
            self.offer(good, "image/png")
            wait_until(lambda: self.top_picture() == good, "the good picture on top")
            picture = self.program.images / self.program.history()[0]["imageFilename"]
            self.copied("por cima")
            picture.write_bytes(content)

            self.see_everything()

            self.expect_well()


if __name__ == "__main__":
    main()
