import QtQuick

/// A heading and the text below it; a long text scrolls.
Item {
    id: root

    required property string heading
    required property string text

    // Where the preview fits on neither side of the panel, it fits above or below its row.
    readonly property real roomAboveOrBelow: (Screen.height - Theme.tileSide - 2 * Theme.rowPadding) / 2
    readonly property real mostTextHeight: Math.min(Theme.previewTextHeight, roomAboveOrBelow - 2 * (Theme.cardMargin + Theme.previewPadding) - scroll.y)

    implicitWidth: 420
    implicitHeight: scroll.y + scroll.height

    Accessible.role: Accessible.Pane
    Accessible.name: heading

    Text {
        id: head
        text: root.heading
        textFormat: Text.PlainText
        font: Theme.headline
        color: Theme.colors.text
        Accessible.role: Accessible.Heading
        Accessible.name: root.heading
    }

    Flickable {
        id: scroll
        anchors.top: head.bottom
        anchors.topMargin: 8
        width: root.width
        height: Math.min(body.height, root.mostTextHeight)
        contentHeight: body.height
        boundsBehavior: Flickable.StopAtBounds
        interactive: contentHeight > height
        clip: true

        Text {
            id: body
            width: scroll.width
            text: root.text
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
            font: Theme.body
            lineHeight: 1.15
            color: Theme.colors.text
            Accessible.role: Accessible.StaticText
            Accessible.name: root.text
        }
    }

    ListScrollBar {
        anchors.left: scroll.right
        anchors.top: scroll.top
        anchors.bottom: scroll.bottom
        list: scroll
    }
}
