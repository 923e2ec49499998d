import QtQuick

/// A titled group of settings.
Column {
    id: root

    required property string title
    default property alias content: rows.data

    spacing: 6

    Text {
        x: Theme.formPadding
        width: parent.width - 2 * Theme.formPadding
        text: root.title
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        font: Theme.title
        color: Theme.colors.text
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Rectangle {
        width: parent.width
        height: rows.height + 2 * Theme.formPadding
        radius: Theme.groupRadius
        color: Theme.colors.controls.group
        border.width: 1
        border.color: Theme.colors.controls.groupBorder

        Column {
            id: rows
            x: Theme.formPadding
            y: Theme.formPadding
            width: parent.width - 2 * Theme.formPadding
            spacing: Theme.formSpacing
        }
    }
}
