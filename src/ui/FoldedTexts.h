#pragma once

#include "ui/FoldedQuery.h"

#include <cstdint>
#include <vector>

namespace nettlecap {

/// Folded texts laid end to end, in blocks, so that looking for something in all of them is a
/// pass over memory and not a walk from one text to the next.
class FoldedTexts {
public:
    /// Stands for a text until it is removed; then for another one.
    using Handle = std::uint32_t;

    static constexpr std::size_t blockSize = 1 << 18;  ///< bytes; a longer text has a block of its own

    Handle add(std::string_view folded);
    void remove(Handle handle);

    /// For each handle whether that text has the query, which must not be empty, in it.
    std::vector<bool> having(const FoldedQuery& query) const;

    std::size_t bytes() const;  ///< that are held, those of removed texts included

private:
    static constexpr Handle removed = UINT32_MAX;

    struct Part {
        std::size_t begin = 0;
        Handle handle = removed;
    };
    struct Block {
        std::string text;
        std::vector<Part> parts;  ///< in order, without gaps; each ends with a byte of its own
        std::size_t removedBytes = 0;

        std::size_t endOf(std::size_t part) const {
            return part + 1 < parts.size() ? parts[part + 1].begin : text.size();
        }
    };
    struct Place {
        std::size_t block = 0;
        std::size_t begin = 0;
    };

    void openBlock(std::size_t size);
    void append(std::size_t block, std::string_view folded, Handle handle);
    void closeGaps(std::size_t block);
    static void markFound(const Block& block, const FoldedQuery& query, std::vector<bool>& found);

    std::vector<Block> blocks_;
    std::size_t open_ = 0;  ///< the block that grows
    std::vector<Place> places_;
    std::vector<Handle> unused_;
};

}  // namespace nettlecap
