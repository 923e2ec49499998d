#pragma once

#include "model/ClipboardEntry.h"
#include "ui/PasteSource.h"

#include <functional>

namespace nettlecap {

/// What the editor is opened for; a fresh identity each time, so that the same snippet
/// opened again is a new sheet.
struct SnippetEditorRequest {
    Uuid id;
    std::optional<SavedSnippet> snippet;  ///< absent: a new message

    bool operator==(const SnippetEditorRequest&) const = default;
};

/// A saved message while it is written. Nothing is cleaned here: what was typed is saved.
class SnippetEditorView : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("made by the panel")
    Q_PROPERTY(QString heading READ heading CONSTANT)
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(QString content READ content WRITE setContent NOTIFY contentChanged)
    Q_PROPERTY(bool canSave READ canSave NOTIFY contentChanged)
    Q_PROPERTY(nettlecap::PasteSource* pasteSource READ pasteSource CONSTANT)

public:
    struct Actions {
        std::function<void(std::string_view title, std::string_view content)> save;
        Task dismiss;  ///< closes the sheet; may destroy the view
    };

    /// The pasteboard must outlive the view.
    SnippetEditorView(const std::optional<SavedSnippet>& snippet, const Pasteboard& pasteboard,
                      Actions actions);

    void setTitle(const QString& title);
    void setContent(const QString& content);
    Q_INVOKABLE void save();  ///< and closes; nothing happens where there is no content
    Q_INVOKABLE void cancel() const;

    QString heading() const;
    QString title() const { return title_; }
    QString content() const { return content_; }
    bool canSave() const;
    PasteSource* pasteSource() { return &pasteSource_; }

Q_SIGNALS:
    void titleChanged();
    void contentChanged();

private:
    bool isNew_;
    QString title_;
    QString content_;
    PasteSource pasteSource_;
    Actions actions_;
};

}  // namespace nettlecap
