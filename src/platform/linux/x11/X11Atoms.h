#pragma once

#include "platform/Values.h"

#include <span>
#include <string>
#include <unordered_map>
#include <vector>
#include <xcb/xcb.h>

namespace nettlecap {

class X11Connection;

/// The server's table of names, kept on our side both ways: an atom, once made, stands for
/// its name as long as the server runs.
class X11Atoms {
public:
    using Names = std::vector<std::optional<std::string>>;

    explicit X11Atoms(X11Connection& connection) : connection_(connection) {}

    /// Makes all of them known with one wait for the server.
    void prefetch(std::span<const std::string_view> names);
    /// Waits for the server where the name was never seen before. 0 (XCB_ATOM_NONE) when
    /// the server is gone.
    xcb_atom_t of(std::string_view name);
    /// Asks for what isn't known yet and waits for nothing: the answer may come within the
    /// call or later. An atom without a name (a number somebody made up) is absent.
    void names(std::vector<xcb_atom_t> atoms, std::function<void(Names)> handler);

private:
    struct Question;

    void remember(xcb_atom_t atom, std::string_view name);

    X11Connection& connection_;
    std::unordered_map<std::string, xcb_atom_t> atoms_;
    std::unordered_map<xcb_atom_t, std::string> names_;
};

}  // namespace nettlecap
