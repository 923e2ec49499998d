#pragma once

#include "platform/Values.h"

namespace nettlecap {

/// Where fresh random identifiers (RFC 4122, version 4) come from.
class Identifiers {
public:
    virtual ~Identifiers() = default;

    virtual Uuid next() = 0;
};

}  // namespace nettlecap
