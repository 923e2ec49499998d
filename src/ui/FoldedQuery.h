#pragma once

#include <string>
#include <string_view>

namespace nettlecap {

/// What the user searches for, folded once for all the texts that it is looked for in. It is
/// taken as typed: not trimmed, not split into words.
class FoldedQuery {
public:
    FoldedQuery() = default;
    explicit FoldedQuery(std::string_view typed);

    bool isEmpty() const { return folded_.empty(); }
    std::size_t size() const { return folded_.size(); }  ///< bytes
    /// The first place at or behind `from` (at most the text's size), or npos.
    std::size_t placeIn(std::string_view foldedText, std::size_t from = 0) const;
    bool isIn(std::string_view foldedText) const { return placeIn(foldedText) != std::string_view::npos; }

    bool operator==(const FoldedQuery&) const = default;

private:
    std::string folded_;
};

}  // namespace nettlecap
