import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// A field for one line of text. A key that the user of `keyPressed` accepts is not typed.
FocusScope {
    id: root

    required property Views.PasteSource pasteSource
    required property string placeholder
    property string symbol: ""
    property bool hasRing: true
    property alias text: input.text
    readonly property bool isComposing: input.inputMethodComposing || input.preeditText !== ""

    readonly property ControlColors colors: Theme.colors.controls

    signal edited
    signal keyPressed(var event)

    implicitHeight: input.implicitHeight + 12

    FocusRing {
        control: root
        opacity: root.hasRing ? 1 : 0
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: root.colors.field
        border.width: root.hasRing || !root.activeFocus ? 1 : 2
        border.color: root.hasRing || !root.activeFocus ? root.colors.switchBorder : root.colors.focusRing
    }

    Symbol {
        x: 8
        anchors.verticalCenter: parent.verticalCenter
        width: 14
        height: 14
        visible: root.symbol !== ""
        name: root.symbol
        color: root.colors.placeholder
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
        anchors.leftMargin: root.symbol === "" ? 8 : 28
        anchors.rightMargin: 8
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
        KeyNavigation.tab: root.KeyNavigation.tab
        KeyNavigation.backtab: root.KeyNavigation.backtab
        Keys.onPressed: event => root.keyPressed(event)

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
