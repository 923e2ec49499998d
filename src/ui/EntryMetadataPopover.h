#pragma once

#include "platform/Time.h"
#include "ui/EntryPreviewPopover.h"

namespace nettlecap {

/// When an entry was copied, where its row shows all else. Tells its age anew every second.
class EntryMetadataPopover final : public EntryPreviewPopover {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by its row")
    Q_PROPERTY(QString symbol READ symbol CONSTANT)
    Q_PROPERTY(QString label READ label CONSTANT)
    Q_PROPERTY(QString age READ age NOTIFY ageChanged)

public:
    struct Ports {
        const Clock& clock;
        Scheduler& scheduler;
    };

    EntryMetadataPopover(Ports ports, StoredEntry entry, HoverChanged onHoverChanged);

    QString symbol() const { return QStringLiteral("clock"); }
    QString label() const { return QStringLiteral("Copiado"); }
    QString age() const;

Q_SIGNALS:
    void ageChanged();

private:
    const Clock& clock_;
    Subscription timer_;
};

}  // namespace nettlecap
