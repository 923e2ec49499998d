import QtQuick
import Nettlecap

/// A button without a frame: a symbol, a text or both.
Pressable {
    id: root

    property string symbol: ""
    property string text: ""
    property string help: ""
    property color ink: Theme.colors.secondaryText
    property color symbolInk: ink
    property color wash: Theme.colors.row.pressed
    property real symbolSide: 16

    implicitWidth: text === "" ? Theme.flatButtonSide : content.implicitWidth + 16
    implicitHeight: Theme.flatButtonSide

    Accessible.name: text === "" ? help : text
    Accessible.description: text === "" ? "" : help

    FocusRing { control: root }

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: root.wash
        opacity: root.isHeld ? 1 : root.isHovered ? 0.7 : 0
    }

    Row {
        id: content
        anchors.centerIn: parent
        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            width: root.symbolSide
            height: root.symbolSide
            visible: root.symbol !== ""
            name: root.symbol
            color: root.symbolInk
        }
        Text {
            anchors.verticalCenter: parent.verticalCenter
            visible: root.text !== ""
            text: root.text
            textFormat: Text.PlainText
            font: Theme.body
            color: root.ink
            Accessible.ignored: true
        }
    }

    HelpTip {
        control: root
        isHovered: root.isHovered && !root.isHeld
        text: root.help
    }
}
