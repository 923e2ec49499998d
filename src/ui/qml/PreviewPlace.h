#pragma once

#include "platform/Windows.h"
#include "ui/qml/QuickPreview.h"

#include <QPointer>

namespace nettlecap {

class PreviewHost;

/// Where the previews of a panel's rows are shown: one at a time, in one window that is made
/// at the first and goes with the panel's content.
class PreviewPlace : public QObject {
    Q_OBJECT

public:
    struct Ports {
        const NativeWindows& windows;
        const Screens& screens;
    };

    /// The place of the panel from now on. The ports and the panel must outlive it.
    PreviewPlace(QQuickWindow& panel, Ports ports);
    ~PreviewPlace() override;

    /// Null: the window has none.
    static PreviewPlace* of(const QQuickWindow* window);

    void show(PreviewHost& host);   ///< instead of any other
    void close(PreviewHost& host);  ///< nothing if it isn't shown
    void release();                 ///< nothing stays of it

    const QuickPreview* window() const { return window_.get(); }

private:
    void makeWindow();
    void followPanel();
    void followRow();
    void handlePanelVisibility();
    void disappear();

    QQuickWindow& panel_;
    Ports ports_;
    QPointer<PreviewHost> shown_;
    std::optional<Rect> visibleFrame_;  ///< of the panel's screen, while a preview is shown
    std::unique_ptr<QuickPreview> window_;
};

}  // namespace nettlecap
