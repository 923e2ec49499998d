"""A keyboard under the test's hands: keys that go down and stay down until they are let go."""

import contextlib
import threading
import time

from desktop import wait_until
from Xlib import XK, X, display
from Xlib.ext import record, xtest

SUPER, SHIFT, ALT = "Super_L", "Shift_L", "Alt_L"
CAPS_LOCK, NUM_LOCK = "Caps_Lock", "Num_Lock"


class Keyboard:
    """Keys are named by what is written on them, in the layout that is in use."""

    def __init__(self):
        self.display = display.Display()
        self.held = []

    def code(self, name):
        first = self.display.display.info.min_keycode
        last = self.display.display.info.max_keycode
        symbol = XK.string_to_keysym(name)
        for code, symbols in enumerate(self.display.get_keyboard_mapping(first, last - first + 1), first):
            if symbol in symbols[:2]:  # plain, and with Shift
                return code
        raise AssertionError(f"this keyboard has no key {name}")

    def down(self, name):
        """Returns when that was."""
        code = self.code(name)
        self.held.append((name, code))
        now = time.monotonic()
        self._event(X.KeyPress, code)
        return now

    def up(self, name):
        """Lets go the key that went down by this name, whatever is written on it now."""
        held = next(key for key in self.held if key[0] == name)
        self.held.remove(held)
        self._event(X.KeyRelease, held[1])

    def tap(self, *names):
        for name in names:
            self.down(name)
            self.up(name)

    @contextlib.contextmanager
    def holding(self, *names):
        for name in names:
            self.down(name)
        yield
        for name in reversed(names):
            self.up(name)

    def chord(self, *names):
        with self.holding(*names[:-1]):
            self.tap(names[-1])

    def locked(self, name):
        """Whether the lock of that key is on. Both locks are modifiers of their own."""
        bit = {CAPS_LOCK: X.LockMask, NUM_LOCK: X.Mod2Mask}[name]
        return bool(self.display.screen().root.query_pointer().mask & bit)

    def lock(self, name, on):
        if self.locked(name) != on:
            self.tap(name)
            wait_until(lambda: self.locked(name) == on, f"{name} is {'on' if on else 'off'}")

    def close(self):
        for name, _ in reversed(list(self.held)):
            self.up(name)
        for name in (CAPS_LOCK, NUM_LOCK):
            self.lock(name, False)
        self.display.close()

    def _event(self, kind, code):
        xtest.fake_input(self.display, kind, code)
        self.display.sync()


class Presses(threading.Thread):
    """Listens to the server's keyboard and counts presses, the repeats of a held key included."""

    NOTHING = {
        **dict.fromkeys(("core_requests", "core_replies", "delivered_events", "device_events", "errors"), (0, 0)),
        **dict.fromkeys(("ext_requests", "ext_replies"), (0, 0, 0, 0)),
        **dict.fromkeys(("client_started", "client_died"), False),
    }

    def __init__(self):
        super().__init__(daemon=True)
        self.count = 0
        self.control, self.data = display.Display(), display.Display()
        presses = [{**self.NOTHING, "device_events": (X.KeyPress, X.KeyPress)}]
        self.context = self.control.record_create_context(0, [record.AllClients], presses)
        self.control.sync()
        self.start()

    def run(self):
        self.data.record_enable_context(self.context, self.heard)

    def heard(self, reply):
        if reply.category == record.FromServer:
            self.count += len(reply.data) // 32  # bytes of an event

    def stop(self):
        self.control.record_disable_context(self.context)
        self.control.sync()
        self.join(10)
        self.control.record_free_context(self.context)
        self.control.close()
        self.data.close()
