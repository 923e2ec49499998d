#pragma once

#include "platform/Signal.h"

namespace nettlecap {

/// In points; the origin of all coordinates is the bottom left of the primary screen.
struct Point {
    double x = 0;
    double y = 0;

    bool operator==(const Point&) const = default;
};

struct Size {
    double width = 0;
    double height = 0;

    bool operator==(const Size&) const = default;
};

struct Rect {
    Point origin;
    Size size;

    /// Its left and bottom edges are in it, the others are not.
    bool contains(Point point) const {
        return point.x >= origin.x && point.x < origin.x + size.width && point.y >= origin.y &&
               point.y < origin.y + size.height;
    }

    bool operator==(const Rect&) const = default;
};

struct Screen {
    Rect frame;
    Rect visibleFrame;  ///< without what docks and bars reserve on it

    bool operator==(const Screen&) const = default;
};

class Screens {
public:
    virtual ~Screens() = default;

    /// The one where the user works: with the window in front, else the primary one. Absent:
    /// there is no screen at all, or the system names none.
    virtual std::optional<Screen> main() const = 0;
    virtual std::vector<Screen> all() const = 0;
    virtual Point pointerLocation() const = 0;
};

/// A declarative view, built and ready for a window.
class HostedView {
public:
    virtual ~HostedView() = default;

    virtual double fittingHeight(double width) = 0;  ///< in points
};

enum class PanelKind {
    /// Without a title bar, on every desktop and above everything, over a full-screen window
    /// too; takes neither focus nor clicks and never brings the program to the front.
    card,
};

class Panel {
public:
    virtual ~Panel() = default;

    virtual void setContent(std::unique_ptr<HostedView> content) = 0;
    virtual void setContentSize(Size size) = 0;
    virtual void setOrigin(Point origin) = 0;  ///< of the bottom left corner
    virtual void orderFrontRegardless() = 0;   ///< shows it, whichever application is active
    virtual void orderOut() = 0;               ///< hides it; the content stays
    /// At once, and with all that was kept for it: hidden, and not from within the content.
    virtual void dropContent() = 0;

    virtual bool isVisible() const = 0;
};

/// A panel with a title bar, above ordinary windows and on every desktop, whichever
/// application is active. Escape, where the content leaves it alone, and the button that
/// closes it order it out and destroy nothing.
class TitledPanel : public Panel {
public:
    virtual void setTitle(std::string_view title) = 0;
    virtual void center() = 0;                ///< where the system thinks best
    virtual void makeKeyAndOrderFront() = 0;  ///< with the keyboard: activates the application

    /// By whatever ordered it out. The content may be in the middle of an event.
    [[nodiscard]] virtual Subscription onOrderedOut(Task handler) = 0;
};

class PanelFactory {
public:
    virtual ~PanelFactory() = default;

    virtual std::unique_ptr<Panel> makePanel(PanelKind kind) = 0;
    virtual std::unique_ptr<TitledPanel> makeTitledPanel() = 0;
};

/// The few touches that a toolkit's window needs from the window system, by its native id.
class NativeWindows {
public:
    virtual ~NativeWindows() = default;

    /// Before every showing of a window that has a title: it shall appear on every desktop
    /// and may have the keyboard, as if the user had just asked for it.
    virtual void prepareToShow(std::uint64_t window) = 0;
    /// Before every showing of a hidden window that no bar is to list, as part of another.
    virtual void keepOffTaskbars(std::uint64_t window) = 0;
    /// The same for a window over the one that it belongs to, which is not to have the keyboard
    /// while this is there.
    virtual void prepareToCover(std::uint64_t window) = 0;
    /// Shown: to the front and with the keyboard, whatever has it now.
    virtual void bringToFront(std::uint64_t window) = 0;

    /// Whether what is translucent in a window shows what is behind it, now.
    virtual bool isComposited() const = 0;
};

}  // namespace nettlecap
