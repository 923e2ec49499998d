import QtQuick
import Nettlecap

/// What the panel's content stands on, by which the panel can be moved.
Rectangle {
    id: root

    property bool movesWindow: true

    color: Theme.colors.background

    WindowMover {
        anchors.fill: parent
        enabled: root.movesWindow
    }
}
