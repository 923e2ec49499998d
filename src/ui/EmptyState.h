#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace nettlecap {

/// What stands in place of a list that has no rows.
class EmptyState {
    Q_GADGET
    QML_VALUE_TYPE(emptyState)
    Q_PROPERTY(bool isShown READ isShown CONSTANT)
    Q_PROPERTY(QString symbol MEMBER symbol CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString text MEMBER text CONSTANT)
    Q_PROPERTY(QString button MEMBER button CONSTANT)

public:
    static EmptyState noHistory();
    static EmptyState noSnippets();
    static EmptyState nothingFound();

    bool isShown() const { return !title.isEmpty(); }

    QString symbol;
    QString title;
    QString text;
    QString button;  ///< its label; empty: there is none

    bool operator==(const EmptyState&) const = default;
};

}  // namespace nettlecap
