#include "durability/Found.h"

#include "durability/Scenarios.h"
#include "platform/fake/FakeFileSystem.h"

#include <algorithm>

namespace nettlecap {

bool Found::has(const ClipboardEntry& entry) const {
    return std::ranges::any_of(entries, [&](const StoredEntry& other) { return other->id == entry.id; });
}

bool Found::namesPicture(const Path& file) const {
    return std::ranges::any_of(
        entries, [&](const StoredEntry& entry) { return entry->imageFilename == file.filename().native(); });
}

Found startOn(const DiskContents& disk, const Path& folder) {
    FakeFileSystem files;
    for (const auto& [path, contents] : disk) files.put(path, contents);
    FakeTime time;
    FakeIdentifiers identifiers;
    const ClipboardStore store({.files = files, .clock = time, .identifiers = identifiers}, folder, 5000);
    Found found{.entries = *store.entries(),
                .snippets = *store.snippets(),
                .error = *store.persistenceError(),
                .files = {}};
    for (const Path& path : {folder, folder / "Images"})
        for (const std::string& name : files.names(path))
            if (const auto contents = files.contents(path / name)) found.files[path / name] = *contents;
    return found;
}

void expectPictures(const Found& found, const Path& folder, const Found& before, const Found& afterwards) {
    for (const StoredEntry& entry : found.entries) {
        if (entry->kind != ClipboardContentKind::image) continue;
        const auto file = found.files.find(folder / "Images" / *entry->imageFilename);
        if (file != found.files.end()) {
            EXPECT_EQ(imageFingerprint(file->second), entry->fingerprint);
        } else {
            EXPECT_TRUE(before.has(*entry) && !afterwards.has(*entry)) << *entry->imageFilename << " is lost";
        }
    }
}

void expectDamagedDocument(const Found& found, const Path& folder) {
    const auto holdsIt = [&](const char* name) {
        const auto file = found.files.find(folder / name);
        return file != found.files.end() && file->second == damagedDocument;
    };
    EXPECT_TRUE(holdsIt("history.json") || holdsIt("history.unreadable.json"));
}

std::string names(const DiskContents& disk) {
    std::string all;
    for (const auto& [path, contents] : disk)
        all += path.filename().string() + " (" + std::to_string(contents.size()) + ") ";
    return all;
}

}  // namespace nettlecap
