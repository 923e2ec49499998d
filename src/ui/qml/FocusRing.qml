import QtQuick

/// Around the control that has the keyboard.
Rectangle {
    required property Item control

    anchors.fill: control
    anchors.margins: -3
    visible: control.activeFocus && Window.active
    color: "transparent"
    radius: Theme.controlRadius + 3
    border.width: 2
    border.color: Theme.colors.controls.focusRing
}
