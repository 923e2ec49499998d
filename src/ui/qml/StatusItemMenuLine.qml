import QtQuick
import Nettlecap

/// One line of the status item's menu with the keys that choose it, or the line between two
/// groups of them.
Pressable {
    id: root

    required property int index
    required property var modelData
    required property bool isCurrent

    readonly property ControlColors colors: Theme.colors.controls
    readonly property color ink: isCurrent ? colors.accentText : colors.text

    signal pointerLeft

    implicitWidth: label.implicitWidth + (modelData.keys ? keys.implicitWidth + 32 : 0) + 24
    implicitHeight: modelData.isDivider ? 9 : Theme.controlHeight + 2
    enabled: modelData.isEnabled && !modelData.isDivider
    opacity: 1
    activeFocusOnTab: false
    Keys.enabled: false  // they are the menu's
    onIsHoveredChanged: if (!isHovered) pointerLeft()

    Accessible.role: modelData.isDivider ? Accessible.Separator : Accessible.MenuItem
    Accessible.name: modelData.label
    Accessible.description: modelData.keys

    ReadOut {
        item: root
        isWanted: root.isCurrent
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius - 1
        color: root.colors.accent
        visible: root.isCurrent
    }

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        x: 8
        width: parent.width - 16
        height: 1
        color: root.colors.border
        visible: root.modelData.isDivider
    }

    Text {
        id: label
        x: 10
        anchors.verticalCenter: parent.verticalCenter
        text: root.modelData.label
        textFormat: Text.PlainText
        font: Theme.body
        color: root.ink
        opacity: root.enabled ? 1 : 0.45
        Accessible.ignored: true
    }

    Text {
        id: keys
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: root.modelData.keys
        textFormat: Text.PlainText
        font: Theme.body
        color: root.ink
        opacity: root.enabled ? 0.75 : 0.45
        Accessible.ignored: true
    }
}
