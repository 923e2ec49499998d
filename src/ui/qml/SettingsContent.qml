pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// What the panel shows of the settings: the form, and above it the way back.
FocusScope {
    id: root

    required property Views.SettingsView view
    required property Views.SettingsNavigationButton navigation

    implicitWidth: 430
    implicitHeight: 560
    focus: true

    Accessible.role: Accessible.Pane  // what has the focus while no control has it yet
    Accessible.name: title.text

    PanelGround {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        anchors.bottom: form.top
    }

    SettingsNavigationButton {
        id: button
        x: Theme.formMargin
        y: Theme.formMargin / 2
        navigation: root.navigation
    }

    Text {
        id: title
        anchors.left: button.right
        anchors.leftMargin: Theme.gap
        anchors.verticalCenter: button.verticalCenter
        text: "Ajustes"
        textFormat: Text.PlainText
        font: Theme.title
        color: Theme.colors.text
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    SettingsView {
        id: form
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: button.bottom
        anchors.bottom: parent.bottom
        anchors.topMargin: Theme.formMargin / 2
        focus: true
        view: root.view
        above: y
    }
}
