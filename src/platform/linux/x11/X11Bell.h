#pragma once

#include "platform/linux/x11/X11Connection.h"

namespace nettlecap {

/// The desktop decides whether and how its bell sounds.
class X11Bell {
public:
    /// The connection must outlive this.
    explicit X11Bell(X11Connection& connection) : connection_(connection) {}

    void ring();

private:
    X11Connection& connection_;
};

}  // namespace nettlecap
