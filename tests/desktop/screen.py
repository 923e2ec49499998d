"""What the X server knows of the desktop."""

from Xlib import X, display


class Screen:
    """Asks the X server which windows are there."""

    def __init__(self):
        self.display = display.Display()
        self.root = self.display.screen().root

    def _property(self, window, name):
        value = window.get_full_property(self.display.intern_atom(name), X.AnyPropertyType)
        return None if value is None else value.value

    def window(self, window_class=None, title=None):
        """The managed window of that class (its second name) and title, if it is visible."""
        for number in self._property(self.root, "_NET_CLIENT_LIST") or []:
            try:
                window = self.display.create_resource_object("window", number)
                name = self.title(window)
                kind = window.get_wm_class() or ("", "")
                visible = window.get_attributes().map_state == X.IsViewable
            except Exception:  # it closed between the list and the question
                continue
            if visible and window_class in (None, kind[1]) and title in (None, name):
                return window
        return None

    def title(self, window):
        return (self._property(window, "_NET_WM_NAME") or b"").decode()

    def states(self, window):
        """The names of what the window manager holds it for."""
        return {self.display.get_atom_name(state) for state in self._property(window, "_NET_WM_STATE") or []}

    def active(self):
        value = self._property(self.root, "_NET_ACTIVE_WINDOW")
        return value[0] if value is not None and len(value) else 0

    def focus(self):
        """The window that has the keyboard; 0 and 1 stand for none and for the root."""
        focus = self.display.get_input_focus().focus
        return getattr(focus, "id", focus)

    def top_level(self, number):
        """The number of the managed window that this window is or lies within."""
        managed = self._property(self.root, "_NET_CLIENT_LIST") or []
        while number not in (*managed, X.NONE, X.PointerRoot, self.root.id):
            number = self.display.create_resource_object("window", number).query_tree().parent.id
        return number

    def position(self, window):
        corner = window.translate_coords(self.root, 0, 0)
        return -corner.x, -corner.y

    def colour(self, x, y):
        """Red, green and blue of that pixel, as somebody before the screen sees it."""
        blue, green, red, _ = self.root.get_image(x, y, 1, 1, X.ZPixmap, 0xFFFFFFFF).data
        return red, green, blue

    def work_area(self):
        """Left, top, width and height of what docks leave."""
        return tuple(self._property(self.root, "_NET_WORKAREA")[:4])

    def desktop(self):
        return self._property(self.root, "_NET_CURRENT_DESKTOP")[0]

    def has_compositor(self):
        return self.display.get_selection_owner(self.display.intern_atom("_NET_WM_CM_S0")) != X.NONE

    def clipboard_owner(self):
        owner = self.display.get_selection_owner(self.display.intern_atom("CLIPBOARD"))
        return 0 if owner == X.NONE else owner.id
