"""Somebody who doesn't see the screen and has no mouse: knows what the accessibility tree
tells, presses what it offers, and has a keyboard."""

import contextlib
import json

import accessible
import targets
from accessible import GONE, Atspi, GLib
from desktop import DesktopTest, keys, run, wait_until

SETTINGS = "Ajustes do Nettlecap"
CONTROLS = {"check box", "combo box", "list item", "menu item", "push button", "radio button", "spin button", "text"}


class Told:
    """One thing of the tree: what it is, what it says, and in which state it is."""

    def __init__(self, node):
        self.node = node
        self.role, self.name, self.description = node.get_role_name(), node.get_name(), node.get_description()
        self.states = {state.value_nick for state in node.get_state_set().get_states()}
        text = node.get_text(0, -1) if "Text" in node.get_interfaces() else ""
        self.text = text.replace("\u2029", "\n")  # as Qt tells the end of a line

    def __contains__(self, state):
        return state in self.states

    def place(self):
        return self.node.get_component_iface().get_extents(Atspi.CoordType.SCREEN)

    def says(self):
        return {self.name, self.description, self.text} - {""}


def tree(everything=False):
    """What the program shows now, or all that it lets be known."""
    found = []
    loop = GLib.MainContext.default()
    while loop.pending():
        loop.iteration(False)
    desktop = Atspi.get_desktop(0)
    desktop.clear_cache()
    for number in range(desktop.get_child_count()):
        with contextlib.suppress(*GONE):
            program = desktop.get_child_at_index(number)
            if program.get_name() == "Nettlecap":
                _collect(program, everything, found)
    return found


def _collect(node, everything, found):
    try:
        told = Told(node)
        if everything or "showing" in told:
            found.append(told)
        for number in range(node.get_child_count()):
            _collect(node.get_child_at_index(number), everything, found)
    except GONE:
        pass


class Announcements:
    """What the program announced since this was made: the focus that went somewhere, and
    alerts that appeared or changed. A screen reader speaks by these."""

    KINDS = ("object:state-changed:focused", "object:state-changed:showing", "object:property-change:accessible-name")

    def __init__(self, test):
        self.heard = []
        self.listener = Atspi.EventListener.new(self._hear)
        for kind in self.KINDS:
            self.listener.register(kind)
            test.addCleanup(self.listener.deregister, kind)
        tree()  # who answers has heard that somebody listens, and tells from then on

    def _hear(self, event):
        try:
            role, is_focus = event.source.get_role_name(), event.type.endswith("focused")
            if event.detail1 if is_focus else role == "alert":
                self.heard.append((role, event.source.get_name()))
        except GONE:
            pass

    def __contains__(self, announcement):
        loop = GLib.MainContext.default()
        while loop.pending():
            loop.iteration(False)
        return announcement in self.heard


