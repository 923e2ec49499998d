pragma ComponentBehavior: Bound
import QtQuick

/// The card's rounded ground within its transparent margin. Where nothing is translucent the
/// window is cut along a line around the ground, so that the card has an edge on white too.
Item {
    id: root

    required property bool isComposited
    property real radius: Theme.cardRadius

    Rectangle {
        anchors.fill: parent
        visible: !root.isComposited
        color: Theme.colors.card.rim
    }

    Repeater {
        model: root.isComposited ? Theme.cardMargin : 0

        Rectangle {
            id: ring

            required property int index

            anchors.fill: parent
            anchors.margins: ring.index
            radius: root.radius + Theme.cardMargin - ring.index
            color: "transparent"
            border.width: 1
            border.color: Theme.colors.card.shadow
            opacity: Theme.cardShadow[ring.index]
        }
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: Theme.cardMargin
        radius: root.radius
        color: Theme.colors.card.ground
    }

    Rectangle {
        anchors.fill: parent
        anchors.margins: Theme.cardMargin
        radius: root.radius
        color: "transparent"
        border.width: 1
        border.color: Theme.colors.card.outline
    }
}
