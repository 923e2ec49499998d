import QtQuick

/// A thin scroll bar over the list's edge; nothing while everything fits. Of our own, since
/// the one of Qt's controls would bring their whole library into memory.
Item {
    id: root

    required property Flickable list

    readonly property real start: list.originY - list.topMargin
    readonly property real range: list.topMargin + list.contentHeight + list.bottomMargin - list.height
    readonly property real travel: height - handle.height

    implicitWidth: Theme.listPadding
    visible: range > 0

    Rectangle {
        id: handle
        x: 2
        width: 4
        height: Math.max(32, root.height * root.list.visibleArea.heightRatio)
        radius: 2
        color: Theme.colors.scrollBar
        opacity: mouse.pressed ? 1 : mouse.containsMouse ? 0.8 : 0.45
    }

    Binding {
        target: handle
        property: "y"
        when: !mouse.drag.active
        value: root.travel * (root.list.contentY - root.start) / root.range
        restoreMode: Binding.RestoreNone
    }

    Binding {
        target: root.list
        property: "contentY"
        when: mouse.drag.active
        value: root.start + root.range * handle.y / root.travel
        restoreMode: Binding.RestoreNone
    }

    MouseArea {
        id: mouse
        width: root.width
        y: handle.y
        height: handle.height
        hoverEnabled: true
        preventStealing: true
        drag.target: handle
        drag.axis: Drag.YAxis
        drag.minimumY: 0
        drag.maximumY: root.travel
        drag.threshold: 0
    }
}
