#pragma once

#include "platform/Values.h"

namespace nettlecap {

enum class LoginItemStatus {
    notRegistered,
    enabled,
    requiresApproval,  ///< the user switched it off in the system's own settings
    notFound,          ///< there is nothing that the system could start
    unknown,
};

/// The program's start with the session, as the system knows it.
class LoginItem {
public:
    virtual ~LoginItem() = default;

    virtual LoginItemStatus status() const = 0;
    virtual Result<Done> registerItem() = 0;
    virtual Result<Done> unregisterItem() = 0;
    /// Where the user allows programs to start with the session.
    virtual void openSystemSettings() = 0;
};

}  // namespace nettlecap
