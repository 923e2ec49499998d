#include "ui/qml/SheetPlace.h"

#include "ui/SheetPlacement.h"
#include "ui/qml/QuickItems.h"
#include "ui/qml/ScreenPoints.h"
#include "ui/qml/SheetHost.h"

namespace nettlecap {

namespace {

/// Goes with the next turn, or with its parent if there is none: a sheet is closed from within
/// events of its own.
struct Leaving : QObject {
    Leaving(std::unique_ptr<QuickSheet> gone, QObject& parent) : QObject(&parent), sheet(std::move(gone)) {
        deleteLater();
    }

    std::unique_ptr<QuickSheet> sheet;
};

}  // namespace

SheetPlace::SheetPlace(QQuickWindow& panel, Ports ports) : panel_(panel), ports_(ports) {
    setParent(&panel);  // that is how it is found
    connect(&panel_, &QWindow::xChanged, this, &SheetPlace::followPanel);
    connect(&panel_, &QWindow::yChanged, this, &SheetPlace::followPanel);
    connect(&panel_, &QWindow::visibleChanged, this, &SheetPlace::handlePanelVisibility);
}

SheetPlace* SheetPlace::of(const QQuickWindow* window) {
    return window ? window->findChild<SheetPlace*>({}, Qt::FindDirectChildrenOnly) : nullptr;
}

void SheetPlace::open(SheetHost& host) {
    if (window_) dismiss();
    host_ = &host;
    window_ =
        std::make_unique<QuickSheet>(panel_, ports_.windows, makeItemOf(*qmlEngine(&host), *host.view()));
    connect(window_.get(), &QWindow::activeChanged, this, &SheetPlace::activeChanged);
    connect(window_.get(), &QuickSheet::contentSizeChanged, this, &SheetPlace::followPanel);
    connect(window_.get(), &QuickSheet::closeRequested, &host, &SheetHost::closeRequested);
    panel_.installEventFilter(this);
    if (panel_.isVisible()) window_->orderFront();
}

void SheetPlace::close(SheetHost& host) {
    if (host_ == &host) dismiss();
}

void SheetPlace::dismiss() {
    panel_.removeEventFilter(this);
    window_->disconnect(this);
    host_ = nullptr;
    // A window is active as long as one that belongs to it is. The keyboard goes straight back,
    // and not to whatever a window manager chooses, or else the popover would close.
    const bool hasKeyboard = panel_.isVisible() && panel_.isActive();
    if (hasKeyboard) panel_.requestActivate();
    window_->hide();
    if (hasKeyboard) ports_.windows.bringToFront(panel_.winId());
    new Leaving(std::move(window_), *this);
}

void SheetPlace::followPanel() {
    if (!window_) return;
    const auto visibleFrame = visibleFrameAround(panel_, ports_.screens);
    if (!visibleFrame) return;
    const QSizeF wanted = window_->size();
    const Size size{wanted.width(), wanted.height()};
    const SheetPlacement placement{
        .panel = fromQt(panel_.geometry()), .sheet = size, .visibleFrame = *visibleFrame};
    window_->setPosition(toQt({.origin = placement.origin(), .size = size}).topLeft());
}

void SheetPlace::handlePanelVisibility() {
    if (!window_) return;
    if (!panel_.isVisible()) return window_->hide();
    // The panel is about to be shown, and comes first.
    QMetaObject::invokeMethod(this, "showOverPanel", Qt::QueuedConnection);
}

void SheetPlace::showOverPanel() {
    if (window_ && panel_.isVisible() && !window_->isVisible()) window_->orderFront();
}

bool SheetPlace::eventFilter(QObject* panel, QEvent* event) {
    switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
        // The window system may have given the panel the keyboard; the panel takes nothing.
        window_->takeKey(static_cast<const QKeyEvent&>(*event));
        return true;
    case QEvent::FocusIn:
    case QEvent::MouseButtonPress: window_->takeKeyboard(); break;
    default: break;
    }
    return QObject::eventFilter(panel, event);
}

}  // namespace nettlecap
