#pragma once

#include "app/AppModel.h"
#include "ui/DeleteLater.h"
#include "ui/SnippetEditorView.h"

namespace nettlecap {

/// The sheet in which a saved message is written, while there is one, and where its text goes.
class SnippetEditing {
public:
    struct Collaborators {
        ClipboardStore& store;
        const Pasteboard& pasteboard;
        Identifiers& identifiers;
    };

    /// `changed` is told after the sheet opened or closed.
    SnippetEditing(Collaborators with, Task changed);

    void open(std::optional<SavedSnippet> snippet);  ///< absent: a new message
    void dismiss();

    const std::optional<SnippetEditorRequest>& request() const { return request_; }
    SnippetEditorView* editor() const { return editor_.get(); }  ///< null: the sheet is closed

private:
    void save(std::string_view title, std::string_view content);

    Collaborators with_;
    Task changed_;
    std::optional<SnippetEditorRequest> request_;
    DeletedLater<SnippetEditorView> editor_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
