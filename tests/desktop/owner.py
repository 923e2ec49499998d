"""A clipboard owner for the tests, well behaved or not.

  --offer TARGET=FILE   offers the file's bytes under that target
  --incremental TARGET  sends that target piece by piece (INCR)
  --endless TARGET      sends that target piece by piece, 2 GiB of it
  --announce BYTES      the size that an incremental answer announces
  --stall-after BYTES   an incremental answer stops there and never ends
  --piece BYTES         the size of the pieces of incremental answers
  --pause MILLISECONDS  before each piece
  --mute TARGET         never answers for that target ("ALL": for none)
  --absent TARGET       says that it gave that target, which it did not
  --as TARGET=TYPE/BITS gives that target as of another type, in units of so many bits
  --fickle              each piece of an incremental answer is of another type than the last
  --targets NUMBER      lists so many targets of its own, too
  --nameless NUMBER     lists so many atoms without a name, too
  --die                 where it would be mute or stall, it ends
  --quit-after TARGET   ends, without a word, once it has given that target

Tells on its output what happens: window NUMBER, owned, lost, asked TARGET, gave TARGET, sent BYTES.
Commands on its input: release (gives the selection up, and stays), quit.
"""

import argparse
import array
import select
import sys
import time

from Xlib import X, Xatom, display
from Xlib.protocol import event, request

PIECE = 240_000  # bytes: below the request limit of a server without BIG-REQUESTS
ENDLESS = 2 << 30
NAMELESS = 1 << 28  # more atoms than any server has


def arguments():
    parser = argparse.ArgumentParser()
    for name in ("offer", "incremental", "endless", "mute", "absent", "as"):
        parser.add_argument(f"--{name}", action="append", default=[])
    for name in ("announce", "stall-after"):
        parser.add_argument(f"--{name}", type=int)
    for name, usual in (("piece", PIECE), ("pause", 0), ("targets", 0), ("nameless", 0)):
        parser.add_argument(f"--{name}", type=int, default=usual)
    for name in ("fickle", "die"):
        parser.add_argument(f"--{name}", action="store_true")
    parser.add_argument("--quit-after")
    return parser.parse_args()


def tell(text):
    print(text, flush=True)


class Transfer:
    """One incremental answer under way."""

    def __init__(self, target, content, total):
        self.target, self.content, self.total, self.sent = target, content, total, 0

    def next_piece(self, most):
        size = min(most, self.total - self.sent)
        piece = self.content[self.sent : self.sent + size] if self.content else b"x" * size
        self.sent += size
        return piece


class Owner:
    def __init__(self, options):
        self.options = options
        self.display = display.Display()
        self.window = self.display.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
        self.contents = {}
        for offer in options.offer:
            target, _, path = offer.partition("=")
            with open(path, "rb") as file:
                self.contents[target] = file.read()
        self.targets = list(self.contents) + options.endless
        self.targets += [f"com.example.target-{number}" for number in range(options.targets)]
        self.forms = dict(form.split("=") for form in getattr(options, "as"))
        self.listed = b""
        self.transfers = {}

    def atom(self, name):
        return self.display.intern_atom(name)

    def own(self):
        # Beforehand: each name is a question to the server.
        atoms = [self.atom(name) for name in ["TARGETS", *self.targets]]
        atoms += [NAMELESS + number for number in range(self.options.nameless)]
        self.listed = array.array("I", atoms).tobytes()
        self.window.set_selection_owner(self.atom("CLIPBOARD"), X.CurrentTime)
        self.display.sync()
        tell(f"window {self.window.id}")
        tell("owned")

    def release(self):
        request.SetSelectionOwner(
            display=self.display.display, window=X.NONE, selection=self.atom("CLIPBOARD"), time=X.CurrentTime
        )
        self.display.sync()
        tell("released")

    def answer(self, asked):
        target = self.display.get_atom_name(asked.target)
        tell(f"asked {target}")
        if target in self.options.mute or "ALL" in self.options.mute:
            self.fall_silent()
            return
        property_ = asked.property or asked.target
        if target in self.options.absent:
            tell(f"left out {target}")
        elif target in self.options.incremental or target in self.options.endless:
            self.begin_transfer(asked, target, property_)
        elif target == "TARGETS":
            self.put(asked.requestor, property_, Xatom.ATOM, 32, self.listed)
        elif target in self.contents:
            kind, _, bits = self.forms.get(target, f"{target}/8").rpartition("/")
            self.put(asked.requestor, property_, self.atom(kind), int(bits), self.contents[target])
        else:
            property_ = X.NONE
        asked.requestor.send_event(
            event.SelectionNotify(
                time=asked.time,
                requestor=asked.requestor,
                selection=asked.selection,
                target=asked.target,
                property=property_,
            )
        )
        self.display.sync()  # flush may keep some of much for later
        if target in self.contents and target not in self.options.incremental:
            self.given(target)

    def put(self, window, property_, kind, bits, content):
        """In several requests what is too large for one."""
        for begin in range(0, max(len(content), 1), PIECE):
            part = content[begin : begin + PIECE]
            data = part if bits == 8 else array.array("I", part)
            window.change_property(property_, kind, bits, data, X.PropModeAppend if begin else X.PropModeReplace)
            self.display.flush()

    def fall_silent(self):
        if self.options.die:
            self.display.sync()
            sys.exit(0)

    def begin_transfer(self, asked, target, property_):
        content = self.contents.get(target)
        total = len(content) if content is not None else ENDLESS
        announced = self.options.announce if self.options.announce is not None else total
        asked.requestor.change_attributes(event_mask=X.PropertyChangeMask)
        asked.requestor.change_property(property_, self.atom("INCR"), 32, [min(announced, 0x7FFFFFFF)])
        self.transfers[asked.requestor.id, property_] = Transfer(target, content, total)

    def continue_transfer(self, change):
        key = change.window.id, change.atom
        transfer = self.transfers.get(key)
        if transfer is None or change.state != X.PropertyDelete:
            return
        stall = self.options.stall_after
        if stall is not None and transfer.sent >= stall:
            tell(f"stalled {transfer.target}")
            self.fall_silent()
            del self.transfers[key]
            return
        kind = f"com.example.type-{transfer.sent}" if self.options.fickle else transfer.target
        piece = transfer.next_piece(self.options.piece)
        time.sleep(self.options.pause / 1000)  # how slow it is, is what the test is about
        change.window.change_property(change.atom, self.atom(kind), 8, piece)
        self.display.sync()
        tell(f"sent {transfer.sent}")
        if not piece:
            del self.transfers[key]
            self.given(transfer.target)

    def given(self, target):
        tell(f"gave {target}")
        if target == self.options.quit_after:
            sys.exit(0)

    def handle(self, happened):
        if happened.type == X.SelectionRequest:
            self.answer(happened)
        elif happened.type == X.PropertyNotify:
            self.continue_transfer(happened)
        elif happened.type == X.SelectionClear:
            tell("lost")

    def serve(self):
        self.display.set_error_handler(lambda *_: None)  # a requestor may be gone at any time
        while True:
            while self.display.pending_events():
                self.handle(self.display.next_event())
            ready, _, _ = select.select([self.display, sys.stdin], [], [])
            if sys.stdin in ready:
                command = sys.stdin.readline().strip()
                if command == "release":
                    self.release()
                else:
                    return


owner = Owner(arguments())
owner.own()
owner.serve()
