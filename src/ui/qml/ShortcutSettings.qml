pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap.Views as Views

/// The global shortcuts.
SettingsSection {
    id: root

    required property Views.SettingsView view

    signal keysWanted(Item picker, Views.ShortcutEditor editor)

    title: "Atalhos globais"

    // Over the column of the pickers, whose name it is.
    Text {
        x: editors.count > 0 ? (editors.itemAt(0) as ShortcutEditor).keyColumn : 0
        text: "Tecla"
        textFormat: Text.PlainText
        font: Theme.caption
        color: Theme.colors.secondaryText
        Accessible.ignored: true
    }
    Repeater {
        id: editors
        model: root.view.shortcuts

        ShortcutEditor {
            required property Views.ShortcutEditor modelData

            width: parent ? parent.width : 0
            editor: modelData
            onKeysWanted: picker => root.keysWanted(picker, editor)
        }
    }
    SettingsDivider {}
    PushButton {
        text: "Restaurar atalhos padrão"
        onPressed: root.view.restoreDefaultShortcuts()
    }
    SettingsNote { text: "As alterações são aplicadas imediatamente." }
    SettingsNote { text: "Padrões: ⌘1 para voltar, ⌘2 para avançar, ⌘⇧V para pesquisar e ⌥F para favoritar ou desfavoritar a seleção." }
}
