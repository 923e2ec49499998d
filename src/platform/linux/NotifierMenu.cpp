#include "platform/linux/NotifierMenu.h"

#include <QDBusError>

namespace nettlecap {

namespace {

QString text(const std::string& utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// An underscore says which letter chooses a line, two of them are one.
QString label(const std::string& title) { return text(title).replace(u'_', QStringLiteral("__")); }

QVariantMap propertiesOfRoot() { return {{"children-display", "submenu"}}; }

QVariantMap propertiesOfLine(const MenuItem& item) {
    if (item.title.empty()) return {{"type", "separator"}, {"visible", true}};
    QVariantMap result{{"label", label(item.title)}, {"enabled", item.isEnabled}, {"visible", true}};
    // ⌘ in the menus of this desktop is Ctrl.
    if (!item.keyEquivalent.empty())
        result["shortcut"] =
            QVariant::fromValue(QList<QStringList>{{QStringLiteral("Control"), text(item.keyEquivalent)}});
    return result;
}

std::vector<bool> enabledOnes(const Menu& menu) {
    std::vector<bool> result;
    for (const MenuItem& item : menu.items) result.push_back(item.isEnabled);
    return result;
}

}  // namespace

NotifierMenu::NotifierMenu(Menu& menu) : menu_(menu) {
    later_.setSingleShot(true);
    later_.callOnTimeout(this, [this] { chooseNext(); });
}

void NotifierMenu::menuChanged() {
    isOpen_ = false;
    Q_EMIT LayoutUpdated(++revision_, 0);
}

uint NotifierMenu::GetLayout(int parentId, int recursionDepth, const QStringList& propertyNames,
                             NotifierMenuLayout& layout) {
    if (!has(parentId)) {
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("no such item"));
        return revision_;
    }
    layout = {.id = parentId, .properties = propertiesOf(parentId, propertyNames), .children = {}};
    if (parentId != 0 || recursionDepth == 0) return revision_;
    for (int id = 1; has(id); ++id)
        layout.children << NotifierMenuLayout{
            .id = id, .properties = propertiesOf(id, propertyNames), .children = {}};
    return revision_;
}

/// Of all, where none is named.
NotifierMenuItems NotifierMenu::GetGroupProperties(const QList<int>& ids, const QStringList& propertyNames) {
    NotifierMenuItems result;
    for (int id = 0; ids.isEmpty() && has(id); ++id)
        result << NotifierMenuItem{.id = id, .properties = propertiesOf(id, propertyNames)};
    for (const int id : ids)
        if (has(id)) result << NotifierMenuItem{.id = id, .properties = propertiesOf(id, propertyNames)};
    return result;
}

QDBusVariant NotifierMenu::GetProperty(int id, const QString& name) {
    const QVariant value = has(id) ? propertiesOf(id, {name}).value(name) : QVariant();
    if (!value.isValid()) sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("no such property"));
    return QDBusVariant(value.isValid() ? value : QVariant(QString()));
}

void NotifierMenu::Event(int id, const QString& eventId, const QDBusVariant&, uint) {
    if (has(id))
        tell(id, eventId);
    else
        sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("no such item"));
}

/// Returns those that there are not.
QList<int> NotifierMenu::EventGroup(const NotifierMenuEvents& events) {
    QList<int> unknown;
    for (const NotifierMenuEvent& event : events) {
        if (has(event.id))
            tell(event.id, event.name);
        else
            unknown << event.id;
    }
    return unknown;
}

/// Whether it is to be read again: never, since what has changed is told by itself.
bool NotifierMenu::AboutToShow(int id) {
    if (!has(id)) sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("no such item"));
    if (id == 0) open();
    return false;
}

QList<int> NotifierMenu::AboutToShowGroup(const QList<int>& ids, QList<int>& idErrors) {
    for (const int id : ids) {
        if (!has(id)) idErrors << id;
        if (id == 0) open();
    }
    return {};
}

QVariantMap NotifierMenu::propertiesOf(int id, const QStringList& wanted) const {
    QVariantMap all =
        id == 0 ? propertiesOfRoot() : propertiesOfLine(menu_.items[static_cast<std::size_t>(id) - 1]);
    if (wanted.isEmpty()) return all;
    QVariantMap result;
    for (const QString& name : wanted)
        if (all.contains(name)) result[name] = all[name];
    return result;
}

void NotifierMenu::tell(int id, const QString& event) {
    if (event == QStringLiteral("clicked")) {
        // The panel has its answer first, whatever this does.
        chosen_.push_back(id);
        later_.start(0);
    } else if (id == 0 && event == QStringLiteral("opened")) {
        if (!isOpen_) open();
    } else if (id == 0 && event == QStringLiteral("closed")) {
        if (std::exchange(isOpen_, false) && menu_.didClose) menu_.didClose();
    }
}

/// Panels say that the menu opens before, after, or both; some ask long before.
void NotifierMenu::open() {
    const auto before = enabledOnes(menu_);
    isOpen_ = true;
    if (menu_.willOpen) menu_.willOpen(menu_);
    const auto after = enabledOnes(menu_);
    NotifierMenuItems changed;
    for (std::size_t index = 0; index < after.size(); ++index)
        if (after[index] != before[index])
            changed << NotifierMenuItem{.id = static_cast<int>(index) + 1,
                                        .properties = {{"enabled", static_cast<bool>(after[index])}}};
    if (!changed.isEmpty()) Q_EMIT ItemsPropertiesUpdated(changed, {});
}

void NotifierMenu::chooseNext() {
    const int id = chosen_.front();
    chosen_.pop_front();
    if (!chosen_.empty()) later_.start(0);
    choose(id);  // which may be the end of this
}

void NotifierMenu::choose(int id) {
    if (id == 0 || !has(id)) return;  // another menu has come meanwhile
    const MenuItem& item = menu_.items[static_cast<std::size_t>(id) - 1];
    const Task action = item.isEnabled ? item.action : nullptr;
    if (action) action();
}

}  // namespace nettlecap
