#pragma once

#include "platform/Signal.h"

namespace nettlecap {

using KeyCode = std::uint32_t;        ///< virtual key code, by ANSI position
using ModifierFlags = std::uint64_t;  ///< bits of `modifier`

namespace modifier {
inline constexpr ModifierFlags shift = 1U << 17;
inline constexpr ModifierFlags control = 1U << 18;
inline constexpr ModifierFlags option = 1U << 19;
inline constexpr ModifierFlags command = 1U << 20;
}  // namespace modifier

namespace keyCode {
inline constexpr KeyCode x = 7;
inline constexpr KeyCode c = 8;
}  // namespace keyCode

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
