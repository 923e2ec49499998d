#pragma once

#include "platform/Application.h"

namespace nettlecap {

/// Makes this process the session's only one: it owns the program's name on the session
/// bus and answers there as an org.freedesktop.Application. Where there is no bus, everybody
/// is the only one, and the lock on the history decides alone.
class SingleInstance {
public:
    /// Null: another process has the name, and was asked to show itself. Failure: it has
    /// the name and does not answer. Needs a QCoreApplication. What the bus told this process
    /// of itself is gone from the environment then: children were not started by it.
    static Result<std::unique_ptr<SingleInstance>> claim();
    ~SingleInstance();

    /// The bus starts a process in order to activate it: that is the open event. Whoever
    /// starts or activates the program after that finds it running.
    Subscription onOpenEvent(std::function<void(OpenEvent)> handler) const;

private:
    class BusObject;

    SingleInstance();

    std::unique_ptr<BusObject> object_;
};

}  // namespace nettlecap
