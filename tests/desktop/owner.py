"""A clipboard owner for the tests, well behaved or not.

  --offer TARGET=FILE   offers the file's bytes under that target
  --incremental TARGET  sends that target piece by piece (INCR)
  --endless TARGET      sends that target piece by piece, 2 GiB of it
  --announce BYTES      the size that an incremental answer announces
  --stall-after BYTES   an incremental answer stops there and never ends
  --mute TARGET         never answers for that target ("ALL": for none)
  --quit-after TARGET   ends, without a word, once it has given that target

Tells on its output what happens: window NUMBER, owned, lost, asked TARGET, gave TARGET, sent BYTES.
Commands on its input: release (gives the selection up, and stays), quit.
"""

import argparse
import select
import sys

from Xlib import X, Xatom, display
from Xlib.protocol import event, request

PIECE = 240_000  # bytes: below the request limit of a server without BIG-REQUESTS
ENDLESS = 2 << 30


def arguments():
    parser = argparse.ArgumentParser()
    for name in ("offer", "incremental", "endless", "mute"):
        parser.add_argument(f"--{name}", action="append", default=[])
    parser.add_argument("--announce", type=int)
    parser.add_argument("--stall-after", type=int)
    parser.add_argument("--quit-after")
    return parser.parse_args()


def tell(text):
    print(text, flush=True)


class Transfer:
    """One incremental answer under way."""

    def __init__(self, target, content, total):
        self.target, self.content, self.total, self.sent = target, content, total, 0

    def next_piece(self):
        size = min(PIECE, self.total - self.sent)
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
        self.transfers = {}

    def atom(self, name):
        return self.display.intern_atom(name)

    def own(self):
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
            return
        property_ = asked.property or asked.target
        if target == "TARGETS":
            atoms = [self.atom(name) for name in ["TARGETS", *self.targets]]
            asked.requestor.change_property(property_, Xatom.ATOM, 32, atoms)
        elif target in self.options.incremental or target in self.options.endless:
            self.begin_transfer(asked, target, property_)
        elif target in self.contents and len(self.contents[target]) <= PIECE:
            asked.requestor.change_property(property_, asked.target, 8, self.contents[target])
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
        self.display.flush()
        if target in self.contents and target not in self.options.incremental:
            self.given(target)

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
            del self.transfers[key]
            return
        piece = transfer.next_piece()
        change.window.change_property(change.atom, self.atom(transfer.target), 8, piece)
        self.display.flush()
        tell(f"sent {transfer.sent}")
        if not piece:
            del self.transfers[key]
            self.given(transfer.target)

    def given(self, target):
        tell(f"gave {target}")
        if target == self.options.quit_after:
            self.display.sync()
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
