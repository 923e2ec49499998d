#pragma once

#include "ui/EntryPreviewPopover.h"
#include "ui/PictureAddress.h"

namespace nettlecap {

/// The picture of an entry, larger than in its row.
class ImagePreviewPopover final : public EntryPreviewPopover {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by its row")
    Q_PROPERTY(QString heading READ heading CONSTANT)
    Q_PROPERTY(QUrl image READ image CONSTANT)

public:
    /// Whose "image://" address the pictures have.
    static constexpr const char* pictureProvider = "preview";

    ImagePreviewPopover(std::string_view filename, StoredEntry entry, HoverChanged onHoverChanged)
        : EntryPreviewPopover(std::move(entry), std::move(onHoverChanged)),
          image_(pictureAddress(pictureProvider, filename)) {}

    QString heading() const { return QStringLiteral("Imagem copiada"); }
    QUrl image() const { return image_; }

private:
    QUrl image_;
};

}  // namespace nettlecap
