#include "platform/linux/x11/X11WindowTraits.h"

#include "platform/linux/x11/PropertyText.h"

#include <unistd.h>

#include <array>

namespace nettlecap {

namespace {

constexpr int longestChain = 16;  // of transient windows

/// Latin-1 by ICCCM, but toolkits write UTF-8 there.
std::string textOf(std::string_view bytes) {
    auto text = propertyText::validUtf8(bytes);
    return text == bytes ? text : propertyText::utf8FromLatin1(bytes);
}

/// Two strings, each with a zero behind it.
WindowClass classIn(std::string_view bytes) {
    const auto end = std::min(bytes.find('\0'), bytes.size());
    auto name = bytes.substr(std::min(end + 1, bytes.size()));
    name = name.substr(0, name.find('\0'));
    return {.instance = textOf(bytes.substr(0, end)), .name = textOf(name)};
}

/// Some write the host's name with its domain and some without.
bool isThisHost(std::string_view machine) {
    std::array<char, 256> buffer{};
    if (::gethostname(buffer.data(), buffer.size() - 1) != 0) return true;
    const std::string_view host(buffer.data());
    if (machine == host || machine == "localhost") return true;
    if (machine.find('.') != std::string_view::npos && host.find('.') != std::string_view::npos) return false;
    return machine.substr(0, machine.find('.')) == host.substr(0, host.find('.'));
}

}  // namespace

std::optional<X11WindowTraits> X11WindowTraits::read(X11Inquiry& inquiry, xcb_window_t window) {
    const auto existence = xcb_get_geometry(inquiry.xcb(), window).sequence;
    const auto process = inquiry.askProperty(window, "_NET_WM_PID");
    const auto windowClass = inquiry.askProperty(window, "WM_CLASS");
    const auto machine = inquiry.askProperty(window, "WM_CLIENT_MACHINE");
    const auto parent = inquiry.askProperty(window, "WM_TRANSIENT_FOR");

    const bool exists = inquiry.reply<xcb_get_geometry_reply_t>(existence) != nullptr;
    X11WindowTraits traits{
        .process = inquiry.propertyNumber(process),
        .windowClass = classIn(inquiry.propertyBytes(windowClass).value_or("")),
    };
    // Without a machine it is ours: the ones that leave it out know of no network.
    const auto machineName = inquiry.propertyBytes(machine);
    if (machineName && !isThisHost(machineName->c_str())) traits.process.reset();
    traits.transientFor = inquiry.propertyNumber(parent).value_or(XCB_WINDOW_NONE);
    if (!exists) return std::nullopt;
    return traits;
}

std::optional<X11WindowTraits> X11WindowTraits::readWithOwners(X11Inquiry& inquiry, xcb_window_t window) {
    auto traits = read(inquiry, window);
    if (!traits) return std::nullopt;
    for (int i = 0; i < longestChain && traits->transientFor != XCB_WINDOW_NONE; ++i) {
        if (traits->process && traits->hasClass()) break;
        const auto owner = read(inquiry, traits->transientFor);
        if (!owner) break;
        if (!traits->process) traits->process = owner->process;
        if (!traits->hasClass()) traits->windowClass = owner->windowClass;
        traits->transientFor = owner->transientFor;
    }
    return traits;
}

}  // namespace nettlecap
