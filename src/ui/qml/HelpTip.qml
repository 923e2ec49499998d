import QtQuick

/// The help text of a control, beside it while the pointer rests on it.
Rectangle {
    id: root

    required property Item control
    required property bool isHovered
    required property string text

    readonly property Item window: control.Window.contentItem
    property bool isShown: false

    function show() {
        const below = control.mapToItem(window, 0, control.height + 6);
        const above = control.mapToItem(window, 0, -6 - height);
        x = Math.max(4, Math.min(below.x, window.width - width - 4));
        y = below.y + height <= window.height - 4 ? below.y : above.y;
        isShown = true;
    }

    parent: isShown ? window : control  // above all the rest
    z: 1
    width: label.implicitWidth + 16
    height: label.implicitHeight + 8
    visible: isShown
    radius: Theme.controlRadius
    color: Theme.colors.controls.sheet
    border.width: 1
    border.color: Theme.colors.controls.border
    onIsHoveredChanged: isShown = false

    Accessible.role: Accessible.ToolTip
    Accessible.name: text

    Timer {
        interval: Theme.helpDelay
        running: root.isHovered && root.text !== "" && root.window !== null
        onTriggered: root.show()
    }

    Text {
        id: label
        anchors.centerIn: parent
        text: root.text
        textFormat: Text.PlainText
        font: Theme.caption
        color: Theme.colors.controls.text
        Accessible.ignored: true
    }
}
