import QtQuick

/// What the status item is, in a window of its own.
Rectangle {
    id: root

    required property string text

    implicitWidth: label.implicitWidth + 16
    implicitHeight: label.implicitHeight + 8
    radius: Theme.controlRadius
    color: Theme.colors.controls.sheet
    border.width: 1
    border.color: Theme.colors.controls.border

    Accessible.role: Accessible.ToolTip
    Accessible.name: text

    Text {
        id: label
        anchors.centerIn: parent
        text: root.text
        textFormat: Text.PlainText
        font: Theme.caption
        color: Theme.colors.controls.text
        Accessible.ignored: true
    }
}
