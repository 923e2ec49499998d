pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// One entry: what it is, its text on one line, where it came from and when.
Item {
    id: root

    required property Views.ClipboardEntryRow row

    readonly property bool isSelected: row.isKeyboardSelected
    readonly property bool isActive: Window.active
    readonly property RowColors colors: !isSelected ? Theme.colors.row : isActive ? Theme.colors.selectedRow : Theme.colors.inactiveSelectedRow

    implicitHeight: Theme.tileSide + 2 * Theme.rowPadding

    Accessible.role: Accessible.ListItem
    Accessible.name: row.summary
    Accessible.description: source.text + age.text
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.focusable: true
    Accessible.focused: activeFocus
    Accessible.onPressAction: root.row.handleRowClick(1)

    Rectangle {
        anchors.fill: parent
        radius: Theme.rowRadius
        color: tap.pressed ? root.colors.pressed : hover.hovered ? root.colors.hovered : root.colors.ground
    }

    EntryTile {
        id: tile
        x: Theme.rowPadding
        y: Theme.rowPadding
        symbol: root.row.symbol
        thumbnail: root.row.thumbnail
    }

    Text {
        id: summary
        anchors.left: tile.right
        anchors.leftMargin: Theme.gap
        anchors.right: star.visible ? star.left : parent.right
        anchors.rightMargin: Theme.gap
        anchors.bottom: tile.verticalCenter
        anchors.bottomMargin: 1
        text: root.row.summary
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
        text: root.row.sourceApplication
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
        text: source.divider + root.row.age
        textFormat: Text.PlainText
        font: Theme.caption
        color: root.colors.caption
        Accessible.ignored: true
    }

    Symbol {
        id: star
        anchors.right: parent.right
        anchors.rightMargin: Theme.gap
        anchors.verticalCenter: parent.verticalCenter
        width: 14
        height: 14
        visible: root.row.isFavorite
        name: "star.fill"
        color: root.colors.favorite
    }

    HoverHandler { id: hover }

    TapHandler {
        id: tap
        onSingleTapped: root.row.handleRowClick(1)
        onDoubleTapped: root.row.handleRowClick(2)
    }
}
