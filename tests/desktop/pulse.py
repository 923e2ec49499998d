"""How long the program takes to answer while something goes on: its longest silence."""

import threading
import time

from gi.repository import Gio, GLib


class Pulse(threading.Thread):
    """Asks again and again for something that the program refuses, which it does in its
    main loop."""

    def __init__(self):
        super().__init__(daemon=True)
        self.stopping, self.longest, self.times = False, 0.0, 0
        # Its own connection: this runs beside the tests.
        address = Gio.dbus_address_get_for_bus_sync(Gio.BusType.SESSION, None)
        flags = Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION
        self.bus = Gio.DBusConnection.new_for_address_sync(address, flags, None, None)

    def run(self):
        while not self.stopping:
            began = time.monotonic()
            try:
                self.bus.call_sync(
                    "com.nettlecap.Nettlecap", "/com/nettlecap/Nettlecap", "org.freedesktop.Application",
                    "ActivateAction", GLib.Variant("(sava{sv})", ("none", [], {})), None,
                    Gio.DBusCallFlags.NO_AUTO_START, 60_000, None,
                )
            except GLib.Error as refusal:
                if "There is no such action" not in refusal.message:
                    self.longest = float("inf")
            self.longest, self.times = max(self.longest, time.monotonic() - began), self.times + 1
            time.sleep(0.002)

    def __enter__(self):
        self.start()
        return self

    def __exit__(self, *_):
        self.stopping = True
        self.join(70)
        self.bus.close_sync(None)
