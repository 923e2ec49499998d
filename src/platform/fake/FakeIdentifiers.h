#pragma once

#include "platform/Identifiers.h"

namespace nettlecap {

/// Version 4 in form, but counted: 00000000-0000-4000-8000-000000000001, then …2.
class FakeIdentifiers final : public Identifiers {
public:
    Uuid next() override { return nth(++count_); }

    static Uuid nth(std::uint64_t n) { return {.high = 0x4000U, .low = 0x8000'0000'0000'0000U | n}; }

private:
    std::uint64_t count_ = 0;
};

}  // namespace nettlecap
