#pragma once

#include "ui/qml/QuickSheet.h"

#include <QPointer>

namespace nettlecap {

class SheetHost;

/// Where the sheet of a panel's content is: over the panel, in a window that is made for this
/// sheet and goes with it. While it is there the keyboard is its own, whichever of the two
/// windows is in front; a panel that is hidden hides it too, and shows it again.
class SheetPlace : public QObject {
    Q_OBJECT

public:
    struct Ports {
        NativeWindows& windows;
        const Screens& screens;
    };

    /// The place of the panel from now on. The ports and the panel must outlive it.
    SheetPlace(QQuickWindow& panel, Ports ports);

    /// Null: the window has none.
    static SheetPlace* of(const QQuickWindow* window);

    void open(SheetHost& host);   ///< instead of any other
    void close(SheetHost& host);  ///< nothing if the sheet isn't its own

    QuickSheet* window() const { return window_.get(); }  ///< null: there is no sheet

Q_SIGNALS:
    void activeChanged();  ///< the sheet's; with it the panel is active too, which Qt doesn't tell

protected:
    bool eventFilter(QObject* panel, QEvent* event) override;

private:
    void followPanel();
    void handlePanelVisibility();
    Q_INVOKABLE void showOverPanel();
    void dismiss();

    QQuickWindow& panel_;
    Ports ports_;
    QPointer<SheetHost> host_;
    std::unique_ptr<QuickSheet> window_;
};

}  // namespace nettlecap
