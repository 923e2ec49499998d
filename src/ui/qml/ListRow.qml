import QtQuick

/// What the rows of both lists have in common: their ground, and what the pointer, the
/// keyboard and assistive technology do with them.
Item {
    id: root

    required property bool isSelected

    readonly property bool isActive: Window.active
    readonly property bool isHovered: hover.hovered
    readonly property RowColors colors: !isSelected ? Theme.colors.row : isActive ? Theme.colors.selectedRow : Theme.colors.inactiveSelectedRow

    signal pressed(int clickCount)
    signal pointerCame(point place)
    signal pointerLeft
    signal focusGiven
    signal menuWanted(point place)

    function openMenu() {
        menuWanted(mapToItem(null, Theme.rowPadding + Theme.tileSide, height / 2));
    }

    implicitHeight: Theme.tileSide + 2 * Theme.rowPadding
    onActiveFocusChanged: if (activeFocus) focusGiven()

    Accessible.role: Accessible.ListItem
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.focusable: true
    Accessible.onPressAction: root.pressed(1)
    Accessible.onToggleAction: root.openMenu()  // Qt has no way to say "show menu"

    Rectangle {
        anchors.fill: parent
        radius: Theme.rowRadius
        color: tap.pressed ? root.colors.pressed : hover.hovered ? root.colors.hovered : root.colors.ground
    }

    HoverHandler {
        id: hover
        onHoveredChanged: hovered ? root.pointerCame(point.scenePosition) : root.pointerLeft()
        onPointChanged: if (hovered) root.pointerCame(point.scenePosition)
    }

    TapHandler {
        id: tap
        onSingleTapped: root.pressed(1)
        onDoubleTapped: root.pressed(2)
    }

    TapHandler {
        acceptedButtons: Qt.RightButton
        onPressedChanged: if (pressed) root.menuWanted(point.scenePosition)
    }
}
