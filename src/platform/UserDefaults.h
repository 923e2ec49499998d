#pragma once

#include "platform/Values.h"

namespace nettlecap {

/// The user's settings for this program: a blob for each key, for this user alone to read.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// Replaces what the key had, wholly or not at all. A failure leaves the old value and is
    /// not told: the program goes on with what it has in memory.
    virtual void setData(std::string_view key, const Bytes& data) = 0;

    virtual std::optional<Bytes> data(std::string_view key) const = 0;
};

}  // namespace nettlecap
