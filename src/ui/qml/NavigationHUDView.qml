pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap.Views as Views

/// The card: what would be pasted now, and its place in the list.
Item {
    id: root

    required property Views.NavigationHUDView view
    /// Whether what is translucent shows what is behind it.
    property bool isComposited: true

    readonly property real inset: Theme.cardMargin + Theme.cardPadding

    implicitWidth: view.panelWidth
    implicitHeight: (view.isImage ? picture : text).implicitHeight + 2 * inset

    CardGround {
        anchors.fill: parent
        isComposited: root.isComposited
    }

    CardPicture {
        id: picture
        anchors.fill: parent
        anchors.margins: root.inset
        visible: root.view.isImage
        view: root.view
    }

    CardText {
        id: text
        anchors.fill: parent
        anchors.margins: root.inset
        visible: !root.view.isImage
        view: root.view
        clip: true  // as with the rows
    }
}
