#include "ui/EntryMetadataPopover.h"

#include "model/RelativeDate.h"
#include "ui/QtText.h"

namespace nettlecap {

EntryMetadataPopover::EntryMetadataPopover(Ports ports, StoredEntry entry, HoverChanged onHoverChanged)
    : EntryPreviewPopover(std::move(entry), std::move(onHoverChanged)), clock_(ports.clock),
      timer_(ports.scheduler.every(Seconds{1}, [this] { Q_EMIT ageChanged(); })) {}

QString EntryMetadataPopover::age() const { return qtText(relativeDate(entry().createdAt, clock_.now())); }

}  // namespace nettlecap
