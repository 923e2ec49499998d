#include "ui/qml/QuickPopover.h"

#include "ui/PopoverPlacement.h"
#include "ui/qml/RoundedMask.h"
#include "ui/qml/ScreenPoints.h"

#include <QKeyEvent>

namespace nettlecap {

namespace {

constexpr double cornerRadius = 12;
constexpr double largestIcon = 48;

constexpr std::uint32_t clicks = static_cast<std::uint32_t>(InputKind::leftMouseDown) |
                                 static_cast<std::uint32_t>(InputKind::rightMouseDown);

}  // namespace

QuickPopover::QuickPopover(Ports ports, ItemGeometry itemGeometry)
    : ports_(ports), itemGeometry_(std::move(itemGeometry)),
      previews_(*this, {.windows = ports.windows, .screens = ports.screens}),
      sheets_(*this, {.windows = ports.windows, .screens = ports.screens}) {
    setFlags(Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint);
    setColor(Qt::transparent);
    connect(this, &QWindow::activeChanged, this, &QuickPopover::handleActivity);
    connect(&sheets_, &SheetPlace::activeChanged, this, &QuickPopover::handleActivity);
}

// Hidden, nothing more is told of its activity.
QuickPopover::~QuickPopover() { QuickPopover::close(); }

void QuickPopover::setContent(std::unique_ptr<HostedView> content) {
    previews_.release();
    if (content)
        content_.replace(std::move(content));
    else
        content_.drop();
}

void QuickPopover::setContentSize(Size size) {
    const QSize whole = toQt({.size = size}).size();
    setMinimumSize(whole);
    setMaximumSize(whole);
    resize(whole);
    content_.setSize(whole);
}

void QuickPopover::setTitle(std::string_view title) {
    QQuickWindow::setTitle(QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())));
}

void QuickPopover::showBelowStatusItem() {
    ++showing_;
    item_ = itemPlace();
    place();
    round();
    if (!isShown()) ports_.windows.keepOffTaskbars(winId());
    ports_.windows.prepareToShow(winId());
    show();
    raise();
    requestActivate();
    ports_.windows.bringToFront(winId());
    // Panels and desktops take clicks without taking the keyboard.
    if (auto listening =
            ports_.events.addGlobal(clicks, [this](const InputEvent&) { handleClickElsewhere(); }))
        clicks_ = std::move(*listening);
}

void QuickPopover::close() {
    clicks_.reset();
    hide();
}

Rect QuickPopover::itemPlace() const {
    const QRect known = itemGeometry_();
    if (!known.isEmpty()) return fromQt(known);
    const Point pointer = ports_.screens.pointerLocation();
    return {.origin = {pointer.x - largestIcon * 0.5, pointer.y - largestIcon * 0.5},
            .size = {largestIcon, largestIcon}};
}

void QuickPopover::place() {
    const Point middle{item_.origin.x + item_.size.width * 0.5, item_.origin.y + item_.size.height * 0.5};
    std::optional<Screen> screen;
    for (const Screen& each : ports_.screens.all())
        if (!screen && each.frame.contains(middle)) screen = each;
    if (!screen) screen = ports_.screens.main();
    if (!screen) return;
    const Size size{static_cast<double>(width()), static_cast<double>(height())};
    const PopoverPlacement placement{.item = item_, .popover = size, .visibleFrame = screen->visibleFrame};
    setPosition(toQt({.origin = placement.origin(), .size = size}).topLeft());
}

/// Where nothing is translucent the window itself is cut.
void QuickPopover::round() {
    const bool isComposited = ports_.windows.isComposited();
    setMask(isComposited ? QRegion() : RoundedMask{.margin = 0, .radius = cornerRadius}.of(size()));
    if (QQuickItem* item = content_.item()) item->setProperty("cornerRadius", cornerRadius);
}

void QuickPopover::handleActivity() {
    if (isActive() || !isShown()) return;
    if (!isPointerOnItem()) return close();
    // The press of a click on the item, which is to find this shown when it is told, or else
    // it would open it again.
    ports_.scheduler.after(itemPatience, guard_([this, showing = showing_] {
                               if (showing == showing_ && !isActive()) close();
                           }));
}

void QuickPopover::handleClickElsewhere() {
    if (!isPointerOnItem()) close();
}

bool QuickPopover::event(QEvent* event) {
    if (event->type() != QEvent::Close) return QQuickWindow::event(event);
    event->ignore();  // accepted, it would destroy the window of the window system
    close();
    return true;
}

void QuickPopover::keyPressEvent(QKeyEvent* event) {
    event->ignore();  // it comes accepted, and stays so where no item has the focus
    QQuickWindow::keyPressEvent(event);
    if (event->isAccepted() || event->key() != Qt::Key_Escape) return;
    event->accept();
    close();
}

}  // namespace nettlecap
