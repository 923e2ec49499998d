pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap.Views as Views

/// The title of a shortcut, its key and its modifiers.
Item {
    id: root

    required property Views.ShortcutEditor editor

    readonly property real keyColumn: picker.x

    signal keysWanted(Item picker)

    implicitHeight: Math.max(title.implicitHeight, Theme.controlHeight)

    Accessible.role: Accessible.Grouping
    Accessible.name: editor.title

    Text {
        id: title
        anchors.left: parent.left
        anchors.right: picker.left
        anchors.rightMargin: Theme.gap
        anchors.verticalCenter: parent.verticalCenter
        text: root.editor.title
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        font: Theme.body
        color: Theme.colors.text
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    KeyPicker {
        id: picker
        anchors.right: modifiers.left
        anchors.rightMargin: Theme.gap
        anchors.verticalCenter: parent.verticalCenter
        key: root.editor.keyLabel
        Accessible.description: root.editor.title + ": " + key
        onPressed: root.keysWanted(picker)
    }

    Row {
        id: modifiers
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        Repeater {
            model: root.editor.modifierSymbols

            ModifierToggle {
                required property int index
                required property string modelData

                symbol: modelData
                isOn: root.editor.modifiersOn[index]
                Accessible.description: root.editor.title
                onPressed: root.editor.setModifier(index, !isOn)
            }
        }
    }
}
