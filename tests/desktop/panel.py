"""What the tests of the panel share: what it shows as a screen reader is told, and the
mouse on it."""

import json

import accessible
from desktop import click, keep_doing, point_at, run, wait_until
from hot_keys import HotKeyTest

SETTINGS = "Ajustes do Nettlecap"

# Where a hand may hold the panel, from the corner of its content.
TITLE_BAR = (100, -10)
BESIDE_ITS_NAME = (180, 20)
BETWEEN_THE_BUTTONS = (215, 540)


class PanelTest(HotKeyTest):
    preferences = {}  # other than by default

    def start(self):
        folder = self.folder / "config" / "Nettlecap"
        folder.mkdir(parents=True)
        (folder / "Nettlecap.preferences.v1").write_text(json.dumps(self.preferences))
        super().start()
        point_at(5, 795)  # away from where the panel will be

    def window(self):
        """The panel's, whatever it shows."""
        return self.screen.window(window_class="Nettlecap")

    def content_middle(self):
        x, y = self.screen.position(self.window())
        size = self.window().get_geometry()
        return x + size.width / 2, y + size.height / 2

    def wait_for_title(self, title):
        wait_until(lambda: self.screen.window("Nettlecap", title), f"the panel is called {title!r}")

    def wait_until_closed(self, target=None):
        wait_until(lambda: not self.window(), "the panel is closed")
        if target:
            wait_until(lambda: self.screen.active() == target.window.id, "the program is in front again")

    def wait_for_rows(self, *texts):
        wait_until(lambda: accessible.row_names() == [*texts], f"the rows {texts}")

    def wait_for_top_row(self, text):
        wait_until(lambda: accessible.row_names()[:1] == [text], f"the row {text!r} on top")

    def wait_for_query(self, query):
        wait_until(lambda: accessible.texts("Nettlecap") == [query], f"the query {query!r}")

    def wait_for_section(self, title):
        wait_until(lambda: accessible.checked("radio button") == [title], f"the section {title!r}")

    def wait_for_selection(self, *texts):
        wait_until(lambda: accessible.selected("list item") == [*texts], f"{texts} selected")

    def wait_for_dialog(self, title):
        wait_until(lambda: accessible.names("dialog") == [title], f"the dialog {title!r}")

    def wait_until_answered(self):
        wait_until(lambda: accessible.names("dialog") == [], "no dialog any more")

    def wait_for_preview(self, *texts):
        """The preview's window, once it tells these texts."""
        wanted = set(texts)

        def is_told():
            return wanted <= {*accessible.names("heading"), *accessible.names("label")}

        wait_until(lambda: self.floating() and is_told(), f"a preview with {wanted}")
        return self.floating()

    def wait_until_no_preview(self):
        wait_until(lambda: not self.floating(), "the preview is closed")

    def press(self, role, name):
        """With the mouse."""
        node = wait_until(lambda: accessible.named(role, name), f"a {role} {name!r}")
        click(*self.program.middle(node))

    def scroll_to(self, role, name):
        """With the wheel, until it is in sight."""
        point_at(*map(int, self.content_middle()))

        def in_sight():
            return any(top + height < 540 for _, top, _, height in accessible.places(role, name))

        keep_doing(lambda: run("xdotool", "click", "5"), in_sight, f"a {role} {name!r} in sight", every=0.1)
        seen = []

        def at_rest():
            """It glides on after the last turn, and a click in the meantime would miss it."""
            seen.append(accessible.places(role, name))
            return seen[-1] and len(seen) >= 25 and all(places == seen[-1] for places in seen[-25:])

        wait_until(at_rest, f"the {role} {name!r} comes to rest")

    def point_at_row(self, number):
        point_at(*self.program.middle_of_row(number))

    def drag(self, right, down, held=TITLE_BAR):
        """As a hand does it: hold the panel at a place in it, move, let go."""
        before = self.screen.position(self.window())
        point_at(before[0] + held[0], before[1] + held[1])
        run("xdotool", "mousedown", "1")
        for _ in range(10):
            run("xdotool", "mousemove_relative", "--", str(right // 10), str(down // 10))
        run("xdotool", "mouseup", "1")
        wanted = before[0] + right, before[1] + down
        wait_until(lambda: self.screen.position(self.window()) == wanted, f"the panel stands at {wanted}")
        return wanted
