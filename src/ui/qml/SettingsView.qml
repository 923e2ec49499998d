pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// The settings form.
FocusScope {
    id: root

    required property Views.SettingsView view
    property real above: 0  // of what stands over the form; an alert covers that, too

    readonly property bool isActive: Window.active
    readonly property Item focusedItem: Window.activeFocusItem

    implicitWidth: 430
    implicitHeight: 560
    focus: true
    onIsActiveChanged: if (isActive) view.refreshPermission()
    onFocusedItemChanged: if (focusedItem) scroll.reveal(focusedItem)

    Rectangle {
        anchors.fill: parent
        color: Theme.colors.background
    }

    Flickable {
        id: scroll

        function reveal(item: Item) {
            let ancestor = item;
            while (ancestor && ancestor !== sections)
                ancestor = ancestor.parent;
            if (!ancestor)
                return;
            const top = item.mapToItem(sections, 0, 0).y;
            contentY = Math.max(top + item.height + 2 * Theme.formMargin - height, Math.min(contentY, top - Theme.formMargin));
        }

        // Comes to what is no control, which the Tab key passes by.
        function turn(pages: int) {
            contentY = Math.max(0, Math.min(contentY + pages * (height - 2 * Theme.formMargin), contentHeight - height));
        }

        Keys.onPressed: event => {
            const pages = event.key === Qt.Key_PageDown ? 1 : event.key === Qt.Key_PageUp ? -1 : 0;
            turn(pages);
            event.accepted = pages !== 0;
        }

        anchors.fill: parent
        contentHeight: sections.height + 2 * Theme.formMargin
        boundsBehavior: Flickable.StopAtBounds
        clip: true

        Column {
            id: sections
            x: Theme.formMargin
            y: Theme.formMargin
            width: scroll.width - 2 * Theme.formMargin
            spacing: 18

            SettingsSection {
                width: parent.width
                title: "Atualizações"

                PushButton {
                    text: "Buscar atualizações…"
                    symbol: "arrow.triangle.2.circlepath"
                    onPressed: root.view.checkForUpdates()
                }
            }
            ShortcutSettings {
                width: parent.width
                view: root.view
                onKeysWanted: (picker, editor) => menu.open(picker, editor)
            }
            BehaviorSettings {
                width: parent.width
                view: root.view
            }
            StorageSettings {
                width: parent.width
                view: root.view
            }
            PrivacySettings {
                width: parent.width
                view: root.view
            }
        }
    }

    ListScrollBar {
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: parent.bottom
        list: scroll
    }

    KeyMenu {
        id: menu
        anchors.fill: parent
    }

    ConfirmationAlert {
        anchors.fill: parent
        anchors.topMargin: -root.above
        visible: root.view.showPurgeConfirmation
        title: "Limpar o histórico?"
        message: "Os itens não favoritados e seus arquivos serão excluídos permanentemente do aplicativo Nettlecap. Favoritos e mensagens da guia Salvos serão preservados. O histórico do Spotlight é controlado pelo macOS; o Nettlecap não tem acesso para excluí-lo ou modificá-lo."
        confirmText: "Limpar"
        onConfirmed: root.view.purgeHistory()
        onCancelled: root.view.showPurgeConfirmation = false
    }
}
