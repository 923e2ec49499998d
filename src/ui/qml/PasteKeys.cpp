#include "ui/qml/PasteKeys.h"

#include <QKeyEvent>

namespace nettlecap {

void PasteKeys::setField(QQuickItem* field) {
    if (field == field_) return;
    if (field_) field_->removeEventFilter(this);
    field_ = field;
    if (field_) field_->installEventFilter(this);
    Q_EMIT fieldChanged();
}

bool PasteKeys::eventFilter(QObject* field, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
        if (!static_cast<QKeyEvent*>(event)->matches(QKeySequence::Paste)) break;
        paste();
        return true;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
        if (static_cast<QMouseEvent*>(event)->button() == Qt::MiddleButton) return true;
        break;
    default: break;
    }
    return QObject::eventFilter(field, event);
}

void PasteKeys::paste() {
    const QString text = isOneLine_ ? source_->line() : source_->text();
    if (text.isEmpty()) return;
    const int start = field_->property("selectionStart").toInt();
    const int end = field_->property("selectionEnd").toInt();
    QMetaObject::invokeMethod(field_, "remove", Q_ARG(int, start), Q_ARG(int, end));
    QMetaObject::invokeMethod(field_, "insert", Q_ARG(int, start), Q_ARG(QString, text));
}

}  // namespace nettlecap
