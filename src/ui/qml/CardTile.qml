import QtQuick
import Nettlecap

/// A symbol on a square of its own colour.
Item {
    id: root

    required property string symbol
    required property color color

    Rectangle {
        anchors.fill: parent
        radius: Theme.cardTileRadius
        color: root.color
        opacity: 0.1
    }

    Symbol {
        anchors.centerIn: parent
        width: Theme.cardSymbolSide
        height: Theme.cardSymbolSide
        name: root.symbol
        color: root.color
    }
}
