import QtQuick
import Nettlecap.Views as Views

/// The picture of an entry, as large as it fits.
Item {
    id: root

    required property Views.ImagePreviewPopover view

    implicitWidth: 440
    implicitHeight: backdrop.y + backdrop.height

    Accessible.role: Accessible.Pane
    Accessible.name: view.heading

    Text {
        id: head
        text: root.view.heading
        textFormat: Text.PlainText
        font: Theme.headline
        color: Theme.colors.text
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    Rectangle {
        id: backdrop
        anchors.top: head.bottom
        anchors.topMargin: 8
        width: 440
        height: 320
        radius: Theme.previewPictureRadius
        color: Qt.alpha(Theme.colors.text, 0.04)
    }

    Image {
        anchors.fill: backdrop
        sourceSize.width: 440
        sourceSize.height: 320
        source: root.view.image
        Accessible.role: Accessible.Graphic
        Accessible.name: root.view.heading
    }
}
