#pragma once

#include "platform/Keys.h"

#include <functional>
#include <optional>

namespace nettlecap {

using Status = std::int32_t;  ///< 0 is success; else the system's own code

struct HotKeyId {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;

    bool operator==(const HotKeyId&) const = default;
};

struct HotKeyEvent {
    static constexpr std::uint32_t pressed = 5;
    static constexpr std::uint32_t released = 6;

    std::uint32_t kind = pressed;
    Status idStatus = 0;  ///< not 0: the id could not be read
    HotKeyId id;
};

/// Bits of a request's modifiers. They are those of the Carbon event manager (Events.h).
namespace hotKeyModifier {
inline constexpr std::uint32_t command = 0x100;
inline constexpr std::uint32_t shift = 0x200;
inline constexpr std::uint32_t option = 0x800;
inline constexpr std::uint32_t control = 0x1000;
}  // namespace hotKeyModifier

struct HotKeyRequest {
    KeyCode keyCode = 0;
    std::uint32_t modifiers = 0;  ///< bits of `hotKeyModifier`
    HotKeyId id;

    bool operator==(const HotKeyRequest&) const = default;
};

/// The reference is absent where the status is not 0.
template <class Reference>
struct Registered {
    Status status = 0;
    std::optional<Reference> reference;
};

enum class HandlerReference : std::uint64_t {};
enum class HotKeyReference : std::uint64_t {};

/// Shortcuts that reach this program whatever is in front. Each physical press is told once
/// and so is its release, in their order: a key that repeats is not pressed again, and Caps
/// Lock and Num Lock make no difference.
class HotKeyService {
public:
    /// Answers whether the event was handled (0). Null: the event could not be read.
    using Handler = std::function<Status(const HotKeyEvent*)>;

    virtual ~HotKeyService() = default;

    virtual Registered<HandlerReference> installHandler(Handler handler) = 0;
    virtual void removeHandler(HandlerReference handler) = 0;
    /// Fails when the shortcut is another's, this program's earlier registration included.
    virtual Registered<HotKeyReference> registerHotKey(const HotKeyRequest& request) = 0;
    virtual void unregisterHotKey(HotKeyReference hotKey) = 0;

    /// Whether something was pressed or let go by now that the handler has not been told.
    virtual bool isBehind() = 0;
};

}  // namespace nettlecap
