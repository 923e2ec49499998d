"""Pictures offered by other programs become PNG files in the folder Images."""

import pathlib

from desktop import DesktopTest, main, run, wait_until

PNG = b"\x89PNG\r\n\x1a\n"


class PicturesTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.program = self.nettlecap().start()

    def picture(self, kind, size="320x200"):
        path = self.folder / f"picture.{kind}"
        run("convert", "-size", size, "gradient:tomato-navy", str(path))
        return path.read_bytes()

    def pixels(self, content):
        return run("convert", "-", "-depth", "8", "rgb:-", input=content)

    def test_a_png_is_kept_byte_for_byte(self):
        png = self.picture("png")

        self.offer(png, "image/png")
        entry, kept = self.program.wait_for_image()

        self.assertEqual(kept, png)
        self.assertNotIn("text", entry)

    def test_a_tiff_becomes_a_png_of_the_same_pixels(self):
        tiff = self.picture("tiff")

        self.offer(tiff, "image/tiff")
        _, kept = self.program.wait_for_image()

        self.assertTrue(kept.startswith(PNG))
        self.assertEqual(self.pixels(kept), self.pixels(tiff))

    def test_a_jpeg_becomes_a_png(self):
        jpeg = self.picture("jpeg")

        self.offer(jpeg, "image/jpeg")
        _, kept = self.program.wait_for_image()

        self.assertTrue(kept.startswith(PNG))
        self.assertEqual(run("identify", "-format", "%wx%h", "-", input=kept), b"320x200")

    def test_a_large_picture_arrives_whole(self):
        path = self.folder / "noise.png"
        run("convert", "-size", "1600x1200", "plasma:", str(path))
        png = path.read_bytes()

        self.offer(png, "image/png")
        _, kept = self.program.wait_for_image()

        self.assertGreater(len(png), 1_000_000)
        self.assertEqual(kept, png)

    def test_the_same_picture_twice_is_one_entry_and_one_file(self):
        png = self.picture("png")
        self.offer(png, "image/png")
        first, _ = self.program.wait_for_image()
        self.offer("entre as duas")
        self.program.wait_for_text("entre as duas")

        self.offer(png, "image/png")
        again, _ = self.program.wait_for_image()

        self.assertEqual(again["id"], first["id"])
        self.assertEqual(len(self.program.history()), 2)
        self.assertEqual(len(list(self.program.images.glob("*.png"))), 1)

    def test_nobody_else_may_read_what_is_kept(self):
        self.offer(self.picture("png"), "image/png")
        entry, _ = self.program.wait_for_image()

        kept = self.program.images / entry["imageFilename"]
        modes = {oct(path.stat().st_mode & 0o777) for path in (kept, self.program.state_file)}

        self.assertEqual(modes, {"0o600"})
        self.assertEqual(self.program.data.stat().st_mode & 0o777, 0o700)

    def test_bytes_that_are_no_picture_leave_the_program_well(self):
        self.offer_and_end(b"II*\x00" + bytes(range(256)) * 40, "image/tiff")
        self.offer_and_end(b"isto nem imagem parece", "image/jpeg")

        self.offer("depois")

        self.program.wait_for_text("depois")
        self.assertEqual(self.program.texts(), ["depois"])


if __name__ == "__main__":
    main()
