#pragma once

#include "ui/EntryPreviewPopover.h"
#include "ui/QtText.h"

namespace nettlecap {

/// The text of an entry that does not fit into its row.
class TextPreviewPopover final : public EntryPreviewPopover {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by its row")
    Q_PROPERTY(QString heading READ heading CONSTANT)
    Q_PROPERTY(QString text READ text CONSTANT)

public:
    TextPreviewPopover(std::string_view text, StoredEntry entry, HoverChanged onHoverChanged)
        : EntryPreviewPopover(std::move(entry), std::move(onHoverChanged)), text_(qtText(text)) {}

    QString heading() const { return QStringLiteral("Texto copiado"); }
    QString text() const { return text_; }

private:
    QString text_;
};

}  // namespace nettlecap
