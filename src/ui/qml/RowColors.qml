import QtQuick

/// The colours of a row in one of its states.
QtObject {
    required property color ground
    required property color hovered
    required property color pressed
    required property color text
    required property color caption
    required property color favorite
}
