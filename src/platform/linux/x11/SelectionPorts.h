#pragma once

#include "platform/Time.h"
#include "platform/linux/x11/X11Connection.h"

namespace nettlecap {

/// What every part of the pasteboard works with. All must outlive the part.
struct SelectionPorts {
    X11Connection& connection;
    Scheduler& scheduler;
    Clock& clock;
    BackgroundWork& background;
};

}  // namespace nettlecap
