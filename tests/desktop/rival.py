"""Another program that keeps what is copied: it reads each new clipboard, and some
milliseconds later (its argument) owns it itself with the same text. Tells on its output of
each time it did."""

import sys
import time

from Xlib import X, Xatom, display
from Xlib.ext import xfixes
from Xlib.protocol import event

DELAY = int(sys.argv[1]) / 1000

display = display.Display()
display.xfixes_query_version()
window = display.screen().root.create_window(0, 0, 1, 1, 0, X.CopyFromParent)
clipboard, targets, utf8, kept = map(display.intern_atom, ("CLIPBOARD", "TARGETS", "UTF8_STRING", "RIVAL"))
display.xfixes_select_selection_input(window, clipboard, xfixes.XFixesSetSelectionOwnerNotifyMask)
text = b""
print("ready", flush=True)


def answer(asked):
    place = asked.property
    if asked.target == targets:
        asked.requestor.change_property(place, Xatom.ATOM, 32, [targets, utf8])
    elif asked.target == utf8:
        asked.requestor.change_property(place, utf8, 8, text)
    else:
        place = X.NONE
    asked.requestor.send_event(
        event.SelectionNotify(
            time=asked.time, requestor=asked.requestor, selection=asked.selection, target=asked.target, property=place
        )
    )


display.set_error_handler(lambda *_: None)
while True:
    happened = display.next_event()
    if happened.type == X.SelectionRequest:
        answer(happened)
    elif happened.type == X.SelectionNotify and happened.property != X.NONE:
        text = window.get_full_property(kept, X.AnyPropertyType).value
        time.sleep(DELAY)  # how slow it is, is what the test is about
        window.set_selection_owner(clipboard, X.CurrentTime)
        print("owns", text.decode(), flush=True)
    elif getattr(happened, "sub_code", None) == 0 and happened.owner != window:
        window.convert_selection(clipboard, utf8, kept, X.CurrentTime)
    display.flush()
