#pragma once

#include "platform/linux/x11/TestClient.h"

#include <cstdint>

namespace nettlecap::test {

/// A panel that takes icons as windows (freedesktop.org, System Tray Protocol), at the top
/// left of the screen.
class EmbeddingTray final : public TestClient {
public:
    static constexpr std::uint16_t side = 24;  ///< of an icon

    enum class Kind { black, blue, translucent };

    explicit EmbeddingTray(Kind kind = Kind::black);

    /// The icon that it took last; none: nobody brought one.
    xcb_window_t icon() const { return icon_; }
    void resizeIcon(std::uint32_t width, std::uint32_t height);

protected:
    void handle(const xcb_generic_event_t& event) override;

private:
    xcb_window_t bar_;
    xcb_window_t icon_ = XCB_WINDOW_NONE;
};

}  // namespace nettlecap::test