class ReaderTest(DesktopTest):
    preferences = {}  # other than by default

    def setUp(self):
        super().setUp()
        self.program = self.nettlecap(environment=accessible.ENVIRONMENT)
        self.settings_file = self.program.config / "Nettlecap" / "Nettlecap.preferences.v1"
        self.settings_file.parent.mkdir(parents=True)
        self.settings_file.write_text(json.dumps(self.preferences))
        self.start()

    def start(self):
        self.program.start()

    def copied(self, *texts):
        for text in texts:
            self.offer(text)
            self.program.wait_for_text(text)

    # What the program keeps.

    def preference(self, name):
        return json.loads(self.settings_file.read_bytes()).get(name)

    def wait_for_preference(self, name, value):
        wait_until(lambda: self.preference(name) == value, f"{name} is kept as {value}")

    def wait_for_texts(self, *texts):
        wait_until(lambda: self.program.texts() == [*texts], f"{texts} in the history")

    def favorites(self):
        return [entry["text"] for entry in self.program.history() if entry["isFavorite"]]

    def wait_for_messages(self, *messages):
        def kept():
            return [(message["title"], message["content"]) for message in self.program.document().get("snippets", [])]

        wait_until(lambda: kept() == [*messages], f"the messages {messages}")

    # What the tree tells.

    def find(self, role, name=None, description=None):
        """The first such thing that is shown."""
        for told in tree():
            if told.role == role and name in (None, told.name) and description in (None, told.description):
                return told
        return None

    def wait_for(self, role, name=None, description=None):
        return wait_until(lambda: self.find(role, name, description), f"a {role} {name!r}")

    def wait_until_gone(self, role, name=None):
        wait_until(lambda: not self.find(role, name), f"no {role} {name!r} any more")

    def said(self, everything=False):
        return set().union(*(told.says() for told in tree(everything)))

    def wait_until_said(self, *texts):
        wait_until(lambda: {*texts} <= self.said(), f"{texts} is said")

    def wait_for_rows(self, *names):
        """From top to bottom; the tree has them in the order in which they were made."""

        def shown():
            try:
                rows = [(told.place().y, told.name) for told in tree() if told.role == "list item"]
            except GONE:
                return False
            return [name for _, name in sorted(rows)] == [*names]

        wait_until(shown, f"the rows {names}")

    def wait_for_written(self, text, *place):
        wait_until(lambda: (told := self.find(*place)) and told.text == text, f"{text!r} is written in {place}")

    def wait_for_selection(self, name):
        wait_until(lambda: [told.name for told in tree() if "selected" in told] == [name], f"{name!r} is selected")

    def focused(self):
        """The control that has the focus: role, name and description. A selected row speaks
        for the field from which the list is walked through."""
        having = [told for told in tree() if "focused" in told and told.role in CONTROLS]
        return [(told.role, told.name, told.description) for told in having]

    def wait_for_focus(self, role, name=None, description=None):
        def there():
            return [
                (a, b, c)
                for a, b, c in self.focused()
                if a == role and name in (None, b) and description in (None, c)
            ]

        return wait_until(there, f"the focus is on the {role} {name!r}")

    # What can be done.

    def press(self, role, name=None, description=None, action="Press"):
        """By what the tree offers, once there is such a thing."""

        def done():
            told = self.find(role, name, description)
            if not told:
                return False
            try:
                actions = [told.node.get_action_name(number) for number in range(told.node.get_n_actions())]
                return action in actions and told.node.do_action(actions.index(action))
            except GONE:
                return False

        wait_until(done, f"{action} of the {role} {name!r}")

    def reach(self, role, name, description=None):
        """Gives it the focus, wherever it is; the form scrolls there."""

        def given():
            for told in tree(everything=True):
                if told.role == role and told.name == name and description in (None, told.description):
                    with contextlib.suppress(*GONE):
                        return told.node.get_component_iface().grab_focus()
            return False

        wait_until(given, f"the {role} {name!r} takes the focus")
        self.wait_for_focus(role, name, description)

    def step(self, key):
        """To another control, which it returns."""
        before = self.focused()
        keys(key)

        def elsewhere():
            now = self.focused()
            return now if now != before else None

        return wait_until(elsewhere, f"{key} goes on from {before}")[-1]

    def go_to(self, role, name, description=None, key="Tab"):
        """With the keyboard."""
        for _ in range(60):
            *place, told = self.step(key)
            if place == [role, name] and description in (None, told):
                return
        raise AssertionError(f"{key} does not come to the {role} {name!r}")

    def operate(self, role, name, description=None, key="Tab"):
        """With the keyboard, as a control that is not a list's."""
        self.go_to(role, name, description, key)
        keys("space")

    def round(self, key, start):
        """All stops of the keyboard, by role and name, from one control until it is there again."""
        stops = []
        while not stops or stops[-1] != start:
            stops.append(self.step(key)[:2])
            self.assertLess(len(stops), 60, stops)
        return stops

    def expect_rounds(self, order):
        """The stops forwards, and backwards the other way; the last is where the keyboard is."""
        start = order[-1]
        self.assertEqual(self.round("Tab", start), order)
        self.assertEqual(self.round("shift+Tab", start), [*reversed(order[:-1]), start])

    def type(self, text):
        run("xdotool", "type", text)

    def search_for(self, query):
        self.wait_for_focus("text")
        self.type(query)
        self.wait_for_written(query, "text")

    def show_panel(self):
        self.program.show_panel()
        self.wait_for_focus("text", "Buscar no histórico")

    def show_messages(self):
        self.show_panel()
        keys("Right")
        self.wait_for_focus("text", "Buscar no salvos")

    def wait_until_sheet_closed(self):
        """It is a window of its own: the keyboard comes back to the panel after it is gone."""
        self.wait_until_gone("dialog")
        panel = self.program.panel()
        wait_until(lambda: self.screen.focus() == panel.id, "the panel has the keyboard again")

    def show_settings(self):
        self.show_panel()
        self.press("push button", "Ajustes")
        self.wait_for("frame", SETTINGS)

    def wait_until_hidden(self):
        wait_until(lambda: not self.screen.window("Nettlecap"), "the panel is hidden")

    def target(self):
        """A program that can be pasted into, in front."""
        return targets.XTerm(self)
