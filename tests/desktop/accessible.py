"""The program as a screen reader finds it, through AT-SPI."""

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi, GLib  # noqa: E402

ENVIRONMENT = {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}


def nodes(role):
    """Everything of that role that is on the screen, from top to bottom."""
    found = []
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


def names(role):
    return [node.get_name() for node in nodes(role)]


def press(node):
    for number in range(node.get_n_actions()):
        if Atspi.Action.get_name(node, number) == "Press":
            return node.do_action(number)
    raise AssertionError(f"{node.get_name()} has no action to press it")
