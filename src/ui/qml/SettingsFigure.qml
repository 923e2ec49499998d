import QtQuick

/// A figure with its name.
Item {
    id: root

    required property string text
    required property string figure

    width: parent ? parent.width : 0
    implicitHeight: Math.max(label.implicitHeight, value.implicitHeight)

    Accessible.role: Accessible.StaticText
    Accessible.name: text + ": " + figure

    Text {
        id: label
        anchors.left: parent.left
        anchors.right: value.left
        anchors.rightMargin: Theme.gap
        text: root.text
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        font: Theme.body
        color: Theme.colors.controls.text
        Accessible.ignored: true
    }

    Text {
        id: value
        anchors.right: parent.right
        text: root.figure
        textFormat: Text.PlainText
        font: Theme.body
        color: Theme.colors.secondaryText
        Accessible.ignored: true
    }
}
