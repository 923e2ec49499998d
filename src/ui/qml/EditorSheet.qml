pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// Lies over the content of a panel while the snippet editor is open in a sheet of its own,
/// which is wider than the panel, and takes what the pointer does there.
FocusScope {
    id: root

    required property Views.SnippetEditorView editor
    property real cornerRadius: 0  // of the content

    signal closed

    visible: editor !== null
    onVisibleChanged: visible ? forceActiveFocus() : closed()

    Rectangle {
        anchors.fill: parent
        radius: root.cornerRadius
        color: Theme.colors.controls.scrim
    }

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }

    SheetHost {
        view: root.editor
        onCloseRequested: root.editor.cancel()
    }
}
