pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap.Views as Views

/// The rows of the history.
Item {
    id: root

    required property Views.MenuBarContentView view
    required property bool hasKeyboard
    required property QtObject menuRow  // whose menu is open
    required property bool isCovered  // something lies over the list

    signal menuWanted(QtObject row, var items, point place)
    signal focusGiven

    function openMenu() {
        list.openMenuOf(view.selectedHistoryRow);
    }

    Connections {
        target: root.view
        function onSelectedHistoryEntryChanged() {
            if (root.view.selectedHistoryRow >= 0)
                list.centre(root.view.selectedHistoryRow);
        }
    }

    RowsView {
        id: list
        anchors.fill: parent
        model: root.view.historyRows

        Accessible.name: "Histórico"

        delegate: ClipboardEntryRow {
            required property int index

            x: Theme.listPadding
            width: ListView.view.width - 2 * Theme.listPadding
            hasKeyboard: root.hasKeyboard
            hasMenu: row !== null && row === root.menuRow
            isCovered: root.isCovered
            onMenuWanted: place => root.menuWanted(row, row.menuItems, place)
            onFocusGiven: {
                root.view.selectRow(index);
                root.focusGiven();
            }
        }
    }

    ListScrollBar {
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        list: list
    }
}
