import QtQuick
import Nettlecap

/// Shows the key of a shortcut; pressed, it asks for the list of keys.
Pressable {
    id: root

    required property string key

    readonly property ControlColors colors: Theme.colors.controls

    implicitWidth: 70
    implicitHeight: Theme.controlHeight

    Accessible.role: Accessible.ComboBox
    Accessible.name: "Tecla"

    Keys.onUpPressed: root.pressed()
    Keys.onDownPressed: root.pressed()

    FocusRing { control: root }

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: root.isHeld ? root.colors.pressed : root.isHovered ? root.colors.hovered : root.colors.ground
        border.width: 1
        border.color: root.colors.border
    }

    Text {
        anchors.left: parent.left
        anchors.leftMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: root.key
        textFormat: Text.PlainText
        font: Theme.body
        color: root.colors.text
        Accessible.ignored: true
    }

    Symbol {
        anchors.right: parent.right
        anchors.rightMargin: 7
        anchors.verticalCenter: parent.verticalCenter
        width: 12
        height: 12
        name: "chevron.up.chevron.down"
        color: Theme.colors.secondaryText
    }
}
