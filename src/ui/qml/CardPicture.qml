pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap.Views as Views

/// A picture, read anew each time, and below it its place in the list. While it is being
/// decoded its box stands empty.
Item {
    id: root

    required property Views.NavigationHUDView view

    readonly property bool isMissing: picture.status === Image.Null || picture.status === Image.Error

    implicitHeight: Theme.cardPictureHeight + Theme.cardPictureSpacing + title.implicitHeight + Theme.cardTextSpacing + caption.implicitHeight

    Item {
        id: box
        anchors.left: parent.left
        anchors.right: parent.right
        height: Theme.cardPictureHeight

        Rectangle {
            anchors.fill: parent
            radius: Theme.cardPictureRadius
            color: "black"
            opacity: root.isMissing ? 0.04 : 0.12
        }

        Image {
            id: picture
            anchors.fill: parent
            sourceSize.width: root.view.panelWidth - 2 * (Theme.cardMargin + Theme.cardPadding)
            sourceSize.height: Theme.cardPictureHeight
            source: root.view.picture
            cache: false
            Accessible.ignored: true
        }

        Rectangle {
            anchors.fill: parent
            radius: Theme.cardPictureRadius
            color: "transparent"
            border.width: 1
            border.color: Theme.colors.card.pictureOutline
        }

        EmptyState {
            anchors.fill: parent
            visible: root.isMissing
            symbol: "photo"
            title: "Imagem indisponível"
            message: ""
        }
    }

    Text {
        id: title
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: box.bottom
        anchors.topMargin: Theme.cardPictureSpacing
        text: "Imagem copiada"
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        font: Theme.headline
        color: Theme.colors.text
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    CardCaption {
        id: caption
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: title.bottom
        anchors.topMargin: Theme.cardTextSpacing
        text: root.view.caption
    }
}
