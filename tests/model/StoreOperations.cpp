#include "model/StoreOperations.h"

#include "model/ClipboardContentFingerprint.h"
#include "model/ClipboardStore.h"
#include "model/PlainStore.h"
#include "platform/fake/FakeFileSystem.h"
#include "platform/fake/FakeIdentifiers.h"
#include "platform/fake/FakeTime.h"

#include <algorithm>
#include <array>
#include <set>

namespace nettlecap {
namespace {

constexpr std::array names{"copy text",   "copy text",        "copy image",     "copy image",
                           "favourite",   "remove",           "change limit",   "purge",
                           "add snippet", "update snippet",   "remove snippet", "restart",
                           "disk",        "replace document", "set clock"};

/// A store and the rules.
class SideBySide {
public:
    SideBySide() { restart(); }

    void act(const StoreOperation& operation) {
        const std::uint8_t a = operation.a;
        time_.advance(Seconds(1));
        switch (operation.kind % names.size()) {
        case 0:
        case 1:
            return copyText("texto " + std::to_string(a % 16) + (a < 128 ? "" : "\r\n"), date(operation.b));
        case 2:
        case 3: return copyImage("imagem " + std::to_string(a % 8), date(operation.b));
        case 4: return toggleFavorite(a);
        case 5: return remove(a);
        case 6: return changeLimit(10 + a % 6);
        case 7: return purge();
        case 8: return addSnippet("mensagem " + std::to_string(a));
        case 9: return updateSnippet(a, "mensagem " + std::to_string(operation.b));
        case 10: return removeSnippet(a);
        case 11: return restart();
        case 12: return changeDisk(static_cast<PlainStore::Disk>(a % 3));
        case 13: return beReplaced();
        default: time_.setNow({static_cast<double>(a) * 1e7});  // by years
        }
    }

    /// Empty: in nothing.
    std::string difference() const {
        if (!hasSameEntries()) return "entries";
        if (!hasSameSnippets(*store_->snippets(), plain_.lists.snippets)) return "snippets";
        if (!hasSamePictures()) return "pictures on the disk";
        if (!hasSameDocument()) return "state file";
        if (files_.contents(folder / "history.unreadable.json") != plain_.kept) return "kept state file";
        const std::string error = store_->persistenceError()->value_or("");
        if (plain_.error.empty() ? !error.empty() : !error.starts_with(plain_.error))
            return "error: " + error;
        if (!hasRightUsage()) return "storage usage";
        return {};
    }

private:
    /// Mostly later than all before; often the same as the last one, or earlier.
    double date(std::uint8_t b) {
        if (b < 32) return b;
        if (b < 224) ++now_;
        return now_;
    }

