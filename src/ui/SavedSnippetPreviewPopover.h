#pragma once

#include "ui/ClipboardTextPreview.h"
#include "ui/QtText.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace nettlecap {

/// What floats beside the row of a saved message.
class SavedSnippetPreviewPopover final : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by its row")
    Q_PROPERTY(QString heading READ heading CONSTANT)
    Q_PROPERTY(QString text READ text CONSTANT)

public:
    explicit SavedSnippetPreviewPopover(const SavedSnippet& snippet)
        : text_(qtText(ClipboardTextPreview::limited(snippet.content))) {}

    QString heading() const { return QStringLiteral("Mensagem salva"); }
    QString text() const { return text_; }

private:
    QString text_;
};

}  // namespace nettlecap
