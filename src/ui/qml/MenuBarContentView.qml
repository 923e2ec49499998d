pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// The main view. The search field has the keyboard, and gets it back from whatever opens
/// over the list.
FocusScope {
    id: root

    required property Views.MenuBarContentView view
    /// Of a window that has no frame of its own.
    property real cornerRadius: 0

    readonly property bool isInWindow: Window.window !== null && Window.window.visible
    readonly property bool isCovered: menu.isOpen || view.snippetEditor !== null || view.historyDeletion.isShown || view.historyClearing.isShown

    function focusSearchField() {
        header.forceActiveFocus();
    }

    implicitWidth: 430
    implicitHeight: 560
    focus: true
    onIsInWindowChanged: {
        view.setShown(isInWindow);
        menu.row = null;
        if (!isInWindow)
            return;
        view.pointerRestsAt(Pointer.positionIn(root));
        if (!isCovered)
            focusSearchField();
    }

    HoverHandler { onHoveredChanged: if (!hovered) root.view.pointerLeft() }

    PanelGround {
        anchors.fill: parent
        radius: root.cornerRadius
        movesWindow: root.cornerRadius === 0  // what hangs from the status item stays there
    }

    PanelHeader {
        id: header
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        focus: true
        view: root.view
        onMenuKeyPressed: root.view.isHistory ? history.openMenu() : snippets.openMenu()
    }

    Item {
        id: middle
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: header.bottom
        anchors.bottom: messages.top

        HistoryList {
            id: history
            anchors.fill: parent
            visible: root.view.isHistory && !root.view.emptyState.isShown
            view: root.view
            hasKeyboard: header.isSearching
            menuRow: menu.row
            isCovered: root.isCovered
            onMenuWanted: (row, items, place) => menu.open(row, items, place)
            onFocusGiven: root.focusSearchField()
        }
        SnippetList {
            id: snippets
            anchors.fill: parent
            visible: !root.view.isHistory && !root.view.emptyState.isShown
            view: root.view
            hasKeyboard: header.isSearching
            menuRow: menu.row
            isCovered: root.isCovered
            onMenuWanted: (row, items, place) => menu.open(row, items, place)
            onFocusGiven: root.focusSearchField()
        }
        EmptyState {
            anchors.fill: parent
            visible: root.view.emptyState.isShown
            symbol: root.view.emptyState.symbol
            title: root.view.emptyState.title
            message: root.view.emptyState.text
            button: root.view.emptyState.button
            onPressed: root.view.createSnippet()
        }
    }

    Column {
        id: messages
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: footer.top

        MessageLine {
            width: parent.width
            message: root.view.statusMessage
            color: Theme.colors.text
        }
        MessageLine {
            width: parent.width
            message: root.view.persistenceError
            color: Theme.colors.warning
        }
    }

    PanelFooter {
        id: footer
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        view: root.view
    }

    ContextMenu {
        id: menu
        anchors.fill: parent
        onClosed: root.focusSearchField()
    }

    EditorSheet {
        id: editor
        anchors.fill: parent
        cornerRadius: root.cornerRadius
        editor: root.view.snippetEditor
        onClosed: root.focusSearchField()
    }

    ConfirmationAlert {
        id: deletion
        anchors.fill: parent
        visible: root.view.historyDeletion.isShown
        title: root.view.historyDeletion.title
        message: root.view.historyDeletion.message
        confirmText: root.view.historyDeletion.destructiveLabel
        onConfirmed: root.view.confirmPendingHistoryDeletion()
        onCancelled: root.view.cancelPendingHistoryDeletion()
    }

    ConfirmationAlert {
        id: clearing
        anchors.fill: parent
        visible: root.view.historyClearing.isShown
        title: root.view.historyClearing.title
        message: root.view.historyClearing.message
        confirmText: root.view.historyClearing.destructiveLabel
        onConfirmed: root.view.confirmHistoryClearing()
        onCancelled: root.view.cancelHistoryClearing()
    }

    Rectangle {
        anchors.fill: parent
        visible: root.cornerRadius > 0
        radius: root.cornerRadius
        color: "transparent"
        border.width: 1
        border.color: Theme.colors.card.rim
    }
}
