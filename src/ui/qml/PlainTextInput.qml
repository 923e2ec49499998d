import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// A field for one line of text.
FocusScope {
    id: root

    required property Views.PasteSource pasteSource
    required property string placeholder
    property alias text: input.text

    readonly property ControlColors colors: Theme.colors.controls

    signal edited

    implicitHeight: input.implicitHeight + 12

    FocusRing { control: root }

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: root.colors.field
        border.width: 1
        border.color: root.colors.switchBorder
    }

    Text {
        anchors.fill: input
        visible: input.text === "" && input.preeditText === ""
        text: root.placeholder
        textFormat: Text.PlainText
        elide: Text.ElideRight
        font: Theme.body
        color: root.colors.placeholder
        Accessible.ignored: true
    }

    TextInput {
        id: input
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.margins: 8
        anchors.verticalCenter: parent.verticalCenter
        focus: true
        activeFocusOnTab: true
        clip: true
        selectByMouse: true
        font: Theme.body
        color: root.colors.text
        selectionColor: root.colors.accent
        selectedTextColor: root.colors.accentText
        onTextChanged: root.edited()

        Accessible.role: Accessible.EditableText
        Accessible.name: root.placeholder
        Accessible.editable: true
    }

    PasteKeys {
        field: input
        source: root.pasteSource
        isOneLine: true
    }
}
