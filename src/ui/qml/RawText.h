#pragma once

#include <QQuickTextDocument>

namespace nettlecap {

/// What stands in a TextEdit, letter for letter: its own `text` tells every no-break space
/// as a space.
class RawText : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    /// Every line break is a line feed.
    Q_INVOKABLE QString of(QQuickTextDocument* document) const;
};

}  // namespace nettlecap
