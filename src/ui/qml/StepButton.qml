import QtQuick
import Nettlecap

/// One half of a stepper. The stepper speaks for it to assistive technology.
Rectangle {
    id: root

    required property string symbol

    signal pressed

    implicitWidth: 22
    implicitHeight: 12
    opacity: enabled ? 1 : 0.4
    color: mouse.pressed ? Theme.colors.controls.pressed : mouse.containsMouse ? Theme.colors.controls.hovered : "transparent"

    Symbol {
        anchors.centerIn: parent
        width: 9
        height: 9
        name: root.symbol
        color: Theme.colors.controls.text
    }

    // Held down, it goes on.
    Timer {
        interval: 100
        repeat: true
        running: mouse.isHeld && root.enabled
        onTriggered: root.pressed()
    }

    MouseArea {
        id: mouse

        property bool isHeld: false

        anchors.fill: parent
        hoverEnabled: true
        onPressed: root.pressed()
        onPressAndHold: isHeld = true
        onReleased: isHeld = false
        onCanceled: isHeld = false
    }
}
