#include "model/ClipboardStore.h"

#include "model/ClipboardContentFingerprint.h"
#include "model/HistoryRepair.h"
#include "model/Text.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstdio>
#include <cstdlib>

// Every operation changes the list and the files first, tells once, and saves last: a
// listener may read the store, or call it, whenever it is told. What happens with every
// capture changes the list where it stands, for a copy of a long list costs time.

namespace nettlecap {

namespace {

constexpr const char* imagesFolder = "Images";
constexpr const char* imageNotSaved = "Não foi possível salvar a imagem: ";
constexpr std::int64_t smallestLimit = 10;

std::string titleOf(std::string_view title) {
    const std::string_view trimmed = text::trimmed(title);
    return std::string(trimmed.empty() ? "Sem título" : trimmed);
}

/// The name comes from a file that anybody may have written.
bool isPlainFileName(std::string_view name) {
    constexpr std::string_view forbidden("/\0", 2);
    return !name.empty() && name != "." && name != ".." &&
           name.find_first_of(forbidden) == std::string_view::npos;
}

auto findEntry(StoredEntries& entries, const Uuid& id) {
    return std::ranges::find(entries, id, [](const StoredEntry& entry) { return entry->id; });
}

auto findFingerprint(const StoredEntries& entries, std::string_view fingerprint) {
    return std::ranges::find_if(entries,
                                [&](const StoredEntry& entry) { return entry->fingerprint == fingerprint; });
}

void insertInOrder(StoredEntries& entries, StoredEntry entry) {
    const auto earlier = std::ranges::find_if(
        entries, [&](const StoredEntry& other) { return other->createdAt < entry->createdAt; });
    entries.insert(earlier, std::move(entry));
}

/// Takes out the oldest that are no favourites, until the limit holds or none is left.
StoredEntries takeExcess(StoredEntries& entries, std::int64_t limit) {
    auto excess = std::ssize(entries) - limit;
    auto from = entries.end();
    while (excess > 0 && from != entries.begin())
        if (!(*--from)->isFavorite) --excess;
    const auto isFavorite = [](const StoredEntry& entry) { return entry->isFavorite; };
    const auto taken = std::stable_partition(from, entries.end(), isFavorite);
    StoredEntries result(std::make_move_iterator(taken), std::make_move_iterator(entries.end()));
    entries.erase(taken, entries.end());
    return result;
}

#ifndef NDEBUG
std::string freshlyEncoded(const StoredEntries& entries, const std::vector<SavedSnippet>& snippets) {
    PersistedState state{.entries = {}, .snippets = snippets};
    for (const StoredEntry& entry : entries) state.entries.push_back(*entry);
    return HistoryDocument::encode(state);
}

std::string joined(const std::vector<std::string_view>& pieces) {
    std::string result;
    for (const std::string_view piece : pieces) result += piece;
    return result;
}
#endif

}  // namespace

ClipboardStore::ClipboardStore(Ports ports, std::optional<Path> baseDirectory, std::int64_t maxItems)
    : ports_(ports), baseDirectory_(baseDirectory ? *baseDirectory : defaultBaseDirectory(ports.files)),
      imagesDirectory_(baseDirectory_ / imagesFolder), stateURL_(baseDirectory_ / "history.json"),
      unreadableURL_(baseDirectory_ / "history.unreadable.json"),
      maxItems_(std::max(maxItems, smallestLimit)) {
    if (const auto created = createDirectories(); !created)
        persistenceError_ = "Não foi possível preparar o armazenamento: " + created.description();
    ports_.files.removeLeftovers(baseDirectory_);
    imageBytes_ = ports_.files.sizeOfFilesIn(imagesDirectory_);
    load();
    trimIfNeeded();
    refreshStorageUsage();
}

Path ClipboardStore::defaultBaseDirectory(const FileSystem& files) {
    const auto applicationSupport = files.applicationSupportDirectory();
    if (!applicationSupport) {
        std::fputs("nettlecap: there is no application-support folder\n", stderr);
        std::abort();
    }
    return *applicationSupport / "Nettlecap";
}

Path ClipboardStore::defaultImagesDirectory(const FileSystem& files) {
    return defaultBaseDirectory(files) / imagesFolder;
}

bool ClipboardStore::promoteExistingEntry(Promotion promotion) {
    if (!containsFingerprint(promotion.fingerprint)) return false;
    StoredEntries matches;
    StoredEntries entries;
    std::ranges::partition_copy(
        *entries_, std::back_inserter(matches), std::back_inserter(entries),
        [&](const StoredEntry& entry) { return entry->fingerprint == promotion.fingerprint; });

    ClipboardEntry survivor = *matches.front();
    survivor.isFavorite = std::ranges::any_of(matches, [](const auto& match) { return match->isFavorite; });
    survivor.createdAt = promotion.at;
    survivor.sourceApplication = std::move(promotion.sourceApplication);
    if (survivor.kind == ClipboardContentKind::text) {
        survivor.text = std::move(promotion.replacementText);
        survivor.sensitiveKind = promotion.sensitiveKind;
    }
    for (const StoredEntry& match : matches)
        if (match->id != survivor.id && match->imageFilename != survivor.imageFilename)
            removeImageFile(*match);
    insertInOrder(entries, StoredEntry(std::move(survivor)));
    entries_ = std::move(entries);
    persist();
    return true;
}

void ClipboardStore::insertChronologically(ClipboardEntry entry) {
    entries_.edit([&](StoredEntries& entries) { insertInOrder(entries, StoredEntry(std::move(entry))); });
}

void ClipboardStore::trimIfNeeded() {
    if (std::ssize(*entries_) <= maxItems_) return;
    entries_.edit([&](StoredEntries& entries) {
        for (const StoredEntry& entry : takeExcess(entries, maxItems_)) removeImageFile(*entry);
    });
}

void ClipboardStore::persist() {
    const Result<Done> saved = save();
    isSaved_ = static_cast<bool>(saved);
    if (saved) {
        persistenceError_ = std::nullopt;
    } else {
        persistenceError_ = "Não foi possível salvar o histórico: " + saved.description();
    }
    refreshStorageUsage();
}

void ClipboardStore::persistUnsaved() {
    if (!isSaved_) persist();
}

ClipboardStoreMutation ClipboardStore::captureImage(const Bytes& png,
                                                    std::optional<std::string> sourceApplication, Date at) {
    if (png.empty()) return {};
    const auto kind = ClipboardContentKind::image;
    std::string fingerprint = ClipboardContentFingerprint::fingerprint(png.view(), kind);
    if (const auto restored = restoreImageFile(fingerprint, png); !restored) {
        persistenceError_ = imageNotSaved + restored.description();
        return {};
    }
    if (promoteExistingEntry({.fingerprint = fingerprint, .sourceApplication = sourceApplication, .at = at}))
        return {.kind = ClipboardStoreMutation::Kind::promoted, .fingerprint = std::move(fingerprint)};

    std::string filename = ports_.identifiers.next().text() + ".png";
    if (const auto written = writeImageFile(imagesDirectory_ / filename, png); !written) {
        // It may be there all the same, and nobody would ever name it.
        static_cast<void>(ports_.files.remove(imagesDirectory_ / filename));
        persistenceError_ = imageNotSaved + written.description();
        return {};
    }
    imageBytes_ += static_cast<std::int64_t>(png.size());
    StoredEntries entries = *entries_;
    insertInOrder(entries, StoredEntry({.id = ports_.identifiers.next(),
                                        .kind = kind,
                                        .imageFilename = std::move(filename),
                                        .createdAt = at,
                                        .sourceApplication = std::move(sourceApplication),
                                        .fingerprint = fingerprint}));
    for (const StoredEntry& entry : takeExcess(entries, maxItems_)) removeImageFile(*entry);
    entries_ = std::move(entries);
    persist();
    return {.kind = ClipboardStoreMutation::Kind::inserted, .fingerprint = std::move(fingerprint)};
}

void ClipboardStore::remove(const ClipboardEntry& entry) {
    StoredEntries entries = *entries_;
    const auto found = findEntry(entries, entry.id);
    if (found == entries.end()) return;
    removeImageFile(**found);
    entries.erase(found);
    entries_ = std::move(entries);
    persist();
}

void ClipboardStore::toggleFavorite(const ClipboardEntry& entry) {
    StoredEntries entries = *entries_;
    const auto found = findEntry(entries, entry.id);
    if (found == entries.end()) return;
    ClipboardEntry toggled = **found;
    toggled.isFavorite = !toggled.isFavorite;
    *found = StoredEntry(std::move(toggled));
    entries_ = std::move(entries);
    persist();
}

void ClipboardStore::clearNonFavorites() {
    StoredEntries favorites;
    StoredEntries removed;
    std::ranges::partition_copy(*entries_, std::back_inserter(favorites), std::back_inserter(removed),
                                [](const StoredEntry& entry) { return entry->isFavorite; });
    for (const StoredEntry& entry : removed) removeImageFile(*entry);
    forgetUnreadable();
    entries_ = std::move(favorites);
    persist();
}

void ClipboardStore::addSnippet(std::string_view title, std::string_view content) {
    const std::string_view trimmed = text::trimmed(content);
    if (trimmed.empty()) return;
    const Date now = ports_.clock.now();
    std::vector<SavedSnippet> snippets = *snippets_;
    snippets.insert(snippets.begin(), {.id = ports_.identifiers.next(),
                                       .title = titleOf(title),
                                       .content = std::string(trimmed),
                                       .createdAt = now,
                                       .updatedAt = now});
    setSnippets(std::move(snippets));
    persist();
}

void ClipboardStore::updateSnippet(const SavedSnippet& snippet, std::string_view title,
                                   std::string_view content) {
    const std::string_view trimmed = text::trimmed(content);
    std::vector<SavedSnippet> snippets = *snippets_;
    const auto found = std::ranges::find(snippets, snippet.id, &SavedSnippet::id);
    if (found == snippets.end() || trimmed.empty()) return;
    found->title = titleOf(title);
    found->content = trimmed;
    found->updatedAt = ports_.clock.now();
    setSnippets(std::move(snippets));
    persist();
}

void ClipboardStore::removeSnippet(const SavedSnippet& snippet) {
    std::vector<SavedSnippet> snippets = *snippets_;
    const auto found = std::ranges::find(snippets, snippet.id, &SavedSnippet::id);
    if (found == snippets.end()) return;
    snippets.erase(found);
    setSnippets(std::move(snippets));
    persist();
}

void ClipboardStore::setMaxItems(std::int64_t maxItems) { maxItems_ = std::max(maxItems, smallestLimit); }

bool ClipboardStore::containsFingerprint(std::string_view fingerprint) const {
    return findFingerprint(*entries_, fingerprint) != entries_->end();
}

std::optional<Path> ClipboardStore::imageFile(const ClipboardEntry& entry) const {
    if (!entry.imageFilename || !isPlainFileName(*entry.imageFilename)) return std::nullopt;
    return imagesDirectory_ / *entry.imageFilename;
}

/// Closes them to others, too.
Result<Done> ClipboardStore::createDirectories() {
    if (auto created = ports_.files.createDirectory(baseDirectory_); !created) return created;
    return ports_.files.createDirectory(imagesDirectory_);
}

std::optional<PersistedState> ClipboardStore::readState() {
    const Result<Bytes> document = ports_.files.read(stateURL_);
    if (!document) return std::nullopt;  // as a rule there is no history yet
    Result<PersistedState> state = HistoryDocument::decode(*document);
    if (!state) {
        persistenceError_ = "O histórico salvo não pôde ser lido: " + state.description();
        return std::nullopt;
    }
    stateSize_ = static_cast<std::int64_t>(document->size());
    return std::move(*state);
}

void ClipboardStore::load() {
    auto state = readState();
    if (!state) return;
    HistoryRepair repair(std::move(state->entries));
    for (const ClipboardEntry& entry : repair.withoutUse) removeImageFile(entry);
    StoredEntries entries;
    entries.reserve(repair.entries.size());
    for (ClipboardEntry& entry : repair.entries) entries.emplace_back(std::move(entry));
    entries_ = std::move(entries);
    std::ranges::stable_sort(state->snippets, std::ranges::greater(), &SavedSnippet::updatedAt);
    setSnippets(std::move(state->snippets));
    if (repair.changed) persist();
}

Result<Done> ClipboardStore::save() {
    // Somebody may have removed the folder, or a start may have found none to make it in.
    static_cast<void>(createDirectories());
    const auto found = ports_.files.size(stateURL_);
    if (found && found != stateSize_) {
        auto kept = ports_.files.keepCopy(stateURL_, unreadableURL_);
        if (!kept) return kept;
    }

    std::vector<std::string_view> entries;
    entries.reserve(entries_->size());
    for (const StoredEntry& entry : *entries_) entries.push_back(entry.encoded());
    const auto pieces = HistoryDocument::pieces(entries, {encodedSnippets_.begin(), encodedSnippets_.end()});
    assert(joined(pieces) == freshlyEncoded(*entries_, *snippets_));
    auto written = ports_.files.writeAtomically(stateURL_, pieces, baseDirectory_);
    // A failure may come after the step: the file is the old one or ours, whatever was said.
    stateSize_ = ports_.files.size(stateURL_);
    return written;
}

void ClipboardStore::setSnippets(std::vector<SavedSnippet> snippets) {
    encodedSnippets_.clear();
    for (const SavedSnippet& snippet : snippets) encodedSnippets_.push_back(HistoryDocument::encode(snippet));
    snippets_ = std::move(snippets);
}

void ClipboardStore::forgetUnreadable() {
    stateSize_ = ports_.files.size(stateURL_);
    // As a rule there is none to remove.
    static_cast<void>(ports_.files.remove(unreadableURL_));
}

Result<Done> ClipboardStore::writeImageFile(const Path& file, const Bytes& png) {
    static_cast<void>(createDirectories());
    const std::array pieces{png.view()};
    return ports_.files.writeAtomically(file, pieces, baseDirectory_);
}

Result<Done> ClipboardStore::restoreImageFile(std::string_view fingerprint, const Bytes& png) {
    const auto known = findFingerprint(*entries_, fingerprint);
    const auto file = known == entries_->end() ? std::nullopt : imageFile(**known);
    const auto size = static_cast<std::int64_t>(png.size());
    if (!file || ports_.files.size(*file) == size) return Done();
    const std::int64_t before = fileSize(*file);
    auto written = writeImageFile(*file, png);
    if (written) imageBytes_ = std::max<std::int64_t>(0, imageBytes_ + size - before);
    return written;
}

void ClipboardStore::removeImageFile(const ClipboardEntry& entry) {
    const auto file = imageFile(entry);
    if (!file) return;
    const std::int64_t size = fileSize(*file);
    // A file that stays is nobody's loss: its entry is gone anyway.
    if (ports_.files.remove(*file)) imageBytes_ = std::max<std::int64_t>(0, imageBytes_ - size);
}

std::int64_t ClipboardStore::fileSize(const Path& path) const { return ports_.files.size(path).value_or(0); }

void ClipboardStore::refreshStorageUsage() {
    const std::int64_t databaseBytes = fileSize(stateURL_);
    const auto images = std::ranges::count_if(
        *entries_, [](const StoredEntry& entry) { return entry->kind == ClipboardContentKind::image; });
    storageUsage_ = {.totalBytes = databaseBytes + imageBytes_,
                     .databaseBytes = databaseBytes,
                     .imageBytes = imageBytes_,
                     .itemCount = static_cast<std::int64_t>(entries_->size()),
                     .imageCount = images};
}

}  // namespace nettlecap
