import QtQuick

/// The colours of a form, its controls and what opens over them.
QtObject {
    required property color group
    required property color groupBorder
    required property color ground
    required property color hovered
    required property color pressed
    required property color border
    required property color text
    required property color accent
    required property color accentPressed
    required property color accentText
    required property color switchOff
    required property color switchBorder
    required property color knob
    required property color field
    required property color placeholder
    required property color sheet
    required property color scrim
    required property color focusRing
    required property color caution
    required property color success
    required property color destructive
}
