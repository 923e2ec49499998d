#pragma once

#include "model/ShortcutDefinition.h"

#include <QList>
#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace nettlecap {

/// One shortcut as the settings let it be changed: another key, other modifiers, but never
/// none of these. It asks for a change and shows it only when it is handed the new shortcut.
class ShortcutEditor : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the settings")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QStringList keyLabels READ keyLabels CONSTANT)
    Q_PROPERTY(QString keyLabel READ keyLabel NOTIFY shortcutChanged)
    Q_PROPERTY(int chosenKey READ chosenKey NOTIFY shortcutChanged)
    Q_PROPERTY(QStringList modifierSymbols READ modifierSymbols CONSTANT)
    Q_PROPERTY(QList<bool> modifiersOn READ modifiersOn NOTIFY shortcutChanged)

public:
    using OnChange = std::function<void(const ShortcutDefinition&)>;

    ShortcutEditor(QString title, const ShortcutDefinition& shortcut, OnChange onChange);

    void setShortcut(const ShortcutDefinition& shortcut);

    Q_INVOKABLE void chooseKey(int row);  ///< of `keyLabels`
    /// Nothing happens if no modifier would be left.
    Q_INVOKABLE void setModifier(int index, bool isOn);

    QString title() const { return title_; }
    QStringList keyLabels() const;
    QString keyLabel() const;  ///< "?" for a key that is not offered
    int chosenKey() const;     ///< row of `keyLabels`; -1: the key is not offered
    /// The row that a typed text names, else -1.
    Q_INVOKABLE int keyLabelled(const QString& label) const;
    QStringList modifierSymbols() const;
    QList<bool> modifiersOn() const;  ///< in the order of the symbols

Q_SIGNALS:
    void shortcutChanged();

private:
    ModifierFlags modifiers() const { return shortcut_.modifiers & modifier::all; }

    QString title_;
    ShortcutDefinition shortcut_;
    OnChange onChange_;
};

}  // namespace nettlecap
