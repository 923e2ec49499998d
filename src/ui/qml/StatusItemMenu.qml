pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// The status item's menu, in a window of its own. The window has the keyboard, and hands it
/// to the view.
Rectangle {
    id: root

    required property Views.StatusItemMenu view

    readonly property ControlColors colors: Theme.colors.controls

    implicitWidth: Math.max(180, lines.implicitWidth + 8)
    implicitHeight: lines.implicitHeight + 8
    radius: Theme.controlRadius + 2
    color: colors.sheet
    border.width: 1
    border.color: colors.border

    Accessible.role: Accessible.PopupMenu
    Accessible.name: view.title

    RestingPointer { id: pointer }
    Component.onCompleted: {
        lines.forceLayout();  // its height is needed now
        pointer.remember(root);
    }

    ReadOut {
        item: root
        isWanted: root.view.current < 0
    }

    Column {
        id: lines
        x: 4
        y: 4
        width: parent.width - 8

        Repeater {
            model: root.view.lines

            StatusItemMenuLine {
                width: parent.width
                isCurrent: index === root.view.current
                onPointerMoved: place => {
                    if (pointer.hasMovedTo(place))
                        root.view.pointAt(index);
                }
                onPointerLeft: if (isCurrent) root.view.pointAt(-1)
                onPressed: root.view.choose(index)
            }
        }
    }
}
