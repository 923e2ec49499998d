"""A program that asks for the clipboard and behaves badly, or a whole crowd of them in one.

  requestor.py TIMES KIND   asks TIMES times, each time for a window of its own

    unread     for the text and the picture, and reads neither
    begun      the same, takes the first piece and no more
    gone       the same, and its window is gone after the first piece
    early      its window is gone before the answer
    absurd     for targets that nobody has, that have no name, or that mean something else
    multiple   for a thousand texts in one request (MULTIPLE), and reads none
    senseless  for several in one, without saying which, or what it says makes no sense
    repeated   for the text and the picture, all for the same place of the same window

Tells on its output: asked, once all was asked; answered NUMBER, of the answers so far. It stays
until it is ended, but one that is told to die on its command line, too, which ends once it was
answered that many times.
"""

import argparse
import array

from Xlib import X, Xatom, display

PARTS = 1000  # in one request for several
PLACES = ("TEXT", "PICTURE")

parser = argparse.ArgumentParser()
parser.add_argument("times", type=int)
parser.add_argument("kind")
parser.add_argument("--die-after", type=int)
options = parser.parse_args()

display = display.Display()
display.set_error_handler(lambda *_: None)
clipboard, text, multiple, pair = map(display.intern_atom, ("CLIPBOARD", "UTF8_STRING", "MULTIPLE", "ATOM_PAIR"))
places = [display.intern_atom(name) for name in PLACES]
wanted = [text, display.intern_atom("image/png")]
absurd = [display.intern_atom(name) for name in ("com.example.none", "INCR", "DELETE", "INSERT_PROPERTY")]
nameless = 1 << 28


def window():
    made = display.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
    made.change_attributes(event_mask=X.PropertyChangeMask)
    return made


def ask(requestor, target, place):
    requestor.convert_selection(clipboard, target, place, X.CurrentTime)


def ask_for_both(requestor):
    for target, place in zip(wanted, places):
        ask(requestor, target, place)


def ask_for_nothing_sensible(requestor):
    for target in (*absurd, nameless, X.NONE, clipboard):
        for place in (*places, X.NONE, nameless):
            ask(requestor, target, place)


def ask_for_several(requestor):
    parts = [atom for number in range(PARTS) for atom in (text, display.intern_atom(f"PART_{number}"))]
    requestor.change_property(places[0], pair, 32, array.array("I", parts))
    ask(requestor, multiple, places[0])


def ask_for_senseless_several(requestor):
    ask(requestor, multiple, X.NONE)
    ask(requestor, multiple, places[0])  # which is not there
    for kind, bits, parts in (
        (pair, 8, b"abc"),
        (text, 32, array.array("I", [text])),
        (pair, 32, array.array("I", [multiple, places[0]] * 100)),
        (pair, 32, array.array("I", [nameless, 0, 0, nameless, text, 0])),
        (pair, 32, array.array("I", [text, places[1]] * 20_000)),
    ):
        place = display.intern_atom(f"SEVERAL_{bits}_{len(parts)}")
        requestor.change_property(place, kind, bits, parts)
        ask(requestor, multiple, place)


def begin():
    shared = window()
    for _ in range(options.times):
        requestor = shared if options.kind == "repeated" else window()
        if options.kind == "absurd":
            ask_for_nothing_sensible(requestor)
        elif options.kind == "multiple":
            ask_for_several(requestor)
        elif options.kind == "senseless":
            ask_for_senseless_several(requestor)
        else:
            ask_for_both(requestor)
        if options.kind == "early":
            requestor.destroy()
    display.sync()
    print("asked", flush=True)


def take(place_changed):
    """The first piece: its announcement is what is taken away."""
    requestor, place = place_changed.window, place_changed.atom
    if place_changed.state != X.PropertyNewValue or place not in places:
        return
    if (requestor.id, place) in seen:
        if options.kind == "gone":
            requestor.destroy()
        return
    seen.add((requestor.id, place))
    if options.kind in ("begun", "gone"):
        requestor.delete_property(place)
        display.flush()


seen, answered = set(), 0
begin()
while options.die_after is None or answered < options.die_after:
    happened = display.next_event()
    if happened.type == X.SelectionNotify:
        answered += 1
        print(f"answered {answered}", flush=True)
    elif happened.type == X.PropertyNotify:
        take(happened)
