import QtQuick

/// A setting that is on or off: its label, the state in a word, and the switch.
Pressable {
    id: root

    required property string text
    required property bool isOn

    readonly property ControlColors colors: Theme.colors.controls

    width: parent ? parent.width : 0
    implicitHeight: Math.max(label.implicitHeight, capsule.height)

    Accessible.role: Accessible.CheckBox
    Accessible.name: text
    Accessible.checkable: true
    Accessible.checked: isOn

    Text {
        id: label
        anchors.left: parent.left
        anchors.right: capsule.left
        anchors.rightMargin: widest.width + 2 * Theme.gap
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        font: Theme.body
        color: root.colors.text
        Accessible.ignored: true
    }

    TextMetrics {
        id: widest
        font: state.font
        text: "Desativado"
    }

    Text {
        id: state
        anchors.right: capsule.left
        anchors.rightMargin: Theme.gap
        anchors.verticalCenter: parent.verticalCenter
        text: root.isOn ? "Ativado" : "Desativado"
        textFormat: Text.PlainText
        font: Theme.caption
        color: Theme.colors.secondaryText
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }

    FocusRing {
        control: capsule
        visible: root.activeFocus && Window.active
        radius: capsule.radius + 3
    }

    Rectangle {
        id: capsule
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: 38
        height: 22
        radius: 11
        color: root.isOn ? (root.isHeld ? root.colors.accentPressed : root.colors.accent) : root.isHeld ? root.colors.pressed : root.colors.switchOff
        border.width: 1
        border.color: root.isOn ? root.colors.accentPressed : root.colors.switchBorder

        Rectangle {
            x: root.isOn ? parent.width - width - 2 : 2
            y: 2
            width: 18
            height: 18
            radius: 9
            color: root.colors.knob
            border.width: root.isOn ? 0 : 1
            border.color: root.colors.switchBorder

            Behavior on x {
                NumberAnimation { duration: Theme.scrollDuration }
            }
        }
    }
}
