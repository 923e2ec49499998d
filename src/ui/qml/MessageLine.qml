import QtQuick

/// One line of news at the bottom of the panel; takes no room while there is none. Screen
/// readers announce it.
Item {
    id: root

    required property string message
    required property color color

    implicitHeight: visible ? text.implicitHeight + 16 : 0
    visible: message !== ""

    Accessible.role: Accessible.AlertMessage
    Accessible.name: message

    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        height: 1
        color: Theme.colors.separator
    }

    Text {
        id: text
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.leftMargin: Theme.listPadding + Theme.rowPadding
        anchors.rightMargin: Theme.listPadding + Theme.rowPadding
        anchors.verticalCenter: parent.verticalCenter
        text: root.message
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        font: Theme.caption
        color: root.color
        Accessible.ignored: true
    }
}
