#include "ui/SnippetEditing.h"

#include <QQmlEngine>

namespace nettlecap {

SnippetEditing::SnippetEditing(Collaborators with, Task changed)
    : with_(with), changed_(std::move(changed)) {}

void SnippetEditing::open(std::optional<SavedSnippet> snippet) {
    request_ = {.id = with_.identifiers.next(), .snippet = std::move(snippet)};
    const auto before = std::move(editor_);  // what shows it goes before it
    editor_.reset(new SnippetEditorView(
        request_->snippet, with_.pasteboard,
        {.save = guard_([this](std::string_view title, std::string_view content) { save(title, content); }),
         .dismiss = guard_([this] { dismiss(); })}));
    QQmlEngine::setObjectOwnership(editor_.get(), QQmlEngine::CppOwnership);
    changed_();
}

void SnippetEditing::dismiss() {
    if (!request_) return;
    request_.reset();
    const auto gone = std::move(editor_);  // as above
    changed_();
}

void SnippetEditing::save(std::string_view title, std::string_view content) {
    if (!request_) return;
    if (request_->snippet) {
        with_.store.updateSnippet(*request_->snippet, title, content);
    } else {
        with_.store.addSnippet(title, content);
    }
}

}  // namespace nettlecap
