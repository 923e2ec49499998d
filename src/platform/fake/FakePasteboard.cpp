#include "platform/fake/FakePasteboard.h"

#include <algorithm>
#include <cassert>

namespace nettlecap {

void FakePasteboard::copyFromOutside(const Offer& offer) {
    empty();
    types_.emplace();
    for (const auto& [type, bytes] : offer) types_->push_back(type);
    fetch(offer);
    ++changeCount_;
    changed_.emit();
}

void FakePasteboard::copyFromOutside(std::string text) {
    copyFromOutside(Offer{{PasteboardType(pasteboardType::text), Bytes(std::move(text))}});
}

void FakePasteboard::dropOwnership() {
    empty();
    ++changeCount_;
    changed_.emit();
}

void FakePasteboard::clearContents() {
    empty();
    types_.emplace();
    ++changeCount_;
}

bool FakePasteboard::write(PasteboardItem item) {
    assert(types_);
    if (writesFail_) return false;
    for (auto& form : item.forms) {
        types_->push_back(form.type);
        forms_.insert_or_assign(std::move(form.type), std::move(form.bytes));
    }
    return true;
}

std::optional<std::string> FakePasteboard::string(std::string_view type) const {
    const auto bytes = data(type);
    if (!bytes) return std::nullopt;
    return std::string(bytes->view());
}

std::optional<Bytes> FakePasteboard::data(std::string_view type) const {
    const auto found = forms_.find(type);
    if (found == forms_.end()) return std::nullopt;
    return found->second();
}

void FakePasteboard::empty() {
    types_.reset();
    forms_.clear();
}

void FakePasteboard::fetch(const Offer& offer) {
    const auto take = [&](const PasteboardType& type) {
        const auto found = std::ranges::find(offer, type, [](const auto& form) { return form.first; });
        if (found == offer.end() || !found->second) return false;
        forms_[type] = [bytes = found->second] { return bytes; };
        return true;
    };
    if (ignoresInterest_) {
        for (const auto& [type, bytes] : offer) take(type);
        return;
    }
    const auto isOffered = [&](const PasteboardType& type) { return std::ranges::count(*types_, type) > 0; };
    if (std::ranges::any_of(interest_.unlessOffered, isOffered)) return;
    for (const auto& group : interest_.groups) (void)std::ranges::any_of(group, take);
}

}  // namespace nettlecap
