import QtQuick

/// The colours of the floating card, beside those that the panel has too.
QtObject {
    required property color ground
    required property color accent
    required property color sensitive
    required property color rim      // around the card, where nothing is translucent
    readonly property color shadow: "black"
    readonly property color outline: Qt.rgba(1, 1, 1, 0.14)
    readonly property color pictureOutline: Qt.rgba(1, 1, 1, 0.16)
}
