pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap.Views as Views

/// Whether sensitive texts are masked.
SettingsSection {
    id: root

    required property Views.SettingsView view

    title: "Privacidade"

    SettingsNote { text: "O histórico fica somente neste Mac. Conteúdos marcados por outros aplicativos como temporários ou confidenciais são ignorados." }
    SettingsDivider {}
    SettingsSwitch {
        text: "Ocultar cartões, senhas e tokens"
        isOn: root.view.protectSensitiveContent
        onPressed: root.view.protectSensitiveContent = !isOn
    }
    SettingsNote {
        visible: root.view.protectSensitiveContent
        text: "Conteúdos provavelmente sensíveis ficam mascarados na lista, na busca, no preview e durante a navegação. Eles só são revelados ao copiar ou colar."
    }
    SettingsNote {
        visible: root.view.protectSensitiveContent
        text: "Caminhos, nomes de usuário, repositórios e URLs não são tratados como senhas."
    }
    SettingsNote {
        visible: !root.view.protectSensitiveContent
        symbol: "exclamationmark.triangle.fill"
        symbolColor: Theme.colors.controls.caution
        color: Theme.colors.text
        text: "Proteção desativada: conteúdos sensíveis ficarão visíveis no Nettlecap."
    }
}
