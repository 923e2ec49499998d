#pragma once

#include "model/ClipboardEntry.h"

#include <vector>

namespace nettlecap {

struct PersistedState {
    std::vector<ClipboardEntry> entries;
    std::vector<SavedSnippet> snippets;

    bool operator==(const PersistedState&) const = default;
};

/// The file format of the history. A document is taken whole or not at all.
struct HistoryDocument {
    static Result<PersistedState> decode(const Bytes& document);

    static std::string encode(const ClipboardEntry& entry);  ///< one JSON object
    static std::string encode(const SavedSnippet& snippet);  ///< one JSON object
    static std::string encode(const PersistedState& state);

    /// The document around objects that are already encoded, as pieces to be written one
    /// after the other. They view the arguments.
    static std::vector<std::string_view> pieces(const std::vector<std::string_view>& entries,
                                                const std::vector<std::string_view>& snippets);
};

}  // namespace nettlecap
