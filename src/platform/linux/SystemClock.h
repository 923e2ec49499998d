#pragma once

#include "platform/Time.h"

namespace nettlecap {

/// Uptime stands still while the machine sleeps.
class SystemClock final : public Clock {
public:
    Date now() const override;
    Uptime uptime() const override;
};

}  // namespace nettlecap
