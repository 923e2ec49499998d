#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace nettlecap {

/// A question before something is destroyed. Its answer that destroys is never the default.
class Confirmation {
    Q_GADGET
    QML_VALUE_TYPE(confirmation)
    Q_PROPERTY(bool isShown MEMBER isShown CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString message MEMBER message CONSTANT)
    Q_PROPERTY(QString destructiveLabel MEMBER destructiveLabel CONSTANT)
    Q_PROPERTY(QString cancelLabel MEMBER cancelLabel CONSTANT)

public:
    bool isShown = false;
    QString title;
    QString message;  ///< may be empty
    QString destructiveLabel;
    QString cancelLabel = QStringLiteral("Cancelar");

    bool operator==(const Confirmation&) const = default;
};

}  // namespace nettlecap
