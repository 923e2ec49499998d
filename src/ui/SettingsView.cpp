#include "ui/SettingsView.h"

#include "model/FileSize.h"

#include <algorithm>

namespace nettlecap {

namespace {

QString counted(std::int64_t count, const char* one, const char* many) {
    return QString::number(count) + u' ' + QString::fromUtf8(count == 1 ? one : many);
}

}  // namespace

SettingsView::SettingsView(AppModel& app) : app_(app), canPaste_(app.canPaste()) {
    const auto edit = [this](const char* title, Shortcut field) {
        editors_.emplace_back(field, std::make_unique<ShortcutEditor>(
                                         QString::fromUtf8(title), (*app_.preferences()).*field,
                                         [this, field](const auto& shortcut) { set(field, shortcut); }));
    };
    edit("Item anterior", &AppPreferences::previousShortcut);
    edit("Item seguinte", &AppPreferences::nextShortcut);
    edit("Abrir Nettlecap", &AppPreferences::openSearchShortcut);
    edit("Alternar favorito", &AppPreferences::toggleFavoriteShortcut);

    changes_[0] = app_.preferences().subscribe([this] { showPreferences(); });
    changes_[1] = app_.launchAtLoginRequiresApproval().subscribe(
        [this] { Q_EMIT launchAtLoginRequiresApprovalChanged(); });
    changes_[2] = app_.store().storageUsage().subscribe([this] { Q_EMIT storageChanged(); });
}

void SettingsView::showPreferences() {
    for (const auto& [field, editor] : editors_) editor->setShortcut((*app_.preferences()).*field);
    Q_EMIT preferencesChanged();
}

void SettingsView::setMaxHistoryItems(double limit) {
    // Within what an integer can hold before it is one.
    setLimit(static_cast<std::int64_t>(std::clamp<double>(limit, smallestLimit, largestLimit)));
}

void SettingsView::setLimit(std::int64_t limit) {
    set(&AppPreferences::maxHistoryItems, std::clamp(limit, smallestLimit, largestLimit));
}

void SettingsView::stepMaxHistoryItems(int steps) {
    const std::int64_t limit = app_.preferences()->maxHistoryItems;
    if (steps > 0 ? limit >= largestLimit : limit <= smallestLimit) return;
    setLimit(limit + steps * limitStep);
}

void SettingsView::restoreDefaultShortcuts() {
    app_.updatePreferences([this](AppPreferences& preferences) {
        const AppPreferences defaults;
        for (const auto& [field, editor] : editors_) preferences.*field = defaults.*field;
    });
}

void SettingsView::refreshPermission() {
    const bool couldPaste = canPaste_;
    canPaste_ = app_.canPaste();
    if (canPaste_ != couldPaste) Q_EMIT canPasteChanged();
}

void SettingsView::setShowPurgeConfirmation(bool show) {
    if (show == showPurgeConfirmation_) return;
    showPurgeConfirmation_ = show;
    Q_EMIT showPurgeConfirmationChanged();
}

void SettingsView::purgeHistory() {
    setShowPurgeConfirmation(false);
    app_.purgeHistory();
}

QVariantList SettingsView::shortcuts() const {
    QVariantList result;
    for (const auto& [field, editor] : editors_) result << QVariant::fromValue(editor.get());
    return result;
}

QString SettingsView::limitLabel() const {
    return QStringLiteral("Limite do histórico: %1 itens").arg(app_.preferences()->maxHistoryItems);
}

QString SettingsView::usedSpace() const {
    return QString::fromStdString(fileSize(app_.store().storageUsage()->totalBytes));
}

QString SettingsView::storageSummary() const {
    const ClipboardStorageUsage& usage = *app_.store().storageUsage();
    return counted(usage.itemCount, "item", "itens") + QStringLiteral(" • ") +
           counted(usage.imageCount, "imagem", "imagens");
}

}  // namespace nettlecap
