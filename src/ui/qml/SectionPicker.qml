pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap.Views as Views

/// Which of the two lists is shown.
Rectangle {
    id: root

    required property Views.MenuBarContentView view

    implicitWidth: 150
    implicitHeight: Theme.controlHeight
    radius: Theme.controlRadius
    color: Theme.colors.controls.ground
    border.width: 1
    border.color: Theme.colors.controls.border

    Accessible.role: Accessible.Grouping

    Row {
        anchors.fill: parent

        Repeater {
            model: root.view.sectionTitles

            SectionSegment {
                width: root.width / root.view.sectionTitles.length
                height: root.height
                isChosen: index === root.view.section
                onPressed: root.view.showSection(index)
            }
        }
    }
}
