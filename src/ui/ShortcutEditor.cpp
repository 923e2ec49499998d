#include "ui/ShortcutEditor.h"

#include "app/KeyCatalog.h"
#include "ui/QtText.h"

#include <array>

namespace nettlecap {

namespace {

struct ModifierChoice {
    ModifierFlags flag;
    const char* symbol;
};

constexpr std::array<ModifierChoice, 4> modifierChoices = {{
    {modifier::control, "⌃"},
    {modifier::option, "⌥"},
    {modifier::shift, "⇧"},
    {modifier::command, "⌘"},
}};

}  // namespace

ShortcutEditor::ShortcutEditor(QString title, const ShortcutDefinition& shortcut, OnChange onChange)
    : title_(std::move(title)), shortcut_(shortcut), onChange_(std::move(onChange)) {}

void ShortcutEditor::setShortcut(const ShortcutDefinition& shortcut) {
    if (shortcut == shortcut_) return;
    shortcut_ = shortcut;
    Q_EMIT shortcutChanged();
}

void ShortcutEditor::chooseKey(int row) {
    if (row < 0 || row >= static_cast<int>(KeyCatalog::choices.size()) || row == chosenKey()) return;
    const KeyCode key = KeyCatalog::choices[static_cast<std::size_t>(row)].keyCode;
    onChange_({.keyCode = key, .modifiers = shortcut_.modifiers});
}

void ShortcutEditor::setModifier(int index, bool isOn) {
    const ModifierFlags flag = modifierChoices.at(static_cast<std::size_t>(index)).flag;
    const ModifierFlags changed = isOn ? modifiers() | flag : modifiers() & ~flag;
    if (changed == 0) return;
    onChange_({.keyCode = shortcut_.keyCode, .modifiers = changed});
}

QStringList ShortcutEditor::keyLabels() const {
    QStringList labels;
    for (const KeyChoice& choice : KeyCatalog::choices) labels << qtText(choice.label);
    return labels;
}

QString ShortcutEditor::keyLabel() const { return qtText(KeyCatalog::label(shortcut_.keyCode)); }

int ShortcutEditor::chosenKey() const { return keyLabelled(keyLabel()); }

int ShortcutEditor::keyLabelled(const QString& label) const {
    return static_cast<int>(keyLabels().indexOf(label.toUpper()));
}

QStringList ShortcutEditor::modifierSymbols() const {
    QStringList symbols;
    for (const ModifierChoice& choice : modifierChoices) symbols << QString::fromUtf8(choice.symbol);
    return symbols;
}

QList<bool> ShortcutEditor::modifiersOn() const {
    QList<bool> result;
    for (const ModifierChoice& choice : modifierChoices) result << ((modifiers() & choice.flag) != 0);
    return result;
}

}  // namespace nettlecap
