#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace nettlecap {

/// The search field: what it holds, and which keys it hands to the list instead of editing
/// its text. While an input method composes it hands over none.
class KeyboardSearchField : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the view")
    Q_PROPERTY(QString placeholder READ placeholder NOTIFY placeholderChanged)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)

public:
    /// What the keys do; the answer is whether the key was handled.
    struct Actions {
        std::function<bool()> moveDown;
        std::function<bool()> moveUp;
        std::function<void()> moveLeft;
        std::function<void()> moveRight;
        std::function<bool()> submit;
        std::function<bool()> deleteSelected;
    };

    /// What a key asks of a text field.
    enum class Command {
        moveDown,
        moveUp,
        moveLeft,
        moveRight,
        insertNewline,
        insertNewlineIgnoringFieldEditor,
        deleteBackward,
        deleteForward,
        other,  ///< everything else, Escape too
    };

    explicit KeyboardSearchField(Actions actions) : actions_(std::move(actions)) {}

    /// A key was pressed in the field: Qt::Key and Qt::KeyboardModifiers, as QML has them.
    /// True: the field must not act on it.
    Q_INVOKABLE bool handleKey(int key, int modifiers, bool isComposing) const;

    bool doCommand(Command command) const;  ///< true: handled
    void setText(const QString& text);
    void setPlaceholder(const QString& placeholder);

    static Command commandOf(int key, Qt::KeyboardModifiers modifiers);

    QString text() const { return text_; }
    QString placeholder() const { return placeholder_; }

Q_SIGNALS:
    void textChanged();
    void placeholderChanged();

private:
    Actions actions_;
    QString text_;
    QString placeholder_;
};

}  // namespace nettlecap
