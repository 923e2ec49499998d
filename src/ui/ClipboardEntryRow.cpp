#include "ui/ClipboardEntryRow.h"

#include "model/RelativeDate.h"
#include "ui/ClipboardTextPreview.h"

namespace nettlecap {

namespace {

QString shown(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

ClipboardEntryRow::ClipboardEntryRow(Collaborators with, StoredEntry entry, Task select)
    : with_(with), entry_(std::move(entry)), select_(std::move(select)) {}

void ClipboardEntryRow::setEntry(const StoredEntry& entry) {
    if (entry.isSameRecord(entry_)) return;
    const bool isNewDate = entry->createdAt != entry_->createdAt;
    entry_ = entry;
    Q_EMIT entryChanged();
    if (isNewDate) Q_EMIT ageChanged();
}

void ClipboardEntryRow::setKeyboardSelected(bool selected) {
    if (selected == isKeyboardSelected_) return;
    isKeyboardSelected_ = selected;
    Q_EMIT isKeyboardSelectedChanged();
}

void ClipboardEntryRow::refreshAge() { Q_EMIT ageChanged(); }

void ClipboardEntryRow::refreshProtection() {
    if (entry_->sensitiveKind) Q_EMIT entryChanged();
}

void ClipboardEntryRow::handleRowClick() {
    select_();
    with_.app.copy(*entry_);
}

bool ClipboardEntryRow::isProtected() const {
    return entry_->sensitiveKind && with_.app.preferences()->protectSensitiveContent;
}

QString ClipboardEntryRow::summary() const {
    if (isProtected()) return shown(entry_->maskedDescription());
    if (entry_->kind == ClipboardContentKind::image) return QStringLiteral("Imagem copiada");
    const std::string line = text::onOneLine(ClipboardTextPreview::limited(entry_->text.value_or("")));
    return line.empty() ? QStringLiteral("Texto vazio") : shown(line);
}

QString ClipboardEntryRow::sourceApplication() const { return shown(entry_->sourceApplication.value_or("")); }

QString ClipboardEntryRow::age() const { return shown(relativeDate(entry_->createdAt, with_.clock.now())); }

QString ClipboardEntryRow::symbol() const {
    if (entry_->kind == ClipboardContentKind::image) return QStringLiteral("photo");
    return isProtected() ? QStringLiteral("lock.fill") : QStringLiteral("doc.text");
}

QUrl ClipboardEntryRow::thumbnail() const {
    if (!with_.app.store().imageFile(*entry_)) return {};
    QUrl address;
    address.setScheme(QStringLiteral("image"));
    address.setHost(QString::fromLatin1(pictureProvider));
    address.setPath("/" + shown(*entry_->imageFilename), QUrl::DecodedMode);
    return address;
}

}  // namespace nettlecap
