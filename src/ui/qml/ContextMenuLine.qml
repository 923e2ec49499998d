import QtQuick

/// One line of a menu, or the line between two groups of them.
Pressable {
    id: root

    required property int index
    required property var modelData
    required property bool isCurrent

    property real roomBehind: 0  ///< the label
    readonly property ControlColors colors: Theme.colors.controls
    readonly property color ink: isCurrent ? colors.accentText : modelData.isDestructive ? colors.destructive : colors.text

    implicitWidth: label.implicitWidth + roomBehind + 24
    implicitHeight: modelData.isDivider ? 9 : Theme.controlHeight + 2
    enabled: !modelData.isDivider
    opacity: 1
    activeFocusOnTab: false
    Keys.enabled: false  // they are the menu's

    Accessible.role: modelData.isDivider ? Accessible.Separator : Accessible.MenuItem
    Accessible.name: modelData.label

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
}
