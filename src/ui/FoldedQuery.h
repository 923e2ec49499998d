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
    bool isIn(std::string_view foldedText) const;

    bool operator==(const FoldedQuery&) const = default;

private:
    std::string folded_;
};

}  // namespace nettlecap
