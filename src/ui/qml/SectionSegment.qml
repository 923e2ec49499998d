import QtQuick
import Nettlecap

/// One half of the section picker.
Pressable {
    id: root

    required property int index
    required property string modelData
    required property bool isChosen

    readonly property ControlColors colors: Theme.colors.controls

    Accessible.role: Accessible.RadioButton
    Accessible.name: modelData
    Accessible.checkable: true
    Accessible.checked: isChosen

    FocusRing { control: root }

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: root.isChosen ? (root.isHeld ? root.colors.accentPressed : root.colors.accent) : root.isHeld ? root.colors.pressed : root.isHovered ? root.colors.hovered : "transparent"
    }

    Text {
        anchors.centerIn: parent
        text: root.modelData
        textFormat: Text.PlainText
        font: Theme.body
        color: root.isChosen ? root.colors.accentText : root.colors.text
        Accessible.ignored: true
    }
}
