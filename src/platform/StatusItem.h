#pragma once

#include "platform/Windows.h"

namespace nettlecap {

/// Black shapes on nothing, in points, for the system to tint.
struct TemplateDrawing {
    struct RoundedRectangle {
        Rect frame;
        double radius = 0;
        double lineWidth = 0;  ///< 0: filled

        bool operator==(const RoundedRectangle&) const = default;
    };

    /// An open line, with round caps and joins.
    struct Stroke {
        std::vector<Point> points;
        double lineWidth = 0;

        bool operator==(const Stroke&) const = default;
    };

    Size size;  ///< the origin is its bottom left corner
    std::vector<RoundedRectangle> rectangles;
    std::vector<Stroke> strokes;

    bool operator==(const TemplateDrawing&) const = default;
};

struct MenuItem {
    std::string title;          ///< empty: a separator
    std::string keyEquivalent;  ///< one key, pressed with ⌘ while the menu is open; or empty
    Task action;
    bool isEnabled = true;
};

struct Menu {
    std::string title;
    std::vector<MenuItem> items;
    std::function<void(Menu&)> willOpen;  ///< may change what is enabled
    Task didClose;
};

enum class StatusItemClick { left, right };

/// The program's icon among those of the system. Where the system shows none, or none yet,
/// everything works and nobody clicks.
class StatusItem {
public:
    virtual ~StatusItem() = default;

    virtual void setImage(const TemplateDrawing& image) = 0;
    virtual void setToolTip(std::string_view text) = 0;
    /// The menu belongs to the item from then on. Some systems open it by themselves at a
    /// right click and report none: `willOpen` tells of both ways.
    virtual void setMenu(Menu menu) = 0;
    virtual void popUpMenu() = 0;

    /// At the release of the button.
    [[nodiscard]] virtual Subscription onClick(std::function<void(StatusItemClick)> handler) = 0;
};

/// What a status item shows in windows of this program, where the system shows neither its
/// menu nor its tool tip.
class StatusItemWindows {
public:
    virtual ~StatusItemWindows() = default;

    /// Beside the item, with the keyboard and the pointer for itself alone. Asks `willOpen`
    /// first, and what is chosen acts once the menu is closed and `didClose` has been told.
    /// The menu must stay until it is closed.
    virtual void popUpMenu(Menu& menu) = 0;
    virtual void closeMenu() = 0;

    virtual void showToolTip(std::string_view text) = 0;
    virtual void hideToolTip() = 0;
};

/// Hangs from the status item and closes when the user goes elsewhere: a click, another
/// window, Escape where the content leaves it alone. The click on the status item that takes
/// the keyboard from it finds it shown, so that the click closes it.
class Popover {
public:
    virtual ~Popover() = default;

    virtual void setContent(std::unique_ptr<HostedView> content) = 0;  ///< null: drops it
    virtual void setContentSize(Size size) = 0;
    virtual void setTitle(std::string_view title) = 0;
    virtual void showBelowStatusItem() = 0;  ///< with the keyboard in it
    virtual void close() = 0;                ///< the content stays

    virtual bool isShown() const = 0;
};

}  // namespace nettlecap
