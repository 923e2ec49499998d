pragma ComponentBehavior: Bound
import QtQuick

/// The ground of a preview, with its content within.
Item {
    id: root

    required property Item content
    /// Whether what is translucent shows what is behind it.
    property bool isComposited: true

    readonly property real inset: Theme.cardMargin + Theme.previewPadding

    implicitWidth: content.implicitWidth + 2 * inset
    implicitHeight: content.implicitHeight + 2 * inset

    CardGround {
        anchors.fill: parent
        radius: Theme.previewRadius
        isComposited: root.isComposited
    }

    Item {
        anchors.fill: parent
        anchors.margins: root.inset
        clip: true
        children: [root.content]
    }
}
