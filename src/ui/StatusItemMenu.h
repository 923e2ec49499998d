#pragma once

#include "platform/StatusItem.h"

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

namespace nettlecap {

/// One line of the status item's menu.
class StatusItemMenuLine {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString label MEMBER label CONSTANT)
    Q_PROPERTY(QString keys MEMBER keys CONSTANT)
    Q_PROPERTY(bool isDivider MEMBER isDivider CONSTANT)
    Q_PROPERTY(bool isEnabled MEMBER isEnabled CONSTANT)

public:
    QString label;
    QString keys;  ///< as people read them; empty: none
    bool isDivider = false;
    bool isEnabled = true;

    bool operator==(const StatusItemMenuLine&) const = default;
};

/// The status item's menu while it is open. What it shows is what the menu was when it opened.
class StatusItemMenu : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the status item")
    Q_PROPERTY(QString title READ title CONSTANT)
    Q_PROPERTY(QVariantList lines READ lines CONSTANT)
    Q_PROPERTY(int current READ current NOTIFY currentChanged)

public:
    /// The line that was chosen; absent: none was.
    using Closed = std::function<void(std::optional<std::size_t> chosen)>;

    /// Tells once that it wants to be closed.
    StatusItemMenu(const Menu& menu, Closed close);

    /// Qt::Key and Qt::KeyboardModifiers. ⌘ is Ctrl in the menus of this desktop.
    void handleKey(int key, Qt::KeyboardModifiers modifiers);
    /// The pointer has moved onto a line; nothing can be chosen there: there is none, or a
    /// divider, or it is disabled.
    Q_INVOKABLE void pointAt(int index);
    Q_INVOKABLE void choose(int index);
    Q_INVOKABLE void leave();

    QString title() const { return title_; }
    QVariantList lines() const;               ///< StatusItemMenuLine each
    int current() const { return current_; }  ///< -1: none

Q_SIGNALS:
    void currentChanged();

private:
    bool canChoose(int index) const;
    int count() const { return static_cast<int>(lines_.size()); }
    void step(int from, int offset);
    void setCurrent(int index);
    void close(std::optional<std::size_t> chosen);

    QString title_;
    std::vector<StatusItemMenuLine> lines_;
    std::vector<int> keys_;  ///< one for each line: a Qt::Key; 0: none
    int current_ = -1;
    Closed close_;
};

}  // namespace nettlecap
