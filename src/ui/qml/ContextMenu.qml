pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap

/// The context menu of a row, over everything else. It closes with its row.
FocusScope {
    id: root

    property QtObject row: null
    property var items: []
    property int current: -1
    readonly property bool isOpen: row !== null
    readonly property ControlColors colors: Theme.colors.controls

    signal closed

    visible: isOpen
    onIsOpenChanged: if (!isOpen) leave()
    onCurrentChanged: lineItems.itemAt(current)?.forceActiveFocus()

    Accessible.role: Accessible.PopupMenu

    function open(row: QtObject, items: var, place: point) {
        pointer.remember(root);
        root.items = items;
        current = -1;
        root.row = row;
        lines.forceLayout();  // its height is needed now
        const corner = mapFromItem(null, place.x, place.y);
        frame.x = Math.max(4, Math.min(corner.x, width - frame.width - 4));
        frame.y = corner.y + frame.height <= height - 4 ? corner.y : Math.max(4, corner.y - frame.height);
        forceActiveFocus();
    }
    function leave() {
        items = [];
        closed();
    }
    function choose(index: int) {
        const chosenFor = row;
        row = null;
        perform(chosenFor, index);
    }
    function perform(chosenFor, index: int) {
        if (index >= 0)
            chosenFor.performMenuItem(index);
    }
    function step(offset: int) {
        let next = current < 0 && offset < 0 ? items.length - 1 : current + offset;
        while (next >= 0 && next < items.length && items[next].isDivider)
            next += offset;
        if (next >= 0 && next < items.length)
            current = next;
    }

    RestingPointer { id: pointer }

    Keys.onDownPressed: root.step(1)
    Keys.onUpPressed: root.step(-1)
    Keys.onReturnPressed: root.choose(root.current)
    Keys.onEnterPressed: root.choose(root.current)
    Keys.onSpacePressed: root.choose(root.current)
    Keys.onEscapePressed: root.row = null
    Keys.onTabPressed: root.row = null
    Keys.onBacktabPressed: root.row = null

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onPressed: root.row = null
        onWheel: wheel => wheel.accepted = true
    }

    Rectangle {
        id: frame
        width: Math.max(180, lines.implicitWidth + 8)
        height: lines.implicitHeight + 8
        radius: Theme.controlRadius + 2
        color: root.colors.sheet
        border.width: 1
        border.color: root.colors.border

        Column {
            id: lines
            x: 4
            y: 4
            width: parent.width - 8

            Repeater {
                id: lineItems
                model: root.items

                ContextMenuLine {
                    width: parent.width
                    isCurrent: index === root.current
                    onActiveFocusChanged: if (activeFocus) root.current = index
                    onPointerMoved: place => {
                        if (pointer.hasMovedTo(place))
                            root.current = index;
                    }
                    onPressed: root.choose(index)
                }
            }
        }
    }
}
