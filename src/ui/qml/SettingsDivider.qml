import QtQuick

/// A hairline between the settings of a group.
Rectangle {
    width: parent ? parent.width : 0
    height: 1
    color: Theme.colors.controls.groupBorder
}
