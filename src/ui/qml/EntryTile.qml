import QtQuick
import Nettlecap

/// The square at the start of a row: the picture's thumbnail, or a symbol where there is no
/// picture or its file is gone.
Item {
    id: root

    required property string symbol
    required property url thumbnail

    implicitWidth: Theme.tileSide
    implicitHeight: Theme.tileSide

    Rectangle {
        anchors.fill: parent
        radius: Theme.tileRadius
        color: Theme.colors.tile
    }

    Symbol {
        anchors.centerIn: parent
        width: 20
        height: 20
        visible: picture.status === Image.Null || picture.status === Image.Error
        name: root.symbol
        color: Theme.colors.tileSymbol
    }

    Image {
        id: picture
        anchors.fill: parent
        sourceSize.width: Theme.tileSide
        sourceSize.height: Theme.tileSide
        source: root.thumbnail
        Accessible.ignored: true
    }
}
