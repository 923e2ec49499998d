#include "ui/FoldedQuery.h"

#include "model/Text.h"

#include <cstring>

namespace nettlecap {

FoldedQuery::FoldedQuery(std::string_view typed) : folded_(text::folded(typed)) {}

// memmem, since std::string_view::find stops at every byte that is the query's first.
bool FoldedQuery::isIn(std::string_view foldedText) const {
    return folded_.empty() ||
           ::memmem(foldedText.data(), foldedText.size(), folded_.data(), folded_.size()) != nullptr;
}

}  // namespace nettlecap
