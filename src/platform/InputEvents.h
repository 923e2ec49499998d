#pragma once

#include "platform/Keys.h"
#include "platform/Signal.h"

namespace nettlecap {

/// The values are the bits of a monitor's mask.
enum class InputKind : std::uint32_t {
    leftMouseDown = 1U << 1,
    rightMouseDown = 1U << 3,
    keyDown = 1U << 10,
};

struct InputEvent {
    InputKind kind = InputKind::keyDown;
    ModifierFlags flags = 0;
    KeyCode keyCode = 0;

    bool operator==(const InputEvent&) const = default;
};

/// Looks at keys and clicks without taking them. Of the keys only the copy gestures are
/// sure to be told, in the terms of ⌘C and ⌘X whatever the desktop calls them: a backend
/// tells no more of what people type than is asked of it.
class EventMonitors {
public:
    using Handler = std::function<void(const InputEvent&)>;

    virtual ~EventMonitors() = default;

    /// Events sent to other applications only. Absent: the system refuses.
    virtual std::optional<Subscription> addGlobal(std::uint32_t mask, Handler handler) = 0;
    /// Events sent to this program's windows, which go on unchanged. Absent: the system refuses.
    virtual std::optional<Subscription> addLocal(std::uint32_t mask, Handler handler) = 0;
};

}  // namespace nettlecap
