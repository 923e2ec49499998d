#include "ui/ClipboardEntryRow.h"

#include "model/ClipboardTextLayout.h"
#include "model/RelativeDate.h"
#include "ui/ClipboardTextPreview.h"
#include "ui/EntryMetadataPopover.h"
#include "ui/ImagePreviewPopover.h"
#include "ui/PictureAddress.h"
#include "ui/QtText.h"
#include "ui/TextPreviewPopover.h"

#include <QQmlEngine>

namespace nettlecap {

ClipboardEntryRow::ClipboardEntryRow(Collaborators with, StoredEntry entry, Actions actions,
                                     bool isKeyboardSelected)
    : with_(with), entry_(std::move(entry)), actions_(std::move(actions)),
      isKeyboardSelected_(isKeyboardSelected),
      previewState_({.scheduler = with.scheduler, .identifiers = with.identifiers},
                    [this] { updatePreview(); }) {}

void ClipboardEntryRow::setRecord(const StoredEntry& entry) {
    if (entry.isSameRecord(entry_)) return;
    const bool isNewDate = entry->createdAt != entry_->createdAt;
    entry_ = entry;
    Q_EMIT entryChanged();
    if (isNewDate) Q_EMIT ageChanged();
    if (isShowingPreview()) updatePreview();
}

void ClipboardEntryRow::setKeyboardSelected(bool selected) {
    if (selected == isKeyboardSelected_) return;
    isKeyboardSelected_ = selected;
    Q_EMIT isKeyboardSelectedChanged();
    previewState_.handleKeyboardSelection(selected);
}

void ClipboardEntryRow::refreshAge() { Q_EMIT ageChanged(); }

void ClipboardEntryRow::refreshProtection() {
    if (!entry_->sensitiveKind) return;
    Q_EMIT entryChanged();
    if (isShowingPreview()) updatePreview();
}

void ClipboardEntryRow::handleRowClick(int clickCount) {
    const AppPreferences& preferences = *with_.app.preferences();
    const int threshold = preferences.pasteHistoryOnDoubleClick ? 2 : 1;
    const bool pastes = clickCount >= threshold && preferences.autoPaste;
    actions_.select();
    copy(pastes);
}

void ClipboardEntryRow::copy(bool pasteImmediately) const {
    const StoredEntry entry = entry_;  // the copying may replace the row's
    with_.app.copy(*entry, pasteImmediately);
}

void ClipboardEntryRow::toggleFavorite() {
    const StoredEntry entry = entry_;
    with_.app.toggleFavorite(*entry);
}

RowMenu ClipboardEntryRow::menu() {
    RowMenu menu;
    menu.add(QStringLiteral("Colar agora"), [this] { copy(true); })
        .add(QStringLiteral("Copiar"), [this] { copy(false); })
        .add(favoriteLabel(), [this] { toggleFavorite(); });
    if (entry_->kind == ClipboardContentKind::image)
        menu.add(QStringLiteral("Ver imagem"), [this] { previewState_.openManually(); });
    menu.addDivider().addDestructive(QStringLiteral("Excluir…"), [this] { actions_.requestDelete(*entry_); });
    return menu;
}

void ClipboardEntryRow::performMenuItem(int index) { menu().perform(index); }

void ClipboardEntryRow::pointerAt(QPointF position) {
    const bool cameFromElsewhere = with_.pointer.movesTo(position);
    if (std::exchange(isPointerUnderneath_, true)) return;
    if (cameFromElsewhere) handleRowHover(true);
}

void ClipboardEntryRow::pointerLeft() {
    isPointerUnderneath_ = false;
    if (previewState_.isPointerOverRow()) handleRowHover(false);
}

void ClipboardEntryRow::disappear() {
    isPointerUnderneath_ = false;
    previewState_.rowDisappeared();
}

QString ClipboardEntryRow::summary() const {
    return qtText(ClipboardTextPreview::summary(*entry_, isProtecting()));
}

QString ClipboardEntryRow::sourceApplication() const {
    return qtText(entry_->sourceApplication.value_or(""));
}

QString ClipboardEntryRow::age() const { return qtText(relativeDate(entry_->createdAt, with_.clock.now())); }

QString ClipboardEntryRow::symbol() const {
    if (entry_->kind == ClipboardContentKind::image) return QStringLiteral("photo");
    return ClipboardTextPreview::isMasked(*entry_, isProtecting()) ? QStringLiteral("lock.fill")
                                                                   : QStringLiteral("doc.text");
}

QUrl ClipboardEntryRow::thumbnail() const {
    if (!with_.app.store().imageFile(*entry_)) return {};
    return pictureAddress(pictureProvider, *entry_->imageFilename);
}

QString ClipboardEntryRow::favoriteSymbol() const {
    return isFavorite() ? QStringLiteral("star.fill") : QStringLiteral("star");
}

QString ClipboardEntryRow::favoriteLabel() const {
    return isFavorite() ? QStringLiteral("Remover dos favoritos") : QStringLiteral("Favoritar");
}

std::optional<std::string> ClipboardEntryRow::textPreview() const {
    if (entry_->kind == ClipboardContentKind::image) return std::nullopt;
    if (ClipboardTextPreview::isMasked(*entry_, isProtecting())) return entry_->maskedDescription();
    return ClipboardTextPreview::limited(entry_->text ? std::string_view(*entry_->text) : std::string_view());
}

bool ClipboardEntryRow::shouldShowTextContentPreview() const {
    if (entry_->kind == ClipboardContentKind::image) return false;
    return ClipboardTextLayout::isTruncated(ClipboardTextPreview::summary(*entry_, isProtecting()), textWidth,
                                            with_.text);
}

bool ClipboardEntryRow::hasImage() const {
    const auto file = with_.app.store().imageFile(*entry_);
    return entry_->kind == ClipboardContentKind::image && file && with_.images.isImage(*file);
}

void ClipboardEntryRow::updatePreview() {
    preview_.reset(previewState_.isShowing() ? makePreview().release() : nullptr);
    if (preview_) QQmlEngine::setObjectOwnership(preview_.get(), QQmlEngine::CppOwnership);
    Q_EMIT previewChanged();
}

std::unique_ptr<EntryPreviewPopover> ClipboardEntryRow::makePreview() {
    auto onHoverChanged = guard_([this](bool inside) { previewState_.handlePreviewHover(inside); });
    if (hasImage())
        return std::make_unique<ImagePreviewPopover>(*entry_->imageFilename, entry_, onHoverChanged);
    if (const auto text = textPreview(); text && shouldShowTextContentPreview())
        return std::make_unique<TextPreviewPopover>(*text, entry_, onHoverChanged);
    return std::make_unique<EntryMetadataPopover>(
        EntryMetadataPopover::Ports{.clock = with_.clock, .scheduler = with_.scheduler}, entry_,
        onHoverChanged);
}

}  // namespace nettlecap
