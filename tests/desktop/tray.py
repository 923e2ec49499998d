"""Real trays of both kinds, and where the program's icon is in them."""

import contextlib
import pathlib
import subprocess

from desktop import DEADLINE, ROOM, run, wait_until
from Xlib import X
from Xlib.error import XError

LIGHT, DARK = (236, 236, 240), (32, 33, 37)


class Tray:
    """Started and ended as a desktop does, and again. `icon` is where a user would click."""

    def __init__(self, test, colour=DARK):
        self.test, self.screen, self.colour, self.process = test, test.screen, colour, None

    def start(self):
        self.process = self.test.client(*self.command(), environment=self.environment())
        return self

    def stop(self):
        self.test.end(self.process)
        wait_until(lambda: not self.is_there(), "the tray is gone")

    def is_there(self):
        return self.bar() is not None

    def environment(self):
        return {}

    def bar(self):
        """Left, top, width and height of what the tray shows, once it is there."""
        for window in self._windows():
            with contextlib.suppress(XError):  # gone between the list and the question
                if self.is_bar(window):
                    return place(window)
        return None

    def is_bar(self, window):
        return self.name in (window.get_wm_class() or ())

    def _windows(self, inside=None):
        for window in (inside or self.screen.root).query_tree().children:
            try:
                if window.get_attributes().map_state == X.IsViewable:
                    yield window
                    yield from self._windows(window)
            except Exception:  # it closed between the list and the question
                continue


def place(window):
    size = window.get_geometry()
    corner = window.translate_coords(size.root, 0, 0)
    return -corner.x, -corner.y, size.width, size.height


def lies_within(inner, outer):
    starts = all(inner[side] >= outer[side] for side in (0, 1))
    return starts and all(inner[side] + inner[side + 2] <= outer[side] + outer[side + 2] for side in (0, 1))


class EmbeddingTray(Tray):
    """XEmbed: the icon is a window of ours in one of theirs."""

    def icon(self):
        """Where it stays: a tray may take it first and make room for it then."""
        for window in self._windows():
            try:
                left, top, width, height = place(window)
                if window.get_wm_class() != ("nettlecap", "Nettlecap") or width > 64 or height > 64:
                    continue
                if lies_within(place(window), self.bar()) and lies_within(self.bar(), place(self.screen.root)):
                    return left + width // 2, top + height // 2
            except Exception:  # gone between the list and the question
                continue
        return None


class Tint2(EmbeddingTray):
    name = "tint2"
    place = "bottom center horizontal"

    def command(self):
        red, green, blue = self.colour
        settings = pathlib.Path(self.test.folder, "tint2rc")
        settings.write_text(
            f"rounded = 0\nbackground_color = #{red:02x}{green:02x}{blue:02x} 100\n\n"
            f"panel_items = TS\npanel_size = 100% 32\npanel_position = {self.place}\n"
            "panel_background_id = 1\nwm_menu = 1\nsystray_padding = 6 4 6\nsystray_icon_size = 24\n"
        )
        return "tint2", "-c", str(settings)


class Tint2AtTheTop(Tint2):
    place = "top center horizontal"


class Trayer(EmbeddingTray):
    name = "trayer"

    def command(self):
        tint = "0x{:02x}{:02x}{:02x}".format(*self.colour)
        return ("trayer", "--edge", "top", "--align", "right", "--widthtype", "request", "--height", "28",
                "--SetDockType", "true", "--SetPartialStrut", "true", "--transparent", "true",
                "--alpha", "0", "--tint", tint)


class Xfce4Panel(Tray):
    """StatusNotifierItem: the icon is told over the bus and drawn by the panel. It takes
    windows as well, from programs that come before it."""

    name = "xfce4-panel"

    def is_there(self):
        return super().is_there() and self._shows_what_is_told()

    @staticmethod
    def _shows_what_is_told():
        watcher = "org.kde.StatusNotifierWatcher"
        answer = subprocess.run(
            ["gdbus", "call", "--session", "--dest", watcher, "--object-path", "/StatusNotifierWatcher",
             "--method", "org.freedesktop.DBus.Properties.Get", watcher, "IsStatusNotifierHostRegistered"],
            capture_output=True, timeout=DEADLINE)
        return b"true" in answer.stdout

    def command(self):
        settings = ROOM / "config" / "xfce4" / "xfconf" / "xfce-perchannel-xml" / "xfce4-panel.xml"
        settings.parent.mkdir(parents=True, exist_ok=True)
        settings.write_text(
            '<?xml version="1.0" encoding="UTF-8"?><channel name="xfce4-panel" version="1.0">'
            '<property name="configver" type="int" value="2"/><property name="panels" type="array">'
            '<value type="int" value="1"/><property name="panel-1" type="empty">'
            '<property name="position" type="string" value="p=6;x=0;y=0"/>'
            '<property name="position-locked" type="bool" value="true"/>'
            '<property name="length" type="uint" value="100"/><property name="size" type="uint" value="32"/>'
            '<property name="background-style" type="uint" value="1"/>'
            '<property name="plugin-ids" type="array"><value type="int" value="1"/></property>'
            '</property></property><property name="plugins" type="empty">'
            '<property name="plugin-1" type="string" value="systray">'
            '<property name="square-icons" type="bool" value="true"/></property></property></channel>'
        )
        colours = [word for part in (*self.colour, 255) for word in ("-t", "double", "-s", str(part / 255))]
        run("xfconf-query", "-c", "xfce4-panel", "-p", "/panels/panel-1/background-rgba", "-n", "-a", *colours)
        return "xfce4-panel", "--disable-wm-check"

    def environment(self):
        return {"NO_AT_BRIDGE": "0"}  # its menu is to be found

    def icon(self):
        """The panel has no window for it: where something is drawn on the bar that is not the bar."""
        bar = self.bar()
        if not bar:
            return None
        left, top, _, height = bar
        width = 120
        picture = self.screen.root.get_image(left, top, width, height, X.ZPixmap, 0xFFFFFFFF).data
        columns = [
            pixel // 4 % width
            for pixel in range(0, len(picture), 4)
            if any(abs(picture[pixel + part] - self.colour[2 - part]) > 80 for part in range(3))
        ]
        if len(columns) < 30:
            return None
        return left + (min(columns) + max(columns)) // 2, top + height // 2
