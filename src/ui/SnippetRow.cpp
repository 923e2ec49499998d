#include "ui/SnippetRow.h"

#include <QQmlEngine>

namespace nettlecap {

SnippetRow::SnippetRow(Collaborators with, SavedSnippet snippet, Edit edit, bool isKeyboardSelected)
    : with_(with), snippet_(std::move(snippet)), edit_(std::move(edit)),
      isKeyboardSelected_(isKeyboardSelected),
      previewState_({.scheduler = with.scheduler, .identifiers = with.identifiers},
                    [this] { updateKeyboardPreview(); }) {}

void SnippetRow::setRecord(const SavedSnippet& snippet) {
    if (snippet == snippet_) return;
    snippet_ = snippet;
    Q_EMIT snippetChanged();
    if (isShowingKeyboardPreview()) updateKeyboardPreview();
}

void SnippetRow::setKeyboardSelected(bool selected) {
    if (selected == isKeyboardSelected_) return;
    isKeyboardSelected_ = selected;
    Q_EMIT isKeyboardSelectedChanged();
    previewState_.handleKeyboardSelection(selected);
}

void SnippetRow::handleClick() { copy(std::nullopt); }

void SnippetRow::copy(std::optional<bool> pasteImmediately) const {
    const SavedSnippet snippet = snippet_;  // the copying may replace the row's
    with_.app.copy(snippet, pasteImmediately);
}

RowMenu SnippetRow::menu() const {
    RowMenu menu;
    menu.add(QStringLiteral("Colar agora"), [this] { copy(true); })
        .add(QStringLiteral("Copiar"), [this] { copy(false); })
        .add(QStringLiteral("Editar"), [this] { edit(); })
        .addDivider()
        .addDestructive(QStringLiteral("Excluir"), [this] {
            const SavedSnippet snippet = snippet_;
            with_.app.store().removeSnippet(snippet);
        });
    return menu;
}

void SnippetRow::performMenuItem(int index) { menu().perform(index); }

QString SnippetRow::title() const { return qtText(snippet_.title); }

QString SnippetRow::summary() const { return qtText(ClipboardTextPreview::onOneLine(snippet_.content)); }

void SnippetRow::updateKeyboardPreview() {
    preview_.reset(previewState_.isShowing() ? new SavedSnippetPreviewPopover(snippet_) : nullptr);
    if (preview_) QQmlEngine::setObjectOwnership(preview_.get(), QQmlEngine::CppOwnership);
    Q_EMIT previewChanged();
}

}  // namespace nettlecap
