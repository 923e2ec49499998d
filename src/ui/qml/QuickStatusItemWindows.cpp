#include "ui/qml/QuickStatusItemWindows.h"

#include "ui/QtText.h"
#include "ui/qml/QuickItems.h"
#include "ui/qml/ScreenPoints.h"

namespace nettlecap {

namespace {

constexpr std::uint32_t clicks = static_cast<std::uint32_t>(InputKind::leftMouseDown) |
                                 static_cast<std::uint32_t>(InputKind::rightMouseDown);

}  // namespace

QuickStatusItemWindows::QuickStatusItemWindows(Ports ports, QQmlEngine& engine, ItemGeometry itemGeometry)
    : ports_(ports), engine_(engine), itemGeometry_(std::move(itemGeometry)) {}

/// At once, since the engine may go next.
QuickStatusItemWindows::~QuickStatusItemWindows() {
    delete menuWindow_.release();
    delete view_.release();
    delete toolTip_.release();
}

void QuickStatusItemWindows::popUpMenu(Menu& menu) {
    closeMenu();
    hideToolTip();
    if (menu.willOpen) menu.willOpen(menu);
    menu_ = &menu;
    view_.reset(new StatusItemMenu(menu, [this](std::optional<std::size_t> chosen) { close(chosen); }));
    QQmlEngine::setObjectOwnership(view_.get(), QQmlEngine::CppOwnership);
    menuWindow_.reset(new StatusItemWindow({.windows = ports_.windows, .screens = ports_.screens},
                                           makeItemOf(engine_, *view_)));
    menuWindow_->setTitle(view_->title());
    QObject::connect(menuWindow_.get(), &StatusItemWindow::keyPressed, view_.get(),
                     &StatusItemMenu::handleKey);
    QObject::connect(menuWindow_.get(), &StatusItemWindow::pressedOutside, view_.get(),
                     &StatusItemMenu::leave);
    menuWindow_->showBeside(itemPlace());
    if (menuWindow_->takeInput()) return;
    // It looks on while another program has the pointer.
    if (auto listening = ports_.events.addGlobal(clicks, [this](const InputEvent&) { closeMenu(); }))
        clicks_ = std::move(*listening);
}

void QuickStatusItemWindows::closeMenu() { close(std::nullopt); }

void QuickStatusItemWindows::close(std::optional<std::size_t> chosen) {
    Menu* const menu = std::exchange(menu_, nullptr);
    if (!menu) return;
    const Task action = chosen ? menu->items[*chosen].action : nullptr;
    clicks_.reset();
    menuWindow_->dismiss();
    menuWindow_.reset();
    view_.reset();
    if (menu->didClose) menu->didClose();
    if (action) action();
}

void QuickStatusItemWindows::showToolTip(std::string_view text) {
    if (menu_) return;
    toolTip_.reset(new StatusItemWindow(
        {.windows = ports_.windows, .screens = ports_.screens},
        makeItem(engine_, QStringLiteral("StatusItemToolTip"), {{"text", qtText(text)}})));
    toolTip_->setFlag(Qt::WindowTransparentForInput);
    toolTip_->showBeside(itemPlace());
}

void QuickStatusItemWindows::hideToolTip() {
    if (toolTip_) toolTip_->dismiss();
    toolTip_.reset();
}

Rect QuickStatusItemWindows::itemPlace() const {
    const QRect known = itemGeometry_();
    return known.isEmpty() ? Rect{.origin = ports_.screens.pointerLocation()} : fromQt(known);
}

}  // namespace nettlecap
