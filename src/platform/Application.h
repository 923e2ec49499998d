#pragma once

namespace nettlecap {

/// This program in the eyes of the desktop.
class Application {
public:
    virtual ~Application() = default;

    virtual void beep() = 0;  ///< the system's sound for what can't be done
};

}  // namespace nettlecap
