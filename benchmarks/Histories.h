#pragma once

#include "TemporaryFolder.h"

#include "capture/ClipboardMonitor.h"
#include "platform/fake/FakePlatform.h"
#include "platform/linux/PosixFileSystem.h"

namespace nettlecap {

/// The histories that are measured: texts of one length, all different, and where there are
/// pictures every tenth entry is one instead.
struct HistoryShape {
    std::size_t entries = 5000;
    std::size_t bytes = 1000;  ///< of each text
    bool hasPictures = false;
};

/// In Portuguese, with accents and quotes.
std::string sampleText(std::size_t number, std::size_t bytes);
/// Newest first, the newest being number 0.
PersistedState sampleHistory(const HistoryShape& shape);

/// A history on the real disk.
class DiskHistory {
public:
    explicit DiskHistory(const HistoryShape& shape);

    Path stateFile() const { return folder.path() / "history.json"; }
    std::string document() const;
    ClipboardStore open();

    TemporaryFolder folder;
    PosixFileSystem files;
    FakeTime time;
    FakeIdentifiers identifiers;

private:
    HistoryShape shape_;
};

/// A disk that holds one document, takes whatever it is given, and keeps none of it.
class WeightlessDisk final : public FileSystem {
public:
    explicit WeightlessDisk(const HistoryShape& shape);

    Result<Done> createDirectory(const Path&) override { return Done(); }
    Result<Done> writeAtomically(const Path&, std::span<const std::string_view> pieces, const Path&) override;
    Result<Done> keepCopy(const Path&, const Path&) override { return Done(); }
    Result<Done> remove(const Path&) override { return Done(); }
    void removeLeftovers(const Path&) override {}
    std::optional<Path> applicationSupportDirectory() const override { return std::nullopt; }
    Result<Bytes> read(const Path&) const override { return Bytes(document_); }
    Result<FileReading> open(const Path&) const override {
        return FileReading([this]() -> Result<Bytes> { return Bytes(document_); });
    }
    std::optional<std::int64_t> size(const Path&) const override { return std::nullopt; }
    std::int64_t sizeOfFilesIn(const Path&) const override { return 0; }

private:
    std::string document_;
    std::int64_t bytes_ = 0;  ///< that it was given
};

/// A monitor over a history that is full, so that each capture drops the oldest entry.
class FullHistory {
public:
    FullHistory(FileSystem& files, const Path& folder, const HistoryShape& shape);

    void captureAnother();
    std::string_view newest() const;

private:
    FakePlatform system_;
    ClipboardStore store_;
    ClipboardMonitor monitor_;
    std::size_t bytes_;
    std::size_t copies_;
};

/// What no program can do without: writing these bytes, flushing them, renaming the file,
/// flushing the folder.
void writeSafely(const Path& folder, std::string_view bytes);

}  // namespace nettlecap
