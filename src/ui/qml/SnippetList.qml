pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap.Views as Views

/// The rows of the saved messages.
Item {
    id: root

    required property Views.MenuBarContentView view
    required property bool hasKeyboard
    required property QtObject menuRow  // whose menu is open
    required property bool isCovered  // something lies over the list

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
