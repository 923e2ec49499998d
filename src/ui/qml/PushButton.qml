import QtQuick
import Nettlecap

Pressable {
    id: root

    required property string text
    property string symbol: ""
    property bool isDefault: false  // the one that Return presses
    property bool isDestructive: false

    readonly property ControlColors colors: Theme.colors.controls
    readonly property color ink: isDefault ? colors.accentText : isDestructive ? colors.destructive : colors.text

    implicitWidth: Math.max(64, content.implicitWidth + 24)
    implicitHeight: Math.max(Theme.controlHeight, content.implicitHeight + 8)

    Accessible.name: text
    Accessible.defaultButton: isDefault

    FocusRing { control: root }

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: root.isDefault ? (root.isHeld ? root.colors.accentPressed : root.colors.accent) : root.isHeld ? root.colors.pressed : root.isHovered ? root.colors.hovered : root.colors.ground
        border.width: root.isDefault ? 0 : 1
        border.color: root.colors.border
    }

    Row {
        id: content
        anchors.centerIn: parent
        spacing: 6

        Symbol {
            anchors.verticalCenter: parent.verticalCenter
            width: 14
            height: 14
            visible: root.symbol !== ""
            name: root.symbol
            color: root.ink
        }
        Text {
            text: root.text
            textFormat: Text.PlainText
            font: Theme.body
            color: root.ink
            Accessible.ignored: true
        }
    }
}
