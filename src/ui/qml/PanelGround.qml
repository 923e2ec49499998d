import QtQuick
import Nettlecap

/// What the panel's content stands on, by which the panel can be moved.
Rectangle {
    color: Theme.colors.background

    WindowMover { anchors.fill: parent }
}
