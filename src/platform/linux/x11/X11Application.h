#pragma once

#include "platform/Application.h"
#include "platform/linux/x11/X11Connection.h"

namespace nettlecap {

/// The desktop decides whether and how its bell sounds.
class X11Application final : public Application {
public:
    /// The connection must outlive this.
    explicit X11Application(X11Connection& connection) : connection_(connection) {}

    void beep() override;

private:
    X11Connection& connection_;
};

}  // namespace nettlecap
