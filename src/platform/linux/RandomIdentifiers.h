#pragma once

#include "platform/Identifiers.h"

namespace nettlecap {

/// From the kernel's random numbers.
class RandomIdentifiers final : public Identifiers {
public:
    Uuid next() override;
};

}  // namespace nettlecap
