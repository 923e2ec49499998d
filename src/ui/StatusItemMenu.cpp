#include "ui/StatusItemMenu.h"

#include "ui/QtText.h"

namespace nettlecap {

namespace {

/// The key of a printable sign has the sign's own number, a capital letter's.
int keyOf(const MenuItem& item) {
    const QString sign = qtText(item.keyEquivalent).toUpper();
    return sign.isEmpty() ? 0 : sign.at(0).unicode();
}

StatusItemMenuLine lineOf(const MenuItem& item) {
    const QString sign = qtText(item.keyEquivalent).toUpper();
    return {.label = qtText(item.title),
            .keys = sign.isEmpty() ? QString() : QStringLiteral("Ctrl+") + sign,
            .isDivider = item.title.empty(),
            .isEnabled = item.isEnabled};
}

}  // namespace

StatusItemMenu::StatusItemMenu(const Menu& menu, Closed close)
    : title_(qtText(menu.title)), close_(std::move(close)) {
    for (const MenuItem& item : menu.items) {
        lines_.push_back(lineOf(item));
        keys_.push_back(keyOf(item));
    }
}

void StatusItemMenu::handleKey(int key, Qt::KeyboardModifiers modifiers) {
    if ((modifiers & ~Qt::KeypadModifier) == Qt::ControlModifier) {
        const auto wanted = std::find(keys_.begin(), keys_.end(), key);
        if (wanted != keys_.end()) choose(static_cast<int>(wanted - keys_.begin()));
        return;
    }
    switch (key) {
    case Qt::Key_Down:
    case Qt::Key_Tab: return step(current_, 1);
    case Qt::Key_Up:
    case Qt::Key_Backtab: return step(current_ < 0 ? count() : current_, -1);
    case Qt::Key_Home: return step(-1, 1);
    case Qt::Key_End: return step(count(), -1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space: return choose(current_);
    case Qt::Key_Escape: return leave();
    default: return;
    }
}

void StatusItemMenu::pointAt(int index) { setCurrent(canChoose(index) ? index : -1); }

void StatusItemMenu::choose(int index) {
    if (canChoose(index)) close(static_cast<std::size_t>(index));
}

void StatusItemMenu::leave() { close(std::nullopt); }

QVariantList StatusItemMenu::lines() const {
    QVariantList result;
    for (const StatusItemMenuLine& line : lines_) result << QVariant::fromValue(line);
    return result;
}

bool StatusItemMenu::canChoose(int index) const {
    if (index < 0 || index >= count()) return false;
    const StatusItemMenuLine& line = lines_[static_cast<std::size_t>(index)];
    return line.isEnabled && !line.isDivider;
}

/// Past the ends it goes on from the other one.
void StatusItemMenu::step(int from, int offset) {
    int next = from;
    for (int tried = 0; tried < count(); ++tried) {
        next = (next + offset + count()) % count();
        if (canChoose(next)) return setCurrent(next);
    }
}

void StatusItemMenu::setCurrent(int index) {
    if (std::exchange(current_, index) != index) Q_EMIT currentChanged();
}

void StatusItemMenu::close(std::optional<std::size_t> chosen) {
    if (const Closed close = std::exchange(close_, nullptr)) close(chosen);
}

}  // namespace nettlecap
