#include "ui/KeyboardSearchField.h"

namespace nettlecap {

namespace {

using Command = KeyboardSearchField::Command;

Command plainCommandOf(int key) {
    switch (key) {
    case Qt::Key_Down: return Command::moveDown;
    case Qt::Key_Up: return Command::moveUp;
    case Qt::Key_Left: return Command::moveLeft;
    case Qt::Key_Right: return Command::moveRight;
    case Qt::Key_Return:
    case Qt::Key_Enter: return Command::insertNewline;
    case Qt::Key_Backspace: return Command::deleteBackward;
    case Qt::Key_Delete: return Command::deleteForward;
    default: return Command::other;
    }
}

}  // namespace

/// With a modifier a key means something else: a word, a selection, the clipboard.
Command KeyboardSearchField::commandOf(int key, Qt::KeyboardModifiers modifiers) {
    const bool isReturn = key == Qt::Key_Return || key == Qt::Key_Enter;
    modifiers.setFlag(Qt::KeypadModifier, false);
    if (modifiers == Qt::NoModifier) return plainCommandOf(key);
    if (modifiers == Qt::ShiftModifier && (isReturn || key == Qt::Key_Backspace)) return plainCommandOf(key);
    if (modifiers == Qt::AltModifier && isReturn) return Command::insertNewlineIgnoringFieldEditor;
    return Command::other;
}

bool KeyboardSearchField::handleKey(int key, int modifiers, bool isComposing) const {
    return !isComposing && doCommand(commandOf(key, Qt::KeyboardModifiers(modifiers)));
}

bool KeyboardSearchField::doCommand(Command command) const {
    switch (command) {
    case Command::moveDown: return actions_.moveDown();
    case Command::moveUp: return actions_.moveUp();
    case Command::moveLeft: actions_.moveLeft(); return true;
    case Command::moveRight: actions_.moveRight(); return true;
    case Command::insertNewline:
    case Command::insertNewlineIgnoringFieldEditor: return actions_.submit();
    case Command::deleteBackward:
    case Command::deleteForward: return actions_.deleteSelected();
    case Command::other: break;
    }
    return false;
}

void KeyboardSearchField::setText(const QString& text) {
    if (text == text_) return;
    text_ = text;
    Q_EMIT textChanged();
}

void KeyboardSearchField::setPlaceholder(const QString& placeholder) {
    if (placeholder == placeholder_) return;
    placeholder_ = placeholder;
    Q_EMIT placeholderChanged();
}

}  // namespace nettlecap
