"""The program as a screen reader finds it, through AT-SPI."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

ENVIRONMENT = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}


def nodes(role):
    """Everything of that role that is on the screen, from top to bottom."""
    found = []
    loop = GLib.MainContext.default()
    while loop.pending():  # what the programs told meanwhile, which brings the cache up to date
        loop.iteration(False)
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
    except (AttributeError, GLib.Error):  # gone between the question and the answer
        pass


def texts(application):
    """What stands in the text fields of that program."""
    return [
        node.get_text(0, -1)
        for node in nodes("text")
        if node.get_application().get_name() == application
    ]


def names(role):
    return [node.get_name() for node in nodes(role)]


def selected(role):
    return [node.get_name() for node in nodes(role) if node.get_state_set().contains(Atspi.StateType.SELECTED)]


def press(role, name):
    """Whether there was such a thing, and it could be pressed. What the binding calls the
    newer way to an action's name asks for something that Qt does not answer."""
    for node in nodes(role):
        try:
            if node.get_name() == name:
                actions = [node.get_action_name(number) for number in range(node.get_n_actions())]
                return node.do_action(actions.index("Press"))
        except GLib.Error:  # gone between the question and the answer
            pass
    return False
