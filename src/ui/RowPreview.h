#pragma once

#include "platform/Identifiers.h"
#include "platform/Time.h"

namespace nettlecap {

/// When the preview of a row opens and closes: the pointer rests on the row, the keyboard
/// selects it, or a command asks for it. Nothing that waits is ever cancelled: it acts only
/// if the token that it was given is still the latest.
class RowPreview {
public:
    struct Ports {
        Scheduler& scheduler;
        Identifiers& identifiers;
    };

    static constexpr Seconds hoverDelay{0.3};
    static constexpr Seconds closeGrace{0.2};  ///< for the way from the row into the preview
    static constexpr Seconds selectionDelay{0.15};

    /// `changed` is told after the preview opened or closed.
    RowPreview(Ports ports, Task changed);

    void handleRowHover(bool inside);
    void handlePreviewHover(bool inside);
    void handleKeyboardSelection(bool selected);
    void openManually();  ///< stays until the pointer has entered the row afresh
    void dismiss();       ///< the preview has disappeared, by whoever's hand
    void rowDisappeared();

    bool isShowing() const { return isShowing_; }
    bool isPointerOverRow() const { return isPointerOverRow_; }

private:
    Uuid renewToken();
    void afterUnlessRenewed(Seconds delay, Task act);
    void scheduleHoverPreviewClose();
    void open(bool manually);

    Ports ports_;
    Task changed_;
    bool isShowing_ = false;
    bool wasOpenedManually_ = false;
    bool isPointerOverRow_ = false;
    bool isPointerOverPreview_ = false;
    bool isKeyboardSelected_ = false;
    Uuid requestID_;
    LifetimeGuard guard_;
};

}  // namespace nettlecap
