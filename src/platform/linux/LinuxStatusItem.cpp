#include "platform/linux/LinuxStatusItem.h"

#include "platform/linux/TemplateIcon.h"
#include "platform/linux/x11/X11Pixels.h"

#include <QGuiApplication>
#include <QtEndian>

namespace nettlecap {

namespace {

constexpr const char* programName = "Nettlecap";

NotifierPicture inProtocolForm(const QImage& image) {
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
    NotifierPicture result{.width = pixels.width(), .height = pixels.height(), .pixels = {}};
    result.pixels.resize(pixels.sizeInBytes());
    qToBigEndian<QRgb>(pixels.constBits(), pixels.sizeInBytes() / qsizetype{sizeof(QRgb)},
                       result.pixels.data());
    return result;
}

}  // namespace

LinuxStatusItem::LinuxStatusItem(X11Connection& connection, Scheduler& scheduler)
    : connection_(connection), scheduler_(scheduler) {
    trays_.push_back(host_.onChange([this] { followHost(); }));
    auto tray = X11EmbeddingTray::open(connection);
    if (!tray) return;  // icons of the new kind need none
    tray_ = std::move(*tray);
    trays_.push_back(tray_->onArrival([this] { embedSoon(); }));
    trays_.push_back(tray_->onDeparture([this] {
        hover(false);
        embedded_.reset();
    }));
}

LinuxStatusItem::~LinuxStatusItem() = default;

Subscription LinuxStatusItem::showIn(StatusItemWindows& windows) {
    windows_ = &windows;
    return Subscription([this] { windows_ = nullptr; });
}

void LinuxStatusItem::followHost() {
    const bool isFirst = !std::exchange(hasChosen_, true);
    if (host_.isThere().value_or(false)) return notify();
    notifier_.reset();
    if (isFirst)
        embed();
    else
        embedSoon();  // it may be another panel's turn
}

void LinuxStatusItem::notify() {
    hover(false);
    embedded_.reset();
    notifier_ = std::make_unique<NotifierItem>(QString::fromLatin1(programName), menu_);
    notifier_->setPictures(pictures());
    notifier_->setToolTip(QString::fromStdString(toolTip_));
    told_.clear();
    told_.push_back(notifier_->onClick([this](StatusItemClick click) { clicked_.emit(click); }));
    notifier_->announce();
}

void LinuxStatusItem::embedSoon() {
    scheduler_.after(panelPatience, guard_([this, wait = ++waits_] {
                         if (wait == waits_) embed();
                     }));
}

void LinuxStatusItem::embed() {
    if (!hasChosen_ || notifier_ || !tray_) return;
    embedded_.reset();
    const xcb_window_t tray = tray_->window();
    if (tray == XCB_WINDOW_NONE) return;
    embedded_ = std::make_unique<X11EmbeddedIcon>(
        connection_, tray, X11EmbeddedIcon::Look{.name = programName, .picture = [this](int side) {
                                                     return image_.pixmap(QSize(side, side), 1).toImage();
                                                 }});
    told_.clear();
    told_.push_back(embedded_->onClick([this](StatusItemClick click) { clicked_.emit(click); }));
    told_.push_back(embedded_->onHover([this](bool isInside) { hover(isInside); }));
}

void LinuxStatusItem::hover(bool isInside) {
    const std::int64_t hovering = ++hovers_;
    if (windows_) windows_->hideToolTip();
    if (!isInside || toolTip_.empty()) return;
    scheduler_.after(toolTipDelay, guard_([this, hovering] {
                         if (hovering == hovers_ && windows_) windows_->showToolTip(toolTip_);
                     }));
}

NotifierPictures LinuxStatusItem::pictures() const {
    NotifierPictures result;
    for (const QSize size : image_.availableSizes())
        result << inProtocolForm(image_.pixmap(size, 1).toImage());
    return result;
}

void LinuxStatusItem::setImage(const TemplateDrawing& image) {
    image_ = templateIcon(image);
    if (notifier_) notifier_->setPictures(pictures());
    if (embedded_) embedded_->repaint();
}

void LinuxStatusItem::setToolTip(std::string_view text) {
    toolTip_ = text;
    if (notifier_) notifier_->setToolTip(QString::fromStdString(toolTip_));
}

void LinuxStatusItem::setMenu(Menu menu) {
    if (windows_) windows_->closeMenu();
    menu_ = std::move(menu);
    if (notifier_) notifier_->menuChanged();
}

void LinuxStatusItem::popUpMenu() {
    if (windows_ && !menu_.items.empty()) windows_->popUpMenu(menu_);
}

QRect LinuxStatusItem::geometry() const {
    const QRect pixels = embedded_ ? embedded_->geometry() : QRect();
    const QScreen* const screen = screenAtPixel(pixels.center());
    return pixels.isEmpty() || !screen ? QRect() : inPoints(pixels, *screen).toAlignedRect();
}

}  // namespace nettlecap
