import QtQuick
import Nettlecap

/// What stands in place of an empty list.
Item {
    id: root

    required property string symbol
    required property string title
    required property string message
    property string button: ""

    signal pressed

    Column {
        anchors.centerIn: parent
        width: Math.min(280, parent.width - 8 * Theme.listPadding)  // two lines of like length
        spacing: 6

        Symbol {
            anchors.horizontalCenter: parent.horizontalCenter
            width: 44
            height: 44
            name: root.symbol
            color: Theme.colors.tileSymbol
        }
        Item {
            width: 1
            height: 4
        }
        Text {
            width: parent.width
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            text: root.title
            textFormat: Text.PlainText
            font: Theme.title
            color: Theme.colors.text
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Text {
            width: parent.width
            visible: root.message !== ""
            horizontalAlignment: Text.AlignHCenter
            wrapMode: Text.WordWrap
            text: root.message
            textFormat: Text.PlainText
            font: Theme.body
            color: Theme.colors.secondaryText
            Accessible.role: Accessible.StaticText
            Accessible.name: text
        }
        Item {
            width: 1
            height: 4
            visible: action.visible
        }
        PushButton {
            id: action
            anchors.horizontalCenter: parent.horizontalCenter
            visible: text !== ""
            text: root.button
            onPressed: root.pressed()
        }
    }
}
