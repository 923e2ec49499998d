import QtQuick
import Nettlecap

/// The program's icon and name.
Item {
    id: root

    implicitHeight: Theme.headerHeight

    AppIcon {
        x: Theme.listPadding + Theme.rowPadding + (Theme.tileSide - width) / 2
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.headerIconSide
        height: Theme.headerIconSide
    }

    Text {
        x: Theme.listPadding + Theme.rowPadding + Theme.tileSide + Theme.gap
        anchors.verticalCenter: parent.verticalCenter
        text: "Nettlecap"
        textFormat: Text.PlainText
        font: Theme.title
        color: Theme.colors.text
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: 1
        color: Theme.colors.separator
    }
}
