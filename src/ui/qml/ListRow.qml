import QtQuick
import Nettlecap

/// What the rows of both lists have in common: their ground, and what the pointer, the
/// keyboard and assistive technology do with them.
Item {
    id: root

    required property bool isSelected
    required property bool hasKeyboard  // the list is walked through with it
    required property bool hasMenu
    required property bool isCovered

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
    clip: true  // marks that pile up on a letter stay in their row
    onActiveFocusChanged: if (activeFocus) focusGiven()

    Accessible.role: Accessible.ListItem
    Accessible.selectable: true
    Accessible.selected: isSelected
    Accessible.focusable: true
    Accessible.focused: isSelected && hasKeyboard
    Accessible.onPressAction: root.pressed(1)
    Accessible.onToggleAction: root.openMenu()  // Qt has no way to say "show menu"

    ReadOut {
        item: root
        isWanted: root.isSelected && root.hasKeyboard
    }

    Rectangle {
        anchors.fill: parent
        radius: Theme.rowRadius
        color: tap.pressed ? root.colors.pressed : hover.hovered || root.hasMenu ? root.colors.hovered : root.colors.ground
        border.width: root.hasMenu ? 2 : 0
        border.color: Theme.colors.controls.focusRing
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
