"""Any program of the session may send ours whatever it likes over the session bus: calls of what it
has and of what it has not, signals in the name of others, arguments of every type."""

import os
import random

from desktop import DesktopTest, main, wait_until
from gi.repository import Gio, GLib

MIB = 1 << 20
SLACK = int(os.environ["NETTLECAP_MEMORY_SLACK"]) * MIB
MESSAGES = int(os.environ.get("NETTLECAP_BUS_MESSAGES", "3000"))
NAME, PATH = "com.nettlecap.Nettlecap", "/com/nettlecap/Nettlecap"
PATHS = (PATH, PATH, "/", "/com/nettlecap", f"{PATH}/x")
METHODS = {
    "org.freedesktop.Application": ("Activate", "Open", "ActivateAction", "open", "deleteLater", "destroyed"),
    "org.freedesktop.DBus.Properties": ("Get", "Set", "GetAll"),
    "org.freedesktop.DBus.Introspectable": ("Introspect",),
    "org.freedesktop.DBus.Peer": ("Ping", "GetMachineId"),
    "org.qtproject.Nothing": ("Activate",),
    None: ("Activate", "Open", "objectNameChanged"),
}
SIGNALS = (
    ("org.freedesktop.DBus", "NameOwnerChanged"),
    ("org.freedesktop.DBus", "NameLost"),
    ("org.kde.StatusNotifierWatcher", "StatusNotifierHostRegistered"),
    ("org.freedesktop.portal.Settings", "SettingChanged"),
    ("org.freedesktop.Notifications", "ActionInvoked"),
    ("org.freedesktop.PackageKit.Transaction", "Package"),
)
BASIC = {
    "b": lambda chance: chance.random() < 0.5,
    "y": lambda chance: chance.randrange(1 << 8),
    "n": lambda chance: chance.randrange(-(1 << 15), 1 << 15),
    "i": lambda chance: chance.choice((0, -1, (1 << 31) - 1, -(1 << 31))),
    "u": lambda chance: chance.choice((0, 1, (1 << 32) - 1)),
    "x": lambda chance: chance.choice((0, -1, (1 << 63) - 1, -(1 << 63))),
    "d": lambda chance: chance.choice((0.0, -1.5, float("nan"), float("inf"))),
    "s": lambda chance: chance.choice(("", "%s%n", "Activate", "é\u202e😀", "x" * chance.randrange(100_000))),
    "o": lambda chance: chance.choice(("/", PATH)),
    "g": lambda chance: chance.choice(("", "a{sv}")),
}


class BusTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self.program = self.nettlecap().start()
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION, None)

    def send(self, message, arguments):
        if arguments:
            message.set_body(GLib.Variant.new_tuple(*arguments))
        self.bus.send_message(message, Gio.DBusSendMessageFlags.NONE)

    def variant(self, chance, depth=0):
        kind = chance.random()
        if depth > 4 or kind < 0.6:
            letter = chance.choice(list(BASIC))
            return GLib.Variant(letter, BASIC[letter](chance))
        if kind < 0.7:
            return GLib.Variant.new_variant(self.variant(chance, depth + 1))
        if kind < 0.8:
            return GLib.Variant.new_tuple(*(self.variant(chance, depth + 1) for _ in range(chance.randrange(1, 4))))
        entries = {f"k{i}": self.variant(chance, depth + 1) for i in range(chance.randrange(4))}
        return GLib.Variant("a{sv}", entries) if kind < 0.9 else GLib.Variant("as", list(entries))

    def call(self, chance):
        interface = chance.choice(list(METHODS))
        method = chance.choice(METHODS[interface])
        self.send(
            Gio.DBusMessage.new_method_call(NAME, chance.choice(PATHS), interface, method),
            [self.variant(chance) for _ in range(chance.randrange(4))],
        )

    def signal(self, chance):
        message = Gio.DBusMessage.new_signal(chance.choice(PATHS), *chance.choice(SIGNALS))
        message.set_destination(NAME)
        self.send(message, [self.variant(chance) for _ in range(chance.randrange(4))])

    def ask(self, interface, method, *arguments):
        return self.bus.call_sync(
            NAME, PATH, interface, method, *arguments, None, Gio.DBusCallFlags.NO_AUTO_START, 60_000, None
        )

    def test_it_survives_whatever_comes(self):
        self.offer("antes")
        self.program.wait_for_text("antes")
        before = self.program.memory_peak()
        seed = random.randrange(1 << 32)
        print(f"\n  seed {seed}", end=" ", flush=True)
        chance = random.Random(seed)

        for number in range(MESSAGES):
            chance.choice((self.call, self.call, self.signal))(chance)
            if number % 100 == 0:  # not more at a time than the bus keeps for it
                self.ask("org.freedesktop.DBus.Peer", "Ping", None)

        self.ask("org.freedesktop.Application", "Activate", GLib.Variant("(a{sv})", ({},)))
        self.program.wait_for_panel()
        self.offer("depois")
        self.program.wait_for_text("depois")
        wait_until(lambda: self.program.texts() == ["depois", "antes"], "nothing else is in the history")
        self.assertLess(self.program.memory_peak() - before, 64 * MIB + SLACK)


if __name__ == "__main__":
    main()
