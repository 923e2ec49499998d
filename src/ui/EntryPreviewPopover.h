#pragma once

#include "model/StoredEntry.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace nettlecap {

/// What floats beside a row of the history. It never changes: when its entry does, the row
/// makes another.
class EntryPreviewPopover : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

public:
    using HoverChanged = std::function<void(bool)>;

    EntryPreviewPopover(StoredEntry entry, HoverChanged onHoverChanged)
        : entry_(std::move(entry)), onHoverChanged_(std::move(onHoverChanged)) {}

    /// The pointer has come over the preview, or left it.
    Q_INVOKABLE void onHoverChanged(bool inside) { onHoverChanged_(inside); }

    const ClipboardEntry& entry() const { return *entry_; }

private:
    StoredEntry entry_;
    HoverChanged onHoverChanged_;
};

}  // namespace nettlecap
