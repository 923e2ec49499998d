#include "ui/RowPreview.h"

namespace nettlecap {

RowPreview::RowPreview(Ports ports, Task changed)
    : ports_(ports), changed_(std::move(changed)), requestID_(ports.identifiers.next()) {}

Uuid RowPreview::renewToken() { return requestID_ = ports_.identifiers.next(); }

void RowPreview::afterUnlessRenewed(Seconds delay, Task act) {
    ports_.scheduler.after(delay, guard_([this, token = renewToken(), act = std::move(act)] {
                               if (token == requestID_) act();
                           }));
}

void RowPreview::handleRowHover(bool inside) {
    isPointerOverRow_ = inside;
    renewToken();
    if (!inside) {
        scheduleHoverPreviewClose();
        return;
    }
    afterUnlessRenewed(hoverDelay, [this] {
        if (isPointerOverRow_) open(false);
    });
}

void RowPreview::handlePreviewHover(bool inside) {
    isPointerOverPreview_ = inside;
    if (!inside) scheduleHoverPreviewClose();
}

void RowPreview::scheduleHoverPreviewClose() {
    if (wasOpenedManually_ || isKeyboardSelected_) return;
    afterUnlessRenewed(closeGrace, [this] {
        if (!isPointerOverRow_ && !isPointerOverPreview_) dismiss();
    });
}

void RowPreview::handleKeyboardSelection(bool selected) {
    isKeyboardSelected_ = selected;
    renewToken();
    if (selected) {
        afterUnlessRenewed(selectionDelay, [this] {
            if (isKeyboardSelected_) open(false);
        });
    } else if (!isPointerOverRow_ && !isPointerOverPreview_ && !wasOpenedManually_) {
        dismiss();
    }
}

void RowPreview::openManually() { open(true); }

void RowPreview::open(bool manually) {
    wasOpenedManually_ = manually;
    if (std::exchange(isShowing_, true)) return;
    changed_();
}

void RowPreview::dismiss() {
    wasOpenedManually_ = false;
    isPointerOverPreview_ = false;
    if (std::exchange(isShowing_, false)) changed_();
}

void RowPreview::rowDisappeared() {
    renewToken();
    isPointerOverRow_ = false;
    dismiss();
}

}  // namespace nettlecap
