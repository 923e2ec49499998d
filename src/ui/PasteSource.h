#pragma once

#include "platform/Pasteboard.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace nettlecap {

/// Where our own text fields paste from. The toolkit's clipboard would wait for the answer
/// of the owner, which may be this very process.
class PasteSource : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("handed to the views")

public:
    /// The pasteboard must outlive the source.
    explicit PasteSource(const Pasteboard& pasteboard) : pasteboard_(pasteboard) {}

    Q_INVOKABLE QString text() const;  ///< empty: there is none
    /// The text for a field of one line: every line break is a space.
    Q_INVOKABLE QString line() const;

private:
    const Pasteboard& pasteboard_;
};

}  // namespace nettlecap
