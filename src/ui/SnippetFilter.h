#pragma once

#include "model/ClipboardEntry.h"
#include "ui/FoldedQuery.h"

#include <vector>

namespace nettlecap {

/// Which saved messages are listed, in the store's order. Their titles and contents are
/// folded once, when somebody first searches in them.
class SnippetFilter {
public:
    void setSnippets(std::vector<SavedSnippet> snippets);

    std::vector<SavedSnippet> matching(const FoldedQuery& query) const;

private:
    struct Folded {
        std::string title;
        std::string content;
    };

    std::vector<SavedSnippet> snippets_;
    mutable std::vector<Folded> folded_;  ///< of each snippet, or of none yet
};

}  // namespace nettlecap