    void copyText(const std::string& text, double at) {
        const std::string content = text.substr(0, text.find('\r'));
        const auto kind = ClipboardContentKind::text;
        std::string fingerprint = ClipboardContentFingerprint::fingerprint(content, kind);
        plain_.copyText(content, at);
        if (store_->promoteExistingEntry({.fingerprint = fingerprint,
                                          .sourceApplication = "Notas",
                                          .at = {at},
                                          .replacementText = text,
                                          .sensitiveKind = {}}))
            return;
        store_->insertChronologically({.id = identifiers_.next(),
                                       .kind = kind,
                                       .text = text,
                                       .createdAt = {at},
                                       .sourceApplication = "Notas",
                                       .fingerprint = std::move(fingerprint)});
        store_->trimIfNeeded();
        store_->persist();
    }
    void copyImage(const std::string& png, double at) {
        plain_.copyImage(png, at);
        store_->captureImage(Bytes(png), "Fotos", {at});
    }
    void toggleFavorite(std::size_t index) {
        if (plain_.lists.items.empty()) return;
        index %= plain_.lists.items.size();
        plain_.toggleFavorite(index);
        store_->toggleFavorite(ClipboardEntry(*store_->entries()->at(index)));
    }
    void remove(std::size_t index) {
        if (plain_.lists.items.empty()) return;
        index %= plain_.lists.items.size();
        plain_.remove(index);
        store_->remove(ClipboardEntry(*store_->entries()->at(index)));
    }
    void changeLimit(int to) {
        plain_.changeLimit(static_cast<std::size_t>(to));
        store_->setMaxItems(to);
        store_->trimIfNeeded();
        store_->persist();
    }
    void purge() {
        plain_.purge();
        store_->clearNonFavorites();
    }
    void addSnippet(const std::string& content) {
        plain_.addSnippet(content, time_.now().secondsSince2001);
        store_->addSnippet("", content);
    }
    void updateSnippet(std::size_t index, const std::string& content) {
        if (plain_.lists.snippets.empty()) return;
        index %= plain_.lists.snippets.size();
        plain_.updateSnippet(index, content, time_.now().secondsSince2001);
        store_->updateSnippet(SavedSnippet(store_->snippets()->at(index)), "", content);
    }
    void removeSnippet(std::size_t index) {
        if (plain_.lists.snippets.empty()) return;
        index %= plain_.lists.snippets.size();
        plain_.removeSnippet(index);
        store_->removeSnippet(SavedSnippet(store_->snippets()->at(index)));
    }
    void restart() {
        if (store_) plain_.restart();
        store_.emplace(ClipboardStore::Ports{.files = files_, .clock = time_, .identifiers = identifiers_},
                       folder, static_cast<std::int64_t>(plain_.limit));
    }
    void changeDisk(PlainStore::Disk disk) {
        plain_.disk = disk;
        files_.stopFailing(FileOperation::write);
        if (disk == PlainStore::Disk::refusesAll)
            files_.fail(FileOperation::write, "No space left on device");
        if (disk == PlainStore::Disk::refusesTheDocument)
            files_.fail(FileOperation::write, "No space left on device", document);
    }
    /// No two of these documents, nor one of the store's own, have one size.
    void beReplaced() {
        const std::string by(100'000 + ++replacements_, 'x');
        plain_.beReplaced(by);
        files_.put(document, by);
    }

    static bool isSame(const ClipboardEntry& entry, const PlainStore::Item& item) {
        const bool isImage = entry.kind == ClipboardContentKind::image;
        return isImage == item.isImage && entry.createdAt == Date{item.at} &&
               entry.isFavorite == item.isFavorite &&
               entry.fingerprint == ClipboardContentFingerprint::fingerprint(item.text, entry.kind);
    }
    bool hasSameEntries() const {
        return std::ranges::equal(*store_->entries(), plain_.lists.items,
                                  [&](const StoredEntry& entry, const PlainStore::Item& item) {
                                      return isSame(*entry, item) && hasSamePicture(*entry, item);
                                  });
    }
    bool hasSamePicture(const ClipboardEntry& entry, const PlainStore::Item& item) const {
        if (!item.isImage) return true;
        const auto picture = plain_.pictures.find(item.picture);
        const auto file = files_.contents(*store_->imageFile(entry));
        return picture == plain_.pictures.end() ? !file : file == picture->second;
    }
    static bool hasSameSnippets(const std::vector<SavedSnippet>& snippets,
                                const std::vector<PlainStore::Snippet>& plain) {
        return std::ranges::equal(snippets, plain, [](const auto& a, const auto& b) {
            return a.content == b.content && a.updatedAt == Date{b.updatedAt};
        });
    }
    bool hasSamePictures() const {
        std::multiset<std::string> found;
        std::multiset<std::string> expected;
        for (const std::string& name : files_.names(folder / "Images"))
            found.insert(files_.contents(folder / "Images" / name).value_or(""));
        for (const auto& [number, png] : plain_.pictures) expected.insert(png);
        return found == expected;
    }
    bool hasSameDocument() const {
        const auto contents = files_.contents(document);
        if (plain_.foreign) return contents == plain_.foreign;
        if (!contents) return plain_.saved == PlainStore::Lists();
        const auto state = HistoryDocument::decode(Bytes(*contents));
        return state && std::ranges::equal(state->entries, plain_.saved.items, isSame) &&
               hasSameSnippets(state->snippets, plain_.saved.snippets);
    }
    bool hasRightUsage() const {
        const ClipboardStorageUsage& usage = *store_->storageUsage();
        return usage.imageBytes == files_.sizeOfFilesIn(folder / "Images") &&
               usage.itemCount == std::ssize(*store_->entries()) &&
               usage.totalBytes == usage.imageBytes + usage.databaseBytes;
    }

    const Path folder = "/dados";
    const Path document = folder / "history.json";

    FakeFileSystem files_;
    FakeTime time_;
    FakeIdentifiers identifiers_;
    std::optional<ClipboardStore> store_;
    PlainStore plain_;
    double now_ = 100;
    std::size_t replacements_ = 0;
};

}  // namespace

std::optional<std::string> whatGoesWrong(std::span<const StoreOperation> operations) {
    SideBySide both;
    for (std::size_t n = 0; n < operations.size(); ++n) {
        both.act(operations[n]);
        if (const std::string difference = both.difference(); !difference.empty())
            return "after operation " + std::to_string(n + 1) + ": " + difference;
    }
    return std::nullopt;
}

StoreOperations shrunk(StoreOperations operations) {
    for (std::size_t n = operations.size(); n > 0; --n) {
        StoreOperations fewer = operations;
        fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(n - 1));
        if (whatGoesWrong(fewer)) operations = std::move(fewer);
    }
    return operations;
}

std::string described(std::span<const StoreOperation> operations) {
    std::string text;
    for (const auto& [kind, a, b] : operations)
        text += std::string(names[kind % names.size()]) + " " + std::to_string(a) + " " + std::to_string(b) +
                "; ";
    return text;
}

}  // namespace nettlecap
