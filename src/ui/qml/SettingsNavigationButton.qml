import QtQuick
import Nettlecap
import Nettlecap.Views as Views

Pressable {
    id: root

    required property Views.SettingsNavigationButton navigation

    readonly property ControlColors colors: Theme.colors.controls

    implicitWidth: Theme.navigationButtonSide
    implicitHeight: Theme.navigationButtonSide

    Accessible.name: navigation.accessibilityLabel
    Accessible.description: navigation.help

    onPressed: navigation.press()

    FocusRing { control: root }

    HelpTip {
        control: root
        isHovered: root.isHovered
        text: root.navigation.help
    }

    Rectangle {
        anchors.fill: parent
        radius: width / 2
        color: root.isHeld ? root.colors.pressed : root.isHovered ? root.colors.hovered : "transparent"
    }

    Symbol {
        anchors.centerIn: parent
        width: 9
        height: 9
        name: root.navigation.symbol
        color: Theme.colors.text
    }
}
