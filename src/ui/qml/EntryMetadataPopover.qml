import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// When an entry was copied.
Item {
    id: root

    required property Views.EntryMetadataPopover view

    implicitWidth: 230
    implicitHeight: Math.max(clock.height, lines.height)

    Accessible.role: Accessible.Pane
    Accessible.name: view.label
    Accessible.description: view.age

    Symbol {
        id: clock
        anchors.verticalCenter: parent.verticalCenter
        width: 18
        height: 18
        name: root.view.symbol
        color: Theme.colors.secondaryText
    }

    Column {
        id: lines
        anchors.left: clock.right
        anchors.leftMargin: Theme.gap
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 2

        Text {
            text: root.view.label
            textFormat: Text.PlainText
            font: Theme.headline
            color: Theme.colors.text
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Text {
            width: parent.width
            text: root.view.age
            textFormat: Text.PlainText
            elide: Text.ElideRight
            font: Theme.caption
            color: Theme.colors.secondaryText
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
    }
}
