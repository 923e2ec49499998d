#include "ui/qml/PreviewPlace.h"

#include "ui/PreviewPlacement.h"
#include "ui/qml/PreviewHost.h"
#include "ui/qml/QuickItems.h"
#include "ui/qml/ScreenPoints.h"

#include <algorithm>

namespace nettlecap {

PreviewPlace::PreviewPlace(QQuickWindow& panel, Ports ports) : panel_(panel), ports_(ports) {
    setParent(&panel);  // that is how it is found
    connect(&panel_, &QWindow::xChanged, this, &PreviewPlace::followPanel);
    connect(&panel_, &QWindow::yChanged, this, &PreviewPlace::followPanel);
    connect(&panel_, &QWindow::visibilityChanged, this, &PreviewPlace::handlePanelVisibility);
    // Wherever a row went, a frame shows it there.
    connect(&panel_, &QQuickWindow::afterAnimating, this, &PreviewPlace::followRow);
}

PreviewPlace::~PreviewPlace() { release(); }

PreviewPlace* PreviewPlace::of(const QQuickWindow* window) {
    return window ? window->findChild<PreviewPlace*>({}, Qt::FindDirectChildrenOnly) : nullptr;
}

void PreviewPlace::show(PreviewHost& host) {
    if (shown_ && shown_ != &host) disappear();
    if (!window_) makeWindow();
    shown_ = &host;
    QQmlEngine& engine = *qmlEngine(&host);
    auto content = makeItemOf(engine, *host.preview());
    auto frame =
        makeItem(engine, QStringLiteral("PreviewFrame"), {{"content", QVariant::fromValue(content.get())}});
    window_->setContent({.content = std::move(content), .frame = std::move(frame)});
    followPanel();
    window_->orderFront();
}

void PreviewPlace::close(PreviewHost& host) {
    if (shown_ != &host) return;
    shown_ = nullptr;
    window_->orderOut();
}

void PreviewPlace::release() {
    if (shown_) disappear();
    window_.reset();
}

void PreviewPlace::makeWindow() {
    window_ = std::make_unique<QuickPreview>(ports_.windows);
    connect(window_.get(), &QuickPreview::contentSizeChanged, this, &PreviewPlace::followRow);
    connect(window_.get(), &QuickPreview::hoverChanged, this, [this](bool inside) {
        if (shown_) shown_->handleHover(inside);
    });
    connect(window_.get(), &QWindow::visibleChanged, this, [this](bool isVisible) {
        if (!isVisible && shown_) disappear();
    });
}

void PreviewPlace::followPanel() {
    if (!shown_) return;
    visibleFrame_ = visibleFrameAround(panel_, ports_.screens);
    followRow();
}

/// Called for every frame of the panel.
void PreviewPlace::followRow() {
    if (!shown_ || !visibleFrame_) return;
    const QQuickItem& row = *shown_->anchor();
    const QRectF inPanel = row.mapRectToScene(QRectF({}, row.size()));
    const QPoint corner = panel_.mapToGlobal(inPanel.topLeft().toPoint());
    const QSizeF wanted = window_->contentSize();
    const Size size{wanted.width(), std::min(wanted.height(), visibleFrame_->size.height)};
    const PreviewPlacement placement{.row = fromQt({corner, inPanel.size().toSize()}),
                                     .panel = fromQt(panel_.frameGeometry()),
                                     .preview = size,
                                     .visibleFrame = *visibleFrame_};
    window_->setGeometry(toQt({.origin = placement.origin(), .size = size}));
}

void PreviewPlace::handlePanelVisibility() {
    const QWindow::Visibility visibility = panel_.visibility();
    if (shown_ && (visibility == QWindow::Hidden || visibility == QWindow::Minimized)) disappear();
}

void PreviewPlace::disappear() {
    PreviewHost* const host = shown_;
    shown_ = nullptr;
    window_->orderOut();
    host->handleDisappearance();
}

}  // namespace nettlecap
