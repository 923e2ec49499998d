#pragma once

#include "model/HistoryDocument.h"
#include "model/StoredEntry.h"
#include "platform/Files.h"
#include "platform/Identifiers.h"
#include "platform/Signal.h"
#include "platform/Time.h"

namespace nettlecap {

/// What came of an image: the fingerprint is the content's.
struct ClipboardStoreMutation {
    enum class Kind { inserted, promoted, unchanged };

    Kind kind = Kind::unchanged;
    std::string fingerprint;  ///< empty when unchanged

    bool operator==(const ClipboardStoreMutation&) const = default;
};

/// Owns the history, the saved snippets, the image files and the state file, and saves
/// after every change. Newest first; no two entries share a fingerprint; the limit counts
/// favourites but never drops one.
class ClipboardStore {
public:
    struct Ports {
        FileSystem& files;
        Clock& clock;
        Identifiers& identifiers;
    };

    /// What a new capture brings to an entry that has its content already.
    struct Promotion {
        std::string fingerprint;
        std::optional<std::string> sourceApplication;
        Date at;
        std::optional<std::string> replacementText;  ///< for texts only
        std::optional<SensitiveContentKind> sensitiveKind;
    };

    /// Loads, repairs and trims. The ports must outlive the store; limits below 10 are 10.
    ClipboardStore(Ports ports, std::optional<Path> baseDirectory, std::int64_t maxItems);

    /// Where the history lives when nobody says otherwise. Aborts where the system has no
    /// place for it.
    static Path defaultBaseDirectory(const FileSystem& files);
    /// Where the pictures of that history are.
    static Path defaultImagesDirectory(const FileSystem& files);

    /// Moves the entry with this content to its new date, merging duplicates. False: there is none.
    bool promoteExistingEntry(Promotion promotion);
    void insertChronologically(ClipboardEntry entry);  ///< does not save
    void trimIfNeeded();                               ///< does not save
    void persist();
    void persistUnsaved();  ///< tries once more where the last save failed
    /// `png` as it is to be stored.
    ClipboardStoreMutation captureImage(const Bytes& png, std::optional<std::string> sourceApplication,
                                        Date at);

    void remove(const ClipboardEntry& entry);
    void toggleFavorite(const ClipboardEntry& entry);
    void clearNonFavorites();
    void addSnippet(std::string_view title, std::string_view content);
    void updateSnippet(const SavedSnippet& snippet, std::string_view title, std::string_view content);
    void removeSnippet(const SavedSnippet& snippet);
    void setMaxItems(std::int64_t maxItems);  ///< takes effect at the next trim

    bool containsFingerprint(std::string_view fingerprint) const;
    const Path& imagesDirectory() const { return imagesDirectory_; }
    /// Where the entry's picture is. Absent: it has none, or its name is not a plain one.
    std::optional<Path> imageFile(const ClipboardEntry& entry) const;

    const Published<StoredEntries>& entries() const { return entries_; }
    const Published<std::vector<SavedSnippet>>& snippets() const { return snippets_; }
    const Published<std::optional<std::string>>& persistenceError() const { return persistenceError_; }
    const Published<ClipboardStorageUsage>& storageUsage() const { return storageUsage_; }

private:
    Result<Done> createDirectories();
    std::optional<PersistedState> readState();
    void load();
    Result<Done> save();
    void setSnippets(std::vector<SavedSnippet> snippets);
    void forgetUnreadable();
    Result<Done> writeImageFile(const Path& file, const Bytes& png);
    /// Gives the picture of the entry that has this content its file again where it lost it,
    /// as in a power cut while it was being removed.
    Result<Done> restoreImageFile(std::string_view fingerprint, const Bytes& png);
    void removeImageFile(const ClipboardEntry& entry);
    std::int64_t fileSize(const Path& path) const;
    void refreshStorageUsage();

    Ports ports_;
    Path baseDirectory_;
    Path imagesDirectory_;
    Path stateURL_;
    Path unreadableURL_;  ///< where a state file goes that is not ours
    std::int64_t maxItems_;
    std::int64_t imageBytes_ = 0;
    /// Of the state file as this store last read or wrote it. Of another size it is somebody
    /// else's, or could not be read, and is not overwritten before it was kept.
    std::optional<std::int64_t> stateSize_;
    bool isSaved_ = true;  ///< false: the last save failed
    Published<StoredEntries> entries_;
    Published<std::vector<SavedSnippet>> snippets_;
    std::vector<std::string> encodedSnippets_;  ///< each snippet's JSON object
    Published<std::optional<std::string>> persistenceError_;
    Published<ClipboardStorageUsage> storageUsage_;
};

}  // namespace nettlecap
