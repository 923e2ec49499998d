pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap.Views as Views

/// What the history takes up, its limit, and how to clear it.
SettingsSection {
    id: root

    required property Views.SettingsView view

    title: "Armazenamento"

    SettingsFigure {
        text: "Espaço utilizado"
        figure: root.view.usedSpace
    }
    SettingsDivider {}
    SettingsFigure {
        text: "Histórico armazenado"
        figure: root.view.storageSummary
    }
    SettingsDivider {}
    Stepper {
        text: root.view.limitLabel
        shown: root.view.maxHistoryItems
        minimumValue: 50
        maximumValue: 5000
        stepSize: 50
        onStepped: steps => root.view.stepMaxHistoryItems(steps)
        onChosen: number => root.view.maxHistoryItems = number
    }
    SettingsNote { text: "Itens favoritados e mensagens da guia Salvos não são removidos pelo limite do histórico." }
    SettingsDivider {}
    PushButton {
        text: "Limpar histórico…"
        isDestructive: true
        onPressed: root.view.showPurgeConfirmation = true
    }
    SettingsNote { text: "Remove permanentemente do Nettlecap os textos e imagens não favoritados. O histórico do Spotlight é controlado pelo macOS; o Nettlecap não tem acesso para excluí-lo ou modificá-lo." }
}
