import QtQuick

/// A number that goes up and down in steps, with its label. It asks for a change and shows
/// the number that it is then given.
Item {
    id: root

    required property string text
    required property real shown
    required property real minimumValue
    required property real maximumValue
    required property real stepSize

    // By this name assistive technology reads and writes it.
    property real value

    readonly property ControlColors colors: Theme.colors.controls

    signal stepped(int steps)
    signal chosen(real number)

    width: parent ? parent.width : 0
    implicitHeight: Math.max(label.implicitHeight, frame.height)
    activeFocusOnTab: true
    onValueChanged: if (value !== shown) {
        chosen(value);
        value = shown;
    }

    Accessible.role: Accessible.SpinBox
    Accessible.name: text
    Accessible.focusable: true
    Accessible.onIncreaseAction: root.stepped(1)
    Accessible.onDecreaseAction: root.stepped(-1)

    Keys.onUpPressed: root.stepped(1)
    Keys.onDownPressed: root.stepped(-1)

    Binding {
        target: root
        property: "value"
        value: root.shown
        restoreMode: Binding.RestoreNone
    }

    Text {
        id: label
        anchors.left: parent.left
        anchors.right: frame.left
        anchors.rightMargin: Theme.gap
        anchors.verticalCenter: parent.verticalCenter
        text: root.text
        textFormat: Text.PlainText
        wrapMode: Text.Wrap
        font: Theme.body
        color: root.colors.text
        Accessible.ignored: true
    }

    FocusRing {
        control: frame
        visible: root.activeFocus && Window.active
    }

    Rectangle {
        id: frame
        anchors.right: parent.right
        anchors.verticalCenter: parent.verticalCenter
        width: up.width + 2
        height: up.height + down.height + 3
        radius: Theme.controlRadius
        color: root.colors.ground
        border.width: 1
        border.color: root.colors.border

        StepButton {
            id: up
            x: 1
            y: 1
            radius: Theme.controlRadius - 1
            symbol: "chevron.up"
            enabled: root.shown < root.maximumValue
            onPressed: root.stepped(1)
        }
        Rectangle {
            x: 4
            anchors.verticalCenter: parent.verticalCenter
            width: parent.width - 8
            height: 1
            color: root.colors.groupBorder
        }
        StepButton {
            id: down
            x: 1
            anchors.bottom: parent.bottom
            anchors.bottomMargin: 1
            radius: Theme.controlRadius - 1
            symbol: "chevron.down"
            enabled: root.shown > root.minimumValue
            onPressed: root.stepped(-1)
        }
    }
}
