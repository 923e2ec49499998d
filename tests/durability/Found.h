#pragma once

#include "durability/Disk.h"
#include "model/Records.h"

namespace nettlecap {

/// What a start finds on a disk and makes of it.
struct Found {
    StoredEntries entries;
    std::vector<SavedSnippet> snippets;
    std::optional<std::string> error;
    DiskContents files;  ///< of the history's folder and of that with the pictures, after the start

    bool hasSameHistory(const Found& other) const {
        return entries == other.entries && snippets == other.snippets && error == other.error;
    }
    bool has(const ClipboardEntry& entry) const;
    bool namesPicture(const Path& file) const;
};

/// The limit is so high that nothing but the disk decides.
Found startOn(const DiskContents& disk, const Path& folder);

/// Each entry has its picture, whole, unless it went on its way from `before` to `afterwards`.
void expectPictures(const Found& found, const Path& folder, const Found& before, const Found& afterwards);

/// The document that could not be read is there under one of its two names.
void expectDamagedDocument(const Found& found, const Path& folder);

/// Short enough to be read when a test fails.
std::string names(const DiskContents& disk);

}  // namespace nettlecap
