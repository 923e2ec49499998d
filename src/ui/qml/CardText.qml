pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// A text with its symbol, and below it its place in the list. Where the card may not grow
/// as high as its lines need, there are fewer of them.
Item {
    id: root

    required property Views.NavigationHUDView view

    readonly property real mostTextHeight: Theme.cardTextHeight - caption.implicitHeight - Theme.cardTextSpacing

    implicitHeight: Math.max(tile.height, shown.height + Theme.cardTextSpacing + caption.implicitHeight)

    CardTile {
        id: tile
        width: root.view.usesExpandedLayout ? Theme.cardExpandedTileSide : Theme.cardTileSide
        height: width
        symbol: root.view.isMasked ? "lock.fill" : "doc.text"
        color: root.view.isMasked ? Theme.colors.card.sensitive : Theme.colors.card.accent
    }

    FontMetrics {
        id: metrics
        font: shown.font
    }

    Text {
        id: shown
        anchors.left: tile.right
        anchors.leftMargin: Theme.cardGap
        anchors.right: parent.right
        height: Math.min(implicitHeight, root.mostTextHeight)
        text: root.view.text
        textFormat: Text.PlainText
        horizontalAlignment: Text.AlignLeft
        wrapMode: Text.Wrap
        elide: Text.ElideRight
        maximumLineCount: root.view.visibleLineLimit
        lineHeight: root.view.usesExpandedLayout ? 1 + Theme.cardLineSpacing / metrics.lineSpacing : 1
        font: root.view.usesExpandedLayout ? Theme.body : Theme.headline
        color: Theme.colors.text
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    CardCaption {
        id: caption
        anchors.left: shown.left
        anchors.right: parent.right
        anchors.top: shown.bottom
        anchors.topMargin: Theme.cardTextSpacing
        text: root.view.caption
    }
}
