#pragma once

#include "platform/Signal.h"

namespace nettlecap {

/// Makes this process the session's only one: it owns the program's name on the session
/// bus and answers there as an org.freedesktop.Application. Where there is no bus, everybody
/// is the only one, and the lock on the history decides alone.
class SingleInstance {
public:
    /// Null: another process has the name, and was asked to show itself. Failure: it has
    /// the name and does not answer. Needs a QCoreApplication.
    static Result<std::unique_ptr<SingleInstance>> claim();
    ~SingleInstance();

    /// Somebody started the program again.
    Subscription onActivate(Task handler) const;

private:
    class BusObject;

    SingleInstance();

    std::unique_ptr<BusObject> object_;
};

}  // namespace nettlecap
