#pragma once

#include "ui/PasteSource.h"

#include <QPointer>
#include <QQuickItem>

namespace nettlecap {

/// Pastes into a text field from our own pasteboard. The keys and the mouse button that
/// would paste from the toolkit's clipboard never reach the field.
class PasteKeys : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem* field READ field WRITE setField NOTIFY fieldChanged REQUIRED)
    Q_PROPERTY(nettlecap::PasteSource* source MEMBER source_ NOTIFY sourceChanged REQUIRED)
    Q_PROPERTY(bool isOneLine MEMBER isOneLine_ NOTIFY isOneLineChanged)

public:
    void setField(QQuickItem* field);  ///< a TextInput or TextEdit
    QQuickItem* field() const { return field_; }

    bool eventFilter(QObject* field, QEvent* event) override;

Q_SIGNALS:
    void fieldChanged();
    void sourceChanged();
    void isOneLineChanged();

private:
    void paste();

    QPointer<QQuickItem> field_;
    PasteSource* source_ = nullptr;
    bool isOneLine_ = false;
};

}  // namespace nettlecap
