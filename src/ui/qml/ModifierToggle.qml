import QtQuick

/// A button that stays pressed while its modifier is part of the shortcut.
Pressable {
    id: root

    required property string symbol
    required property bool isOn

    readonly property ControlColors colors: Theme.colors.controls

    implicitWidth: 28
    implicitHeight: Theme.controlHeight

    Accessible.role: Accessible.CheckBox  // of a button it would not be told whether it is pressed
    Accessible.name: symbol
    Accessible.checkable: true
    Accessible.checked: isOn

    FocusRing { control: root }

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: root.isOn ? (root.isHeld ? root.colors.accentPressed : root.colors.accent) : root.isHeld ? root.colors.pressed : root.isHovered ? root.colors.hovered : root.colors.ground
        border.width: root.isOn ? 0 : 1
        border.color: root.colors.border
    }

    Text {
        anchors.centerIn: parent
        text: root.symbol
        textFormat: Text.PlainText
        font: Theme.body
        color: root.isOn ? root.colors.accentText : root.colors.text
        Accessible.ignored: true
    }
}
