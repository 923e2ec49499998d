#include "ui/SnippetFilter.h"

#include "model/Text.h"

namespace nettlecap {

void SnippetFilter::setSnippets(std::vector<SavedSnippet> snippets) {
    snippets_ = std::move(snippets);
    folded_.clear();
}

std::vector<SavedSnippet> SnippetFilter::matching(const FoldedQuery& query) const {
    if (query.isEmpty()) return snippets_;
    if (folded_.empty())
        for (const SavedSnippet& snippet : snippets_)
            folded_.push_back(
                {.title = text::folded(snippet.title), .content = text::folded(snippet.content)});
    std::vector<SavedSnippet> found;
    for (std::size_t index = 0; index < snippets_.size(); ++index)
        if (query.isIn(folded_[index].title) || query.isIn(folded_[index].content))
            found.push_back(snippets_[index]);
    return found;
}

}  // namespace nettlecap
