pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap.Views as Views

/// The rows of the history.
Item {
    id: root

    required property Views.MenuBarContentView view

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
