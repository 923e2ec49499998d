pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap.Views as Views

/// The rows of the history. Arrows move the selection, Return hands it over.
FocusScope {
    id: root

    required property Views.MenuBarContentView view

    Keys.onUpPressed: event => event.accepted = root.view.moveCurrentSelection(-1)
    Keys.onDownPressed: event => event.accepted = root.view.moveCurrentSelection(1)
    Keys.onReturnPressed: event => event.accepted = root.view.pasteSelectedItem()
    Keys.onEnterPressed: event => event.accepted = root.view.pasteSelectedItem()

    ListView {
        id: list
        anchors.fill: parent
        clip: true
        focus: true
        keyNavigationEnabled: false
        boundsBehavior: Flickable.StopAtBounds
        topMargin: Theme.listPadding
        bottomMargin: Theme.listPadding
        spacing: Theme.rowSpacing
        model: root.view.historyRows
        currentIndex: root.view.selectedHistoryRow
        preferredHighlightBegin: (height - Theme.tileSide) / 2 - Theme.rowPadding
        preferredHighlightEnd: preferredHighlightBegin + Theme.tileSide + 2 * Theme.rowPadding
        highlightRangeMode: ListView.ApplyRange
        highlightMoveDuration: Theme.scrollDuration
        highlightMoveVelocity: -1

        delegate: ClipboardEntryRow {
            x: Theme.listPadding
            width: ListView.view.width - 2 * Theme.listPadding
        }

        Accessible.role: Accessible.List
        Accessible.name: "Histórico"
    }

    ListScrollBar {
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        list: list
    }
}
