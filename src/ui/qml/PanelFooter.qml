import QtQuick
import Nettlecap.Views as Views

/// Whether copies are kept, what can be done with the list, and the way out.
Item {
    id: root

    required property Views.MenuBarContentView view

    readonly property bool isMonitoring: view.monitoringSymbol === "record.circle"

    implicitHeight: Theme.footerHeight

    Rectangle {
        anchors.left: parent.left
        anchors.right: parent.right
        anchors.top: parent.top
        height: 1
        color: Theme.colors.separator
    }

    FlatButton {
        x: Theme.panelMargin - 8
        anchors.verticalCenter: parent.verticalCenter
        symbol: root.view.monitoringSymbol
        symbolInk: root.isMonitoring ? Theme.colors.controls.success : Theme.colors.controls.caution
        text: root.view.monitoringLabel
        onPressed: root.view.toggleMonitoring()
    }

    Row {
        anchors.right: parent.right
        anchors.rightMargin: Theme.panelMargin - 8
        anchors.verticalCenter: parent.verticalCenter
        spacing: 4

        FlatButton {
            symbol: root.view.footerActionSymbol
            text: root.view.footerActionLabel
            onPressed: root.view.performFooterAction()
        }
        FlatButton {
            text: "Sair"
            onPressed: root.view.quit()
        }
    }
}
