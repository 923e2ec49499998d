#include "ui/SnippetEditorView.h"

#include "model/Text.h"

namespace nettlecap {

SnippetEditorView::SnippetEditorView(const std::optional<SavedSnippet>& snippet, const Pasteboard& pasteboard,
                                     Actions actions)
    : isNew_(!snippet), title_(snippet ? QString::fromStdString(snippet->title) : QString()),
      content_(snippet ? QString::fromStdString(snippet->content) : QString()), pasteSource_(pasteboard),
      actions_(std::move(actions)) {}

void SnippetEditorView::setTitle(const QString& title) {
    if (title == title_) return;
    title_ = title;
    Q_EMIT titleChanged();
}

void SnippetEditorView::setContent(const QString& content) {
    if (content == content_) return;
    content_ = content;
    Q_EMIT contentChanged();
}

void SnippetEditorView::save() {
    if (!canSave()) return;
    actions_.save(title_.toStdString(), content_.toStdString());
    cancel();
}

void SnippetEditorView::cancel() const {
    const Task dismiss = actions_.dismiss;  // may destroy this view
    dismiss();
}

QString SnippetEditorView::heading() const {
    return isNew_ ? QStringLiteral("Nova mensagem salva") : QStringLiteral("Editar mensagem");
}

bool SnippetEditorView::canSave() const { return !text::trimmed(content_.toStdString()).empty(); }

}  // namespace nettlecap
