import QtQuick
import Nettlecap

/// One line of the status item's menu, with the keys that choose it.
ContextMenuLine {
    id: root

    signal pointerLeft

    roomBehind: modelData.keys ? keys.implicitWidth + 32 : 0
    enabled: modelData.isEnabled && !modelData.isDivider
    onIsHoveredChanged: if (!isHovered) pointerLeft()

    Accessible.description: modelData.keys

    ReadOut {
        item: root
        isWanted: root.isCurrent
    }

    Text {
        id: keys
        anchors.right: parent.right
        anchors.rightMargin: 10
        anchors.verticalCenter: parent.verticalCenter
        text: root.modelData.keys
        textFormat: Text.PlainText
        font: Theme.body
        color: root.ink
        opacity: root.enabled ? 0.75 : 0.45
        Accessible.ignored: true
    }
}
