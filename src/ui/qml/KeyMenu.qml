pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// The list of keys, over everything else, beside the picker that asked for it. Typing a
/// key's label goes to its row.
FocusScope {
    id: root

    property Views.ShortcutEditor editor: null
    property Item picker: null

    readonly property ControlColors colors: Theme.colors.controls

    visible: editor !== null

    function open(picker: Item, editor: Views.ShortcutEditor) {
        pointer.remember(root);
        root.picker = picker;
        root.editor = editor;
        list.currentIndex = editor.chosenKey;
        list.positionViewAtIndex(Math.max(0, list.currentIndex), ListView.Center);
        list.forceActiveFocus();
        // The chosen row lies on the picker, label on label.
        const place = picker.mapToItem(root, 0, 0);
        const row = Math.max(0, list.currentIndex) * Theme.controlHeight - list.contentY;
        frame.x = place.x - 20;
        frame.y = Math.max(8, Math.min(place.y - 4 - row, height - frame.height - 8));
    }
    function choose(row: int) {
        const chosenFor = editor;
        close();
        chosenFor.chooseKey(row);
    }
    function close() {
        editor = null;
        picker.forceActiveFocus();
    }

    RestingPointer { id: pointer }

    Keys.onEscapePressed: root.close()
    Keys.onTabPressed: root.close()
    Keys.onBacktabPressed: root.close()
    Keys.onReturnPressed: root.choose(list.currentIndex)
    Keys.onEnterPressed: root.choose(list.currentIndex)
    Keys.onSpacePressed: root.choose(list.currentIndex)
    Keys.onPressed: event => {
        const row = root.editor.keyLabelled(event.text);
        if (row >= 0)
            list.currentIndex = row;
        event.accepted = row >= 0;
    }

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onPressed: root.close()
        onWheel: wheel => wheel.accepted = true
    }

    Rectangle {
        id: frame
        width: 98
        height: 9 * Theme.controlHeight + 8
        radius: Theme.controlRadius + 2
        color: root.colors.sheet
        border.width: 1
        border.color: root.colors.border

        ListView {
            id: list
            anchors.fill: parent
            anchors.margins: 4
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            keyNavigationEnabled: true
            highlightMoveDuration: 0
            // All rows are there for assistive technology, not only those in sight.
            cacheBuffer: 2000
            model: root.editor ? root.editor.keyLabels : []

            Accessible.role: Accessible.List
            Accessible.name: "Tecla"

            delegate: KeyMenuRow {
                width: ListView.view.width
                isChosen: root.editor !== null && index === root.editor.chosenKey
                isCurrent: ListView.isCurrentItem
                onPointerMoved: place => {
                    if (pointer.hasMovedTo(place))
                        list.currentIndex = index;
                }
                onPressed: root.choose(index)
            }
        }

        ListScrollBar {
            anchors.right: parent.right
            anchors.top: parent.top
            anchors.bottom: parent.bottom
            anchors.topMargin: 4
            anchors.bottomMargin: 4
            list: list
        }
    }
}
