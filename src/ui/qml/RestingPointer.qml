import QtQuick
import Nettlecap

/// Where the pointer was when a menu opened. What comes to lie under a pointer that rests is
/// not pointed at: the keyboard would choose it.
QtObject {
    id: root

    property point place

    function remember(item: Item) {
        place = Pointer.positionIn(item);
    }
    function hasMovedTo(now: point): bool {
        return Math.abs(now.x - place.x) > 1 || Math.abs(now.y - place.y) > 1;
    }
}
