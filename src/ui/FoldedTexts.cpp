#include "ui/FoldedTexts.h"

#include <algorithm>
#include <utility>

namespace nettlecap {

FoldedTexts::Handle FoldedTexts::add(std::string_view folded) {
    const std::size_t size = folded.size() + 1;
    if (blocks_.empty() || blocks_[open_].text.size() + size > blockSize) openBlock(size);
    Handle handle = static_cast<Handle>(places_.size());
    if (unused_.empty()) {
        places_.emplace_back();
    } else {
        handle = unused_.back();
        unused_.pop_back();
    }
    append(open_, folded, handle);
    return handle;
}

void FoldedTexts::openBlock(std::size_t size) {
    const auto empty =
        std::find_if(blocks_.begin(), blocks_.end(), [](const Block& block) { return block.parts.empty(); });
    open_ = static_cast<std::size_t>(empty - blocks_.begin());
    if (empty == blocks_.end()) blocks_.emplace_back();
    blocks_[open_].text.reserve(std::max(size, blockSize));
}

void FoldedTexts::append(std::size_t block, std::string_view folded, Handle handle) {
    auto& [text, parts, removedBytes] = blocks_[block];
    places_[handle] = {.block = block, .begin = text.size()};
    parts.push_back({.begin = text.size(), .handle = handle});
    text += folded;
    text += '\0';
}

void FoldedTexts::remove(Handle handle) {
    const Place place = places_[handle];
    unused_.push_back(handle);
    Block& block = blocks_[place.block];
    const auto part = std::lower_bound(block.parts.begin(), block.parts.end(), place.begin,
                                       [](const Part& a, std::size_t begin) { return a.begin < begin; });
    part->handle = removed;
    block.removedBytes += block.endOf(static_cast<std::size_t>(part - block.parts.begin())) - part->begin;
    if (block.removedBytes > block.text.size() / 2) closeGaps(place.block);
}

void FoldedTexts::closeGaps(std::size_t block) {
    const Block old = std::exchange(blocks_[block], {});
    if (old.removedBytes == old.text.size()) return;
    blocks_[block].text.reserve(std::max(old.text.size() - old.removedBytes, blockSize));
    for (std::size_t part = 0; part < old.parts.size(); ++part) {
        const auto [begin, handle] = old.parts[part];
        if (handle == removed) continue;
        append(block, std::string_view(old.text).substr(begin, old.endOf(part) - begin - 1), handle);
    }
}

std::vector<bool> FoldedTexts::having(const FoldedQuery& query) const {
    std::vector<bool> found(places_.size());
    for (const Block& block : blocks_) markFound(block, query, found);
    return found;
}

void FoldedTexts::markFound(const Block& block, const FoldedQuery& query, std::vector<bool>& found) {
    const std::string_view text = block.text;
    auto part = block.parts.begin();
    for (std::size_t from = 0;;) {
        const std::size_t place = query.placeIn(text, from);
        if (place == std::string_view::npos) return;
        part = std::prev(std::upper_bound(part, block.parts.end(), place,
                                          [](std::size_t a, const Part& b) { return a < b.begin; }));
        const std::size_t end = block.endOf(static_cast<std::size_t>(part - block.parts.begin()));
        if (place + query.size() < end) {  // else it reaches into the next text
            if (part->handle != removed) found[part->handle] = true;
            from = end;
        } else {
            from = place + 1;
        }
    }
}

std::size_t FoldedTexts::bytes() const {
    std::size_t bytes = 0;
    for (const Block& block : blocks_) bytes += block.text.size();
    return bytes;
}

}  // namespace nettlecap
