"""A window of one colour that fills the screen and notes the clicks and keys it gets."""

from desktop import run, wait_until
from Xlib import X, Xutil, display

COLOUR = (40, 160, 70)


class Ground:
    def __init__(self, test, full_screen=False):
        self.screen = test.screen
        self.display = display.Display()
        test.addCleanup(self.display.close)
        root = self.display.screen()
        pixel = COLOUR[0] << 16 | COLOUR[1] << 8 | COLOUR[2]
        self.window = root.root.create_window(
            0, 0, 400, 300, 0, root.root_depth, background_pixel=pixel, event_mask=X.ButtonPressMask | X.KeyPressMask
        )
        self.clicks, self.keys = [], 0
        self.window.set_wm_name("Ground")
        self.window.set_wm_class("ground", "Ground")
        self.window.set_wm_hints(flags=Xutil.InputHint, input=True)
        self.window.map()
        self.display.sync()
        test.window_of("Ground")
        state = "fullscreen" if full_screen else "maximized_vert,maximized_horz"
        run("wmctrl", "-r", ":ACTIVE:", "-b", f"add,{state}")
        wait_until(self.is_large, "the window fills the screen")

    def is_large(self):
        """Drawn too, what the window manager puts around it aside."""
        left, top, width, height = self.screen.work_area()
        return all(self.screen.colour(left + width // 2, top + y) == COLOUR for y in (40, height // 2))

    def listen(self):
        """Notes what has happened: where on the screen it was clicked, how many keys it got."""
        self.display.sync()
        for _ in range(self.display.pending_events()):
            event = self.display.next_event()
            if event.type == X.ButtonPress:
                self.clicks.append((event.root_x, event.root_y))
            elif event.type == X.KeyPress:
                self.keys += 1
        return self
