"""A GTK program that shows the picture that is pasted into it with Ctrl+V, and writes its
pixels (red, green, blue; a byte each) to the file that is its argument."""

import os
import sys

import gi

gi.require_version("Gtk", "3.0")
from gi.repository import Gdk, Gtk  # noqa: E402


def pasted(_clipboard, picture):
    if picture is None:
        return
    image.set_from_pixbuf(picture.scale_simple(320, 180, 0))
    pixels, row, channels = picture.get_pixels(), picture.get_rowstride(), picture.get_n_channels()
    with open(sys.argv[1] + ".part", "wb") as file:
        for y in range(picture.get_height()):
            line = pixels[y * row : y * row + picture.get_width() * channels]
            if channels == 4:
                opaque = bytearray(line)
                del opaque[3::4]
                line = bytes(opaque)
            file.write(line)
    os.rename(sys.argv[1] + ".part", sys.argv[1])


def typed(_window, event):
    if event.keyval == Gdk.KEY_v and event.state & Gdk.ModifierType.CONTROL_MASK:
        Gtk.Clipboard.get(Gdk.SELECTION_CLIPBOARD).request_image(pasted)


image = Gtk.Image()
window = Gtk.Window(title="Picture frame", default_width=360, default_height=240)
window.connect("key-press-event", typed)
window.connect("destroy", Gtk.main_quit)
window.add(image)
window.show_all()
Gtk.main()
