#include "ui/FoldedQuery.h"

#include "model/Text.h"

#include <cstring>

namespace nettlecap {

FoldedQuery::FoldedQuery(std::string_view typed) : folded_(text::folded(typed)) {}

// memmem, since std::string_view::find stops at every byte that is the query's first.
std::size_t FoldedQuery::placeIn(std::string_view foldedText, std::size_t from) const {
    if (folded_.empty()) return from;
    const void* place =
        ::memmem(foldedText.data() + from, foldedText.size() - from, folded_.data(), folded_.size());
    return place ? static_cast<std::size_t>(static_cast<const char*>(place) - foldedText.data())
                 : std::string_view::npos;
}

}  // namespace nettlecap
