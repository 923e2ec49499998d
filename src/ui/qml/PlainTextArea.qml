import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// A field for a text of many lines. Tab is one of its letters; Shift+Tab and Ctrl+Tab leave it.
FocusScope {
    id: root

    required property Views.PasteSource pasteSource
    required property string name
    required property string initialText

    readonly property ControlColors colors: Theme.colors.controls
    property bool isLoaded: false

    signal edited(string text)

    Component.onCompleted: {
        edit.text = initialText;
        isLoaded = true;
    }

    FocusRing { control: root }

    Rectangle {
        anchors.fill: parent
        radius: Theme.controlRadius
        color: root.colors.field
        border.width: 1
        border.color: root.colors.switchBorder
    }

    Flickable {
        id: scroll

        function reveal(cursor: rect) {
            contentY = Math.max(cursor.y + cursor.height - height, Math.min(contentY, cursor.y));
        }

        anchors.fill: parent
        anchors.margins: 8
        contentHeight: edit.height
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        clip: true

        TextEdit {
            id: edit
            width: scroll.width
            height: Math.max(implicitHeight, scroll.height)
            focus: true
            activeFocusOnTab: true
            textFormat: TextEdit.PlainText
            wrapMode: TextEdit.Wrap
            selectByMouse: true
            font: Theme.body
            color: root.colors.text
            selectionColor: root.colors.accent
            selectedTextColor: root.colors.accentText
            KeyNavigation.backtab: root.KeyNavigation.backtab
            onTextChanged: if (root.isLoaded) root.edited(RawText.of(textDocument))
            onCursorRectangleChanged: scroll.reveal(cursorRectangle)

            Accessible.role: Accessible.EditableText
            Accessible.name: root.name
            Accessible.editable: true
            Accessible.multiLine: true
        }
    }

    ListScrollBar {
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        anchors.margins: 2
        list: scroll
    }

    PasteKeys {
        field: edit
        source: root.pasteSource
    }
}
