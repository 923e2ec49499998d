import QtQuick
import Nettlecap

/// One key of the list; the chosen one is ticked.
Pressable {
    id: root

    required property int index
    required property string modelData
    required property bool isChosen
    required property bool isCurrent

    readonly property color ink: isCurrent ? Theme.colors.controls.accentText : Theme.colors.controls.text

    implicitHeight: Theme.controlHeight
    activeFocusOnTab: false
    Keys.enabled: false  // they are the list's

    Accessible.role: Accessible.ListItem
    Accessible.name: modelData
    Accessible.selectable: true
    Accessible.selected: isChosen

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius - 1
        color: root.isCurrent ? Theme.colors.controls.accent : "transparent"
    }

    Symbol {
        x: 6
        anchors.verticalCenter: parent.verticalCenter
        width: 12
        height: 12
        visible: root.isChosen
        name: "checkmark"
        color: root.ink
    }

    Text {
        x: 26
        anchors.verticalCenter: parent.verticalCenter
        text: root.modelData
        textFormat: Text.PlainText
        font: Theme.body
        color: root.ink
        Accessible.ignored: true
    }
}
