#pragma once

#include "platform/StatusItem.h"

#include <QIcon>
#include <QRect>

class QSystemTrayIcon;

namespace nettlecap {

class TrayArrival;
class X11Connection;

/// The icon in the panel's tray, of the old kind (XEmbed) or the new one (StatusNotifierItem),
/// whichever the desktop has. It may come when the program has long been running, and go and
/// come again. Needs a QApplication.
class QtStatusItem final : public StatusItem {
public:
    /// The connection must outlive this.
    explicit QtStatusItem(X11Connection& connection);
    ~QtStatusItem() override;

    void setImage(const TemplateDrawing& image) override;
    void setToolTip(std::string_view text) override;
    /// A tray of the new kind shows the menu itself, in the panel's own style.
    void setMenu(Menu menu) override;
    void popUpMenu() override;

    Subscription onClick(std::function<void(StatusItemClick)> handler) override {
        return clicked_.subscribe(std::move(handler));
    }

    /// On the screen, as Qt has it. Empty: a tray of the new kind tells nobody.
    QRect geometry() const;

private:
    class EmbeddedIcon;
    class OwnMenu;

    void makeIcon();

    Signal<StatusItemClick> clicked_;
    QIcon image_;
    QString toolTip_;
    std::unique_ptr<OwnMenu> menu_;
    std::unique_ptr<EmbeddedIcon> embedded_;
    std::unique_ptr<QSystemTrayIcon> icon_;  // null: there is no tray yet
    std::unique_ptr<TrayArrival> trays_;
    Subscription arrival_;
};

}  // namespace nettlecap
