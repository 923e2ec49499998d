pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// The snippet editor while there is one, over the content of a panel. A panel is narrower
/// than the sheet would be by itself, so the sheet is as wide as it can be.
FocusScope {
    id: root

    required property Views.SnippetEditorView editor

    signal closed

    visible: editor !== null
    onVisibleChanged: visible ? forceActiveFocus() : closed()

    Rectangle {
        anchors.fill: parent
        color: Theme.colors.controls.scrim
    }

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }

    Repeater {
        model: root.editor ? [root.editor] : []

        SnippetEditorView {
            required property Views.SnippetEditorView modelData

            view: modelData
            anchors.centerIn: parent
            width: Math.min(implicitWidth, root.width - 2 * Theme.listPadding)
        }
    }
}
