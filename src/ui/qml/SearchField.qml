import QtQuick
import Nettlecap.Views as Views

/// The field from which the whole panel is driven: it hands keys to the list before it acts
/// on them itself.
PlainTextInput {
    id: root

    required property Views.KeyboardSearchField field

    signal menuKeyPressed

    symbol: "magnifyingglass"
    hasRing: false  // it has the keyboard nearly always
    placeholder: field.placeholder
    text: field.text
    onEdited: field.text = text
    onKeyPressed: event => {
        const asksForMenu = event.key === Qt.Key_Menu || event.key === Qt.Key_F10 && event.modifiers === Qt.ShiftModifier;
        if (asksForMenu)
            root.menuKeyPressed();
        event.accepted = asksForMenu || root.field.handleKey(event.key, event.modifiers, root.isComposing);
    }
}
