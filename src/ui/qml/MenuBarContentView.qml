pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap.Views as Views

FocusScope {
    id: root

    required property Views.MenuBarContentView view

    implicitWidth: 430
    implicitHeight: 560
    focus: true

    Rectangle {
        anchors.fill: parent
        color: Theme.colors.background
    }

    PanelHeader {
        id: header
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
    }

    HistoryList {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.bottom: messages.top
        visible: !root.view.emptyState.isShown
        focus: true
        view: root.view
    }

    EmptyState {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.bottom: messages.top
        visible: root.view.emptyState.isShown
        symbol: root.view.emptyState.symbol
        title: root.view.emptyState.title
        message: root.view.emptyState.text
    }

    Column {
        id: messages
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom

        MessageLine {
            width: parent.width
            message: root.view.statusMessage
            color: Theme.colors.text
        }
        MessageLine {
            width: parent.width
            message: root.view.persistenceError
            color: Theme.colors.warning
        }
    }
}
