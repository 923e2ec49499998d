#pragma once

#include "platform/Pasteboard.h"

#include <map>

namespace nettlecap {

/// A pasteboard in memory. Of a copy made outside it holds what the interest of that moment
/// asked for and no more, as the backends do whose reads take time. Texts copied into it
/// must be valid UTF-8.
class FakePasteboard final : public Pasteboard {
public:
    /// A type whose bytes are absent is offered and never arrives.
    using Offer = std::vector<std::pair<PasteboardType, std::optional<Bytes>>>;

    void copyFromOutside(const Offer& offer);
    void copyFromOutside(std::string text);  ///< as plain text
    void dropOwnership();                    ///< somebody else's clearing: no types, no contents
    void setWritesFail(bool fail) { writesFail_ = fail; }
    void setIgnoresInterest(bool ignores) { ignoresInterest_ = ignores; }  ///< holds all that is offered

    const PasteboardInterest& interest() const { return interest_; }

    void clearContents() override;
    bool write(PasteboardItem item) override;
    void setInterest(PasteboardInterest interest) override { interest_ = std::move(interest); }

    std::int64_t changeCount() const override { return changeCount_; }
    std::optional<std::vector<PasteboardType>> types() const override { return types_; }
    std::optional<std::string> string(std::string_view type) const override;
    std::optional<Bytes> data(std::string_view type) const override;
    Subscription onChange(Task hint) override { return changed_.subscribe(std::move(hint)); }

private:
    void empty();
    void fetch(const Offer& offer);

    std::int64_t changeCount_ = 0;
    std::optional<std::vector<PasteboardType>> types_;
    std::map<PasteboardType, std::function<std::optional<Bytes>()>, std::less<>> forms_;
    PasteboardInterest interest_;
    bool writesFail_ = false;
    bool ignoresInterest_ = false;
    Signal<> changed_;
};

}  // namespace nettlecap
