#include "ui/RowMenu.h"

namespace nettlecap {

RowMenu& RowMenu::add(const QString& label, Task action) {
    lines_.push_back({.item = {.label = label}, .action = std::move(action)});
    return *this;
}

RowMenu& RowMenu::addDivider() {
    lines_.push_back({.item = {.isDivider = true}, .action = nullptr});
    return *this;
}

RowMenu& RowMenu::addDestructive(const QString& label, Task action) {
    lines_.push_back({.item = {.label = label, .isDestructive = true}, .action = std::move(action)});
    return *this;
}

QVariantList RowMenu::items() const {
    QVariantList items;
    for (const Line& line : lines_) items << QVariant::fromValue(line.item);
    return items;
}

void RowMenu::perform(int index) const {
    if (index < 0 || static_cast<std::size_t>(index) >= lines_.size()) return;
    const Task& action = lines_[static_cast<std::size_t>(index)].action;
    if (action) action();
}

}  // namespace nettlecap
