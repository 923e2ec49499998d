#pragma once

#include "platform/HotKeyService.h"
#include "platform/linux/x11/X11KeyTable.h"

#include <compare>
#include <map>
#include <set>

namespace nettlecap {

/// A key with exactly these modifiers, in X's bits, those that lock included.
struct KeyGrab {
    xcb_keycode_t key = 0;
    std::uint16_t modifiers = 0;

    // NOLINTNEXTLINE(modernize-use-nullptr): clang-tidy 14 means the 0 of a rewritten comparison
    auto operator<=>(const KeyGrab&) const = default;
};

using KeyGrabs = std::set<KeyGrab>;

/// The keys that go to this program whatever is in front, each for one hot key. They never
/// freeze the keyboard.
class X11KeyGrabs {
public:
    static constexpr Status badValue = 2;
    static constexpr Status badAccess = 10;
    static constexpr Status unanswered = 110;  ///< ETIMEDOUT; the server's own codes are smaller

    X11KeyGrabs(X11Connection& connection, X11KeyTable& table) : connection_(connection), table_(table) {}

    /// All of them or none. The status is X's code of the error, badAccess where another
    /// program or hot key has one of them, or `unanswered`.
    Status take(const KeyGrabs& grabs, HotKeyReference hotKey);
    void giveUp(HotKeyReference hotKey);
    /// What each hot key is to have now. Those that stay are not touched; one that cannot have
    /// all that it wants keeps nothing.
    void arrange(const std::map<HotKeyReference, KeyGrabs>& wanted);

    std::optional<HotKeyReference> ownerOf(const KeyGrab& grab) const;
    /// Those that have one of these grabs, whatever modifiers that lock there are besides.
    std::set<HotKeyReference> ownersOf(const KeyGrabs& grabs, std::uint32_t locks) const;

private:
    Status grab(const KeyGrabs& grabs);
    void ungrab(const KeyGrabs& grabs);
    KeyGrabs of(HotKeyReference hotKey) const;

    X11Connection& connection_;
    X11KeyTable& table_;
    std::map<KeyGrab, HotKeyReference> owners_;
};

}  // namespace nettlecap
