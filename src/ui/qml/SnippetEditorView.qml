pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap.Views as Views

/// The sheet in which a saved message is written, the whole of its window. The keyboard goes
/// round within it.
FocusScope {
    id: root

    required property Views.SnippetEditorView view

    /// Whether what is translucent shows what is behind it. Where it doesn't, the window is cut
    /// along the sheet's edge.
    property bool isComposited: true
    readonly property string title: view.heading

    implicitWidth: 440
    implicitHeight: parts.height + 2 * parts.x
    focus: true

    Accessible.role: Accessible.Dialog
    Accessible.name: title

    Keys.onEscapePressed: root.view.cancel()
    Keys.onReturnPressed: root.view.save()
    Keys.onEnterPressed: root.view.save()

    Rectangle {
        anchors.fill: parent
        visible: !root.isComposited
        color: Theme.colors.controls.border
    }

    Rectangle {
        anchors.fill: parent
        radius: 12
        color: Theme.colors.controls.sheet
        border.width: 1
        border.color: Theme.colors.controls.border
    }

    Column {
        id: parts
        x: 20
        y: 20
        width: parent.width - 2 * x
        spacing: 14

        Text {
            width: parent.width
            text: root.title
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            font: Theme.heading
            color: Theme.colors.controls.text
            Accessible.role: Accessible.Heading
            Accessible.name: text
        }
        PlainTextInput {
            id: titleField
            width: parent.width
            focus: true
            KeyNavigation.tab: contentField
            KeyNavigation.backtab: saveButton
            pasteSource: root.view.pasteSource
            placeholder: "Título"
            text: root.view.title
            onEdited: root.view.title = text
        }
        PlainTextArea {
            id: contentField
            width: parent.width
            height: 180
            KeyNavigation.tab: cancelButton
            KeyNavigation.backtab: titleField
            pasteSource: root.view.pasteSource
            name: "Conteúdo"
            initialText: root.view.content
            onEdited: text => root.view.content = text
        }
        Row {
            anchors.right: parent.right
            spacing: 8

            PushButton {
                id: cancelButton
                text: "Cancelar"
                pressedByReturn: false
                KeyNavigation.tab: saveButton
                KeyNavigation.backtab: contentField
                onPressed: root.view.cancel()
            }
            PushButton {
                id: saveButton
                text: "Salvar"
                isDefault: true
                KeyNavigation.tab: titleField
                KeyNavigation.backtab: cancelButton
                enabled: root.view.canSave
                pressedByReturn: false
                onPressed: root.view.save()
            }
        }
    }
}
