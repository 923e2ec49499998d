import QtQuick
import Nettlecap
import Nettlecap.Views as Views

/// The program's icon and name, what the list shows, the way to the settings, and the search.
FocusScope {
    id: root

    required property Views.MenuBarContentView view

    readonly property bool isSearching: search.activeFocus

    signal menuKeyPressed

    implicitHeight: Theme.headerHeight + search.height + Theme.gap

    AppIcon {
        id: icon
        x: Theme.panelMargin
        y: (Theme.headerHeight - height) / 2
        width: Theme.headerIconSide
        height: Theme.headerIconSide
    }

    Text {
        anchors.left: icon.right
        anchors.leftMargin: 8
        anchors.verticalCenter: icon.verticalCenter
        text: "Nettlecap"
        textFormat: Text.PlainText
        font: Theme.title
        color: Theme.colors.text
        Accessible.role: Accessible.Heading
        Accessible.name: text
    }

    SectionPicker {
        anchors.right: settings.left
        anchors.rightMargin: 8
        anchors.verticalCenter: icon.verticalCenter
        view: root.view
    }

    FlatButton {
        id: settings
        anchors.right: parent.right
        anchors.rightMargin: Theme.panelMargin - (width - symbolSide) / 2
        anchors.verticalCenter: icon.verticalCenter
        symbol: "gearshape"
        symbolSide: 18
        help: "Ajustes"
        onPressed: root.view.openSettings()
    }

    SearchField {
        id: search
        x: Theme.panelMargin
        y: Theme.headerHeight
        width: parent.width - 2 * x
        focus: true
        field: root.view.searchField
        pasteSource: root.view.pasteSource
        onMenuKeyPressed: root.menuKeyPressed()
    }

    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.bottom: parent.bottom
        height: 1
        color: Theme.colors.separator
    }
}
