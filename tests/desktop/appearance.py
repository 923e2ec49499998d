"""What the screenshot tests share: a history written to disk beforehand, a light or a dark
desktop, and pictures of the screen once it stands still."""

import json
import time
import uuid

import accessible
from desktop import ARTEFACTS, AS_ANYBODY, DesktopTest, keys, run, wait_until
from Xlib import X

EPOCH = 978307200  # 2001-01-01T00:00:00Z
DARK = "[Colors:Window]\nBackgroundNormal=42,46,50\nForegroundNormal=252,252,252\n"
DARK += "[Colors:Button]\nBackgroundNormal=49,54,59\nForegroundNormal=252,252,252\n"


def environment(appearance, folder):
    """Of a desktop whose windows are light or dark. The folder is where its settings stand."""
    if appearance == "light":
        return dict(accessible.ENVIRONMENT)
    folder.mkdir(exist_ok=True)
    (folder / "kdeglobals").write_text(DARK)
    desktop = {"XDG_CURRENT_DESKTOP": "KDE", "KDE_SESSION_VERSION": "5", "KDEHOME": str(folder)}
    return accessible.ENVIRONMENT | desktop


def entry(text=None, minutes=0, source="Editor de texto", **fields):
    content = {"kind": "text", "text": text} if text is not None else {"kind": "image"}
    number = str(uuid.uuid4()).upper()
    return content | {
        "id": number,
        "createdAt": time.time() - EPOCH - 60 * minutes,
        "sourceApplication": source,
        "fingerprint": f"text:{number}",
        "isFavorite": False,
    } | fields


def message(title, content, minutes=0):
    at = time.time() - EPOCH - 60 * minutes
    return {"id": str(uuid.uuid4()).upper(), "title": title, "content": content, "createdAt": at, "updatedAt": at}


class AppearanceTest(DesktopTest):
    """One program start serves many pictures: a subclass walks from state to state, waiting
    for each before its picture is taken."""

    def start_with(self, appearance, entries=(), messages=(), preferences=None, **surroundings):
        self.appearance = appearance
        run("xsetroot", "-solid", "#5b7083")
        self.program = self.nettlecap(
            wrapper=AS_ANYBODY, environment=environment(appearance, self.folder / "config") | surroundings
        )
        self.program.data.mkdir(parents=True, exist_ok=True, mode=0o700)
        self.program.state_file.write_text(json.dumps({"entries": list(entries), "snippets": list(messages)}))
        if preferences:
            file = self.program.config / "Nettlecap" / "Nettlecap.preferences.v1"
            file.parent.mkdir(parents=True, mode=0o700)
            file.write_text(json.dumps(preferences))
        self.program.spawn()
        self.panel = self.program.wait_for_panel()
        wait_until(lambda: self.screen.active() == self.panel.id, "the panel has the focus")
        self.park()

    def store_picture(self, name, *drawing):
        """In the pictures' folder, drawn by ImageMagick."""
        self.program_images().mkdir(parents=True, exist_ok=True, mode=0o700)
        run("convert", *drawing, f"png:{self.program_images() / name}")
        return name

    def program_images(self):
        return self.folder / "data" / "Nettlecap" / "Images"

    def park(self):
        """The pointer, where it hovers over nothing."""
        run("xdotool", "mousemove", "2", "798")

    def hover(self, role, name):
        node = wait_until(lambda: accessible.named(role, name), name)
        run("xdotool", "mousemove", *map(str, self.program.middle(node)))

    def press(self, role, name):
        wait_until(lambda: accessible.press(role, name), f"{name} is pressed")

    def told(self, role, *wanted):
        """Waits until there is each of these, as a screen reader has it."""
        wait_until(lambda: set(wanted) <= set(accessible.names(role)), f"{role}: {wanted}")

    def gone(self, role, name):
        wait_until(lambda: name not in accessible.names(role), f"no {role} {name}")

    def rows(self, *wanted):
        wait_until(lambda: accessible.names("list item") == list(wanted), f"the rows {wanted}")

    def search(self, query):
        """Instead of what was searched for before."""
        keys("ctrl+a")
        run("xdotool", "type", "--delay", "5", query)
        wait_until(lambda: accessible.texts("Nettlecap") == [query], f"the search for {query}")

    def pixels(self):
        root = self.screen.root.get_geometry()
        shot = self.screen.root.get_image(0, 0, root.width, root.height, X.ZPixmap, 0xFFFFFFFF)
        return root.width, root.height, shot.data

    def take(self, name):
        """Once two pictures in a row are alike, the windows have finished drawing themselves."""
        def still():
            before = self.pixels()
            time.sleep(0.04)
            return before if before == self.pixels() else None

        width, height, data = wait_until(still, "the screen stands still")
        ARTEFACTS.mkdir(parents=True, exist_ok=True)
        run("convert", "-size", f"{width}x{height}", "-depth", "8", "bgra:-", "-alpha", "off",
            "-define", "png:compression-level=2", str(ARTEFACTS / f"{name}-{self.appearance}.png"), input=data)
