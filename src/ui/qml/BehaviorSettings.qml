pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap.Views as Views

/// What is kept, what a click does, and the start with the session.
SettingsSection {
    id: root

    required property Views.SettingsView view

    title: "Comportamento"

    SettingsSwitch {
        text: "Guardar imagens"
        isOn: root.view.captureImages
        onPressed: root.view.captureImages = !isOn
    }
    SettingsDivider {}
    SettingsSwitch {
        text: "Iniciar automaticamente com o Mac"
        isOn: root.view.launchAtLogin
        onPressed: root.view.launchAtLogin = !isOn
    }
    SettingsNote {
        visible: root.view.launchAtLoginRequiresApproval
        symbol: "exclamationmark.triangle.fill"
        symbolColor: Theme.colors.controls.caution
        color: Theme.colors.text
        text: "O macOS aguarda sua autorização nos Itens de Início."
    }
    PushButton {
        visible: root.view.launchAtLoginRequiresApproval
        text: "Abrir Itens de Início"
        onPressed: root.view.openLoginItems()
    }
    SettingsDivider {}
    SettingsSwitch {
        text: "Colar automaticamente ao clicar em um item"
        isOn: root.view.autoPaste
        onPressed: root.view.autoPaste = !isOn
    }
    SettingsDivider {}
    SettingsSwitch {
        enabled: root.view.autoPaste
        text: "Usar dois cliques para colar no histórico"
        isOn: root.view.pasteHistoryOnDoubleClick
        Accessible.description: twoClicksNote.text
        onPressed: root.view.pasteHistoryOnDoubleClick = !isOn
    }
    SettingsNote {
        id: twoClicksNote
        text: root.view.autoPaste ? "Ativado: um clique seleciona e copia; dois cliques colam. Desativado: um clique cola." : "Ative a colagem automática para escolher entre um ou dois cliques."
    }
    SettingsDivider {}
    SettingsNote { text: "Ao navegar com os atalhos, o item é colado quando você solta as teclas." }
    SettingsNote {
        symbol: root.view.canPaste ? "checkmark.circle.fill" : "exclamationmark.triangle.fill"
        symbolColor: root.view.canPaste ? Theme.colors.controls.success : Theme.colors.controls.caution
        color: Theme.colors.text
        text: root.view.canPaste ? "Permissão de Acessibilidade concedida" : "A colagem automática pedirá permissão de Acessibilidade"
    }
}
