"""The program as a screen reader finds it, through AT-SPI."""

import contextlib

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

ENVIRONMENT = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}
# What comes of asking something that is gone between the question and the answer, or has no
# answer any more for which interfaces it has. Its name is empty then, and it has no actions.
GONE = (AttributeError, GLib.Error)


def nodes(role):
    """Everything of that role that is on the screen, in the order of the tree."""
    found = []
    listen()
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    for number in range(desktop.get_child_count()):
        _collect(desktop.get_child_at_index(number), role, found)
    return found


def _collect(node, role, found):
    try:
        states = node.get_state_set()
        if node.get_role_name() == role and states.contains(Atspi.StateType.SHOWING):
            found.append(node)
        for number in range(node.get_child_count()):
            _collect(node.get_child_at_index(number), role, found)
    except GONE:
        pass
    return found


class Popups:
    """Menus with windows of their own. Toolkits keep these out of the tree: a screen reader
    knows one because it is told when it appears."""

    def __init__(self, test):
        self.menus = []
        self.listener = Atspi.EventListener.new(self._hear)
        self.listener.register("object:state-changed:showing")
        test.addCleanup(self.listener.deregister, "object:state-changed:showing")

    def _hear(self, event):
        with contextlib.suppress(*GONE):
            role = event.source.get_role_name()
            menu = event.source.get_parent() if role == "menu item" else event.source
            if menu and role in ("menu item", "menu", "popup menu") and menu not in self.menus:
                self.menus.append(menu)

    def names(self, role):
        """Of what is on the screen."""
        found = []
        listen()
        for menu in self.menus:
            menu.clear_cache()
            with contextlib.suppress(*GONE):
                found += [node.get_name() for node in _collect(menu, role, [])]
        return found


def listen():
    """To what the programs told meanwhile, which brings the cache up to date, too."""
    loop = GLib.MainContext.default()
    while loop.pending():
        loop.iteration(False)


def _answers(asked, question):
    """What those answer that are still there: one may be gone since it was found."""
    found = []
    for node in asked:
        with contextlib.suppress(*GONE):
            found.append(question(node))
    return found


def texts(application):
    """What stands in the text fields of that program."""
    told = _answers(nodes("text"), lambda node: (node.get_application().get_name(), node.get_text(0, -1)))
    return [text for program, text in told if program == application]


def names(role):
    return _answers(nodes(role), lambda node: node.get_name())


def _names_in_state(role, state):
    told = _answers(nodes(role), lambda node: (node.get_name(), node.get_state_set().contains(state)))
    return [name for name, is_in_state in told if is_in_state]


def selected(role):
    return _names_in_state(role, Atspi.StateType.SELECTED)


def place(node):
    """Left, top, width and height, counted from the corner of its window. Along with that
    corner Qt tells a wrong size."""
    component = node.get_component_iface()
    corner, size = (component.get_extents(kind) for kind in (Atspi.CoordType.WINDOW, Atspi.CoordType.SCREEN))
    return corner.x, corner.y, size.width, size.height


def all_named(role, name):
    return [node for node, told in _answers(nodes(role), lambda node: (node, node.get_name())) if told == name]


def named(role, name):
    return next(iter(all_named(role, name)), None)


def places(role, name):
    return _answers(all_named(role, name), place)


def rows():
    """Of a list, from top to bottom."""
    while True:
        with contextlib.suppress(*GONE):
            return sorted(nodes("list item"), key=lambda node: place(node)[1])


def row_names():
    return _answers(rows(), lambda node: node.get_name())


def middle(node):
    left, top, width, height = place(node)
    return left + width // 2, top + height // 2


def checked(role):
    return _names_in_state(role, Atspi.StateType.CHECKED)


def press(role, name):
    """Whether there was such a thing, and it could be pressed. What the binding calls the
    newer way to an action's name asks for something that Qt does not answer."""
    for node in nodes(role):
        try:
            if node.get_name() == name:
                actions = [node.get_action_name(number) for number in range(node.get_n_actions())]
                return "Press" in actions and node.do_action(actions.index("Press"))
        except GONE:
            pass
    return False
