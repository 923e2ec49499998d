import QtQuick

/// The colours of one appearance. Each text colour reads on its background with at least
/// 4.5 to 1, each symbol with 3 to 1 (WCAG 2.1, AA).
QtObject {
    required property color background
    required property color separator
    required property color text
    required property color secondaryText
    required property color warning
    required property color scrollBar
    required property color tile
    required property color tileSymbol
    required property CardColors card
    required property ControlColors controls
    required property RowColors row
    required property RowColors selectedRow
    required property RowColors inactiveSelectedRow
}
