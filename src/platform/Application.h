#pragma once

#include "platform/Signal.h"

namespace nettlecap {

enum class OpenEvent {
    open,    ///< the desktop started the program because it was asked to open it
    reopen,  ///< it was asked to open it while it runs
};

/// This program in the eyes of the desktop.
class Application {
public:
    virtual ~Application() = default;

    virtual void beep() = 0;          ///< the system's sound for what can't be done
    virtual void setAccessory() = 0;  ///< no place among the running programs, no menu bar
    /// The icon that was installed under the name; where there is none, the symbol.
    virtual void setIcon(std::string_view name, std::string_view fallbackSymbol) = 0;
    virtual void terminate() = 0;  ///< in good order, soon after the call

    /// From the main loop, never during the call.
    [[nodiscard]] virtual Subscription onOpenEvent(std::function<void(OpenEvent)> handler) = 0;
};

}  // namespace nettlecap
