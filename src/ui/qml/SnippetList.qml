pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap.Views as Views

/// The rows of the saved messages.
Item {
    id: root

    required property Views.MenuBarContentView view

    readonly property int selectedRow: view.selectedSnippetRow

    signal menuWanted(QtObject row, var items, point place)
    signal focusGiven

    function openMenu() {
        list.openMenuOf(selectedRow);
    }

    onSelectedRowChanged: if (selectedRow >= 0) list.centre(selectedRow)

    RowsView {
        id: list
        anchors.fill: parent
        model: root.view.snippetRows

        Accessible.name: "Salvos"

        delegate: SnippetRow {
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
