#include "platform/linux/QtStatusItem.h"

#include "platform/linux/TemplateIcon.h"
#include "platform/linux/TrayArrival.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QScreen>
#include <QSystemTrayIcon>
#include <QWindow>

namespace nettlecap {

namespace {

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// ⌘ in the menus of this desktop.
QKeySequence shortcutOf(const std::string& keyEquivalent) {
    if (keyEquivalent.empty()) return {};
    return QKeyCombination(Qt::ControlModifier, Qt::Key(text(keyEquivalent).at(0).toUpper().unicode()));
}

/// Below what it belongs to, or above where there is no room.
QPoint placeBeside(const QRect& item, QSize menu) {
    const QScreen* screen = QGuiApplication::screenAt(item.center());
    const bool fitsBelow = !screen || item.bottom() + menu.height() <= screen->geometry().bottom();
    return {item.left(), fitsBelow ? item.bottom() + 1 : item.top() - menu.height()};
}

}  // namespace

/// In a tray of the old kind the icon is a window of this program. Qt reports its clicks when
/// the button goes down, opens the menu then, and gives the icon the keyboard, which nobody
/// gets back. Here a click is told at the release, on the icon, and takes nothing.
class QtStatusItem::EmbeddedIcon : public QObject {
public:
    explicit EmbeddedIcon(const Signal<StatusItemClick>& clicked) : clicked_(clicked) {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        switch (event->type()) {
        case QEvent::WinIdChange:
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseButtonRelease:
            return watched->inherits("QSystemTrayIconSys") && take(static_cast<QWidget&>(*watched), *event);
        default: return false;
        }
    }

private:
    bool take(const QWidget& icon, const QEvent& event) {
        if (event.type() == QEvent::WinIdChange) {
            if (QWindow* window = icon.windowHandle()) window->setFlag(Qt::WindowDoesNotAcceptFocus);
            return false;
        }
        const auto& mouse = static_cast<const QMouseEvent&>(event);
        if (event.type() == QEvent::MouseButtonRelease)
            release(icon, mouse);
        else
            pressed_ = mouse.button();
        return true;
    }
    void release(const QWidget& icon, const QMouseEvent& event) {
        const Qt::MouseButton pressed = std::exchange(pressed_, Qt::NoButton);
        if (event.button() != pressed || !icon.rect().contains(event.position().toPoint())) return;
        if (pressed == Qt::LeftButton) clicked_.emit(StatusItemClick::left);
        if (pressed == Qt::RightButton) clicked_.emit(StatusItemClick::right);
    }

    Qt::MouseButton pressed_ = Qt::NoButton;
    const Signal<StatusItemClick>& clicked_;
};

/// Qt shows an action's keys in a menu that pops up, but does not hear them there.
class QtStatusItem::OwnMenu : public QMenu {
public:
    explicit OwnMenu(Menu described) : described_(std::move(described)) {
        setTitle(text(described_.title));
        setAccessibleName(title());
        for (const MenuItem& item : described_.items) addItem(item);
        connect(this, &QMenu::aboutToShow, this, [this] {
            if (described_.willOpen) described_.willOpen(described_);
            refresh();
        });
        connect(this, &QMenu::aboutToHide, this, [this] {
            if (described_.didClose) described_.didClose();
        });
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        QAction* const wanted = actionFor(event->keyCombination());
        if (!wanted) return QMenu::keyPressEvent(event);
        close();
        wanted->trigger();  // nothing where it is disabled
    }

private:
    void addItem(const MenuItem& item) {
        if (item.title.empty()) {
            addSeparator();
            return;
        }
        QAction* const action = addAction(text(item.title));
        action->setShortcut(shortcutOf(item.keyEquivalent));
        action->setShortcutContext(Qt::WidgetShortcut);  // while the menu is open, and never else
        action->setShortcutVisibleInContextMenu(true);
        action->setMenuRole(QAction::NoRole);
        action->setEnabled(item.isEnabled);
        connect(action, &QAction::triggered, this, [perform = item.action] {
            if (perform) perform();
        });
    }
    void refresh() {
        const auto lines = actions();
        for (qsizetype index = 0; index < lines.size(); ++index)
            lines[index]->setEnabled(described_.items[static_cast<std::size_t>(index)].isEnabled);
    }
    QAction* actionFor(QKeyCombination keys) const {
        for (QAction* action : actions())
            if (action->shortcut() == QKeySequence(keys)) return action;
        return nullptr;
    }

    Menu described_;
};

QtStatusItem::QtStatusItem(X11Connection& connection)
    : embedded_(std::make_unique<EmbeddedIcon>(clicked_)), trays_(std::make_unique<TrayArrival>(connection)),
      arrival_(trays_->onArrival([this] { makeIcon(); })) {}

QtStatusItem::~QtStatusItem() = default;

void QtStatusItem::makeIcon() {
    icon_ = std::make_unique<QSystemTrayIcon>(image_);
    icon_->setToolTip(toolTip_);
    // Trays of the new kind show no other, and never tell of a click with the right button.
    icon_->setContextMenu(menu_.get());
    QObject::connect(icon_.get(), &QSystemTrayIcon::activated, icon_.get(),
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger) clicked_.emit(StatusItemClick::left);
                         if (reason == QSystemTrayIcon::Context) clicked_.emit(StatusItemClick::right);
                     });
    icon_->show();
}

void QtStatusItem::setImage(const TemplateDrawing& image) {
    image_ = templateIcon(image);
    if (icon_) icon_->setIcon(image_);
}

void QtStatusItem::setToolTip(std::string_view toolTip) {
    toolTip_ = text(toolTip);
    if (icon_) icon_->setToolTip(toolTip_);
}

void QtStatusItem::setMenu(Menu menu) {
    auto own = std::make_unique<OwnMenu>(std::move(menu));
    if (icon_) icon_->setContextMenu(own.get());
    menu_ = std::move(own);
}

void QtStatusItem::popUpMenu() {
    if (!menu_) return;
    const QRect item = geometry();
    menu_->popup(item.isEmpty() ? QCursor::pos() : placeBeside(item, menu_->sizeHint()));
}

QRect QtStatusItem::geometry() const { return icon_ ? icon_->geometry() : QRect(); }

}  // namespace nettlecap
