pragma ComponentBehavior: Bound
import QtQuick
import Nettlecap

/// A question over the content of a panel. What it asks for is done only by the button that
/// says so; Escape, Return and "Cancelar" do nothing.
FocusScope {
    id: root

    required property string title
    required property string message
    required property string confirmText

    property bool hasTakenFocus: false
    property Item focusedBefore: null
    readonly property ControlColors colors: Theme.colors.controls

    signal confirmed
    signal cancelled

    onVisibleChanged: visible ? takeFocus() : giveFocusBack()

    function takeFocus() {
        hasTakenFocus = true;
        focusedBefore = Window.activeFocusItem;
        cancel.forceActiveFocus();
    }
    function giveFocusBack() {
        if (!hasTakenFocus)
            return;
        hasTakenFocus = false;
        focus = false;
        (focusedBefore ?? parent)?.forceActiveFocus();
    }

    Accessible.role: Accessible.Dialog
    Accessible.name: title
    Accessible.description: message

    Keys.onEscapePressed: root.cancelled()

    Rectangle {
        anchors.fill: parent
        color: root.colors.scrim
    }

    MouseArea {
        anchors.fill: parent
        hoverEnabled: true
        acceptedButtons: Qt.AllButtons
        onWheel: wheel => wheel.accepted = true
    }

    Rectangle {
        anchors.centerIn: parent
        width: Math.min(300, root.width - 40)
        height: content.height + 40
        radius: 12
        color: root.colors.sheet
        border.width: 1
        border.color: root.colors.border
        clip: true  // as with the rows

        Column {
            id: content
            x: 20
            y: 20
            width: parent.width - 40
            spacing: 10

            AppIcon {
                anchors.horizontalCenter: parent.horizontalCenter
                width: 48
                height: 48
            }
            Text {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                text: root.title
                textFormat: Text.PlainText
                font: Theme.title
                color: root.colors.text
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            Text {
                width: parent.width
                horizontalAlignment: Text.AlignHCenter
                wrapMode: Text.Wrap
                visible: text !== ""
                text: root.message
                textFormat: Text.PlainText
                font: Theme.caption
                lineHeight: 1.1
                color: root.colors.text
                Accessible.role: Accessible.StaticText
                Accessible.name: text
            }
            Item {
                width: 1
                height: 2
            }
            PushButton {
                id: confirm
                width: parent.width
                text: root.confirmText
                isDestructive: true
                KeyNavigation.tab: cancel
                KeyNavigation.backtab: cancel
                onPressed: root.confirmed()
            }
            PushButton {
                id: cancel
                width: parent.width
                focus: true
                text: "Cancelar"
                KeyNavigation.tab: confirm
                KeyNavigation.backtab: confirm
                onPressed: root.cancelled()
            }
        }
    }
}
