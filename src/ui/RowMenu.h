#pragma once

#include "platform/Values.h"

#include <QObject>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

#include <vector>

namespace nettlecap {

/// One line of a row's context menu.
class RowMenuItem {
    Q_GADGET
    QML_ANONYMOUS
    Q_PROPERTY(QString label MEMBER label CONSTANT)
    Q_PROPERTY(bool isDivider MEMBER isDivider CONSTANT)
    Q_PROPERTY(bool isDestructive MEMBER isDestructive CONSTANT)

public:
    QString label;
    bool isDivider = false;
    bool isDestructive = false;

    bool operator==(const RowMenuItem&) const = default;
};

/// A row's context menu: what each line says and does.
class RowMenu {
public:
    RowMenu& add(const QString& label, Task action);
    RowMenu& addDivider();
    RowMenu& addDestructive(const QString& label, Task action);

    QVariantList items() const;  ///< RowMenuItem each
    void perform(int index) const;

private:
    struct Line {
        RowMenuItem item;
        Task action;  ///< none: a divider
    };

    std::vector<Line> lines_;
};

}  // namespace nettlecap
