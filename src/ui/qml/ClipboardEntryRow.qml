pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// One entry: what it is, its text on one line, where it came from and when.
ListRow {
    id: root

    required property Views.ClipboardEntryRow row  // goes a little sooner than what shows it

    readonly property bool isFavorite: row?.isFavorite ?? false

    isSelected: row?.isKeyboardSelected ?? false
    onPressed: clickCount => root.row.handleRowClick(clickCount)
    onPointerCame: place => root.row?.pointerAt(place)
    onPointerLeft: root.row?.pointerLeft()
    onVisibleChanged: if (!visible) root.row?.disappear()
    Component.onDestruction: root.row?.disappear()

    Accessible.name: row?.summary ?? ""
    Accessible.description: source.text + age.text

    EntryTile {
        id: tile
        x: Theme.rowPadding
        y: Theme.rowPadding
        symbol: root.row?.symbol ?? ""
        thumbnail: root.row?.thumbnail ?? ""
    }

    Text {
        id: summary
        anchors.left: tile.right
        anchors.leftMargin: Theme.gap
        anchors.right: star.left
        anchors.rightMargin: 4
        anchors.bottom: tile.verticalCenter
        anchors.bottomMargin: 1
        text: root.row?.summary ?? ""
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        font: Theme.body
        color: root.colors.text
        Accessible.ignored: true
    }

    Text {
        id: source
        readonly property string divider: text ? " · " : ""
        anchors.left: summary.left
        anchors.top: tile.verticalCenter
        anchors.topMargin: 2
        width: Math.min(implicitWidth, summary.width - age.implicitWidth)
        horizontalAlignment: Text.AlignLeft
        text: root.row?.sourceApplication ?? ""
        textFormat: Text.PlainText
        elide: Text.ElideRight
        maximumLineCount: 1
        font: Theme.caption
        color: root.colors.caption
        Accessible.ignored: true
    }

    Text {
        id: age
        x: source.x + source.contentWidth
        anchors.baseline: source.baseline
        text: source.divider + (root.row?.age ?? "")
        textFormat: Text.PlainText
        font: Theme.caption
        color: root.colors.caption
        Accessible.ignored: true
    }

    FlatButton {
        id: star
        anchors.right: parent.right
        anchors.rightMargin: 4
        anchors.verticalCenter: parent.verticalCenter
        activeFocusOnTab: false
        symbol: root.row?.favoriteSymbol ?? ""
        symbolInk: root.isFavorite ? root.colors.favorite : root.colors.caption
        wash: root.colors.pressed
        help: root.row?.favoriteLabel ?? ""
        onPressed: root.row.toggleFavorite()
    }

    PreviewHost {
        anchor: root
        preview: root.row?.preview ?? null
        isCovered: root.isCovered
        row: root.row
    }
}
