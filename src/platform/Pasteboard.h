#pragma once

#include "platform/Signal.h"

#include <vector>

namespace nettlecap {

using PasteboardType = std::string;

namespace pasteboardType {
inline constexpr std::string_view text = "public.utf8-plain-text";
inline constexpr std::string_view png = "public.png";
inline constexpr std::string_view tiff = "public.tiff";
}  // namespace pasteboardType

/// One thing in several forms. A form's bytes are asked for when somebody wants them,
/// on a thread that is not the main one; absent means that this form can't be had.
struct PasteboardItem {
    struct Form {
        PasteboardType type;
        std::function<std::optional<Bytes>()> bytes;
    };

    std::vector<Form> forms;
};

/// What the reader is going to ask for, so that a backend whose reads take time can
/// fetch it before it tells of a change.
struct PasteboardInterest {
    std::vector<std::vector<PasteboardType>> groups;  ///< of each group, the first type that really arrives
    std::vector<PasteboardType> unlessOffered;        ///< where one of these is offered, nothing is fetched

    bool operator==(const PasteboardInterest&) const = default;
};

/// The general pasteboard. Reads answer at once, and from what belongs to the present
/// change count.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// Takes ownership and raises the change count.
    virtual void clearContents() = 0;
    /// Follows clearContents. False: the item is not on the pasteboard.
    virtual bool write(PasteboardItem item) = 0;
    virtual void setInterest(PasteboardInterest interest) = 0;

    virtual std::int64_t changeCount() const = 0;
    virtual std::optional<std::vector<PasteboardType>> types() const = 0;
    virtual std::optional<std::string> string(std::string_view type) const = 0;  ///< valid UTF-8
    virtual std::optional<Bytes> data(std::string_view type) const = 0;

    /// A hint that the change count was raised by somebody else: may come late, or never.
    virtual Subscription onChange(Task hint) = 0;
};

}  // namespace nettlecap
