#pragma once

#include "platform/Files.h"

#include <map>
#include <vector>

namespace nettlecap {

enum class FileOperation { createDirectory, write, keepCopy, remove, read };

/// Files in memory, on one volume whose root folder exists. Fails as a real one does, in
/// the same words, and whenever a test wants it to.
class FakeFileSystem final : public FileSystem {
public:
    /// From now on the operation fails in these words; of several paths only `at`, if given.
    void fail(FileOperation operation, std::string description, std::optional<Path> at = std::nullopt);
    void stopFailing(FileOperation operation);
    /// Absent: the system has no such place.
    void setApplicationSupportDirectory(std::optional<Path> path);

    void put(const Path& path, std::string contents);  ///< by somebody else's hand, with its folders
    void leaveLeftover(const Path& temporaryFolder);   ///< as a process killed in the middle of a write
    std::optional<std::string> contents(const Path& path) const;
    bool hasFolder(const Path& path) const;
    std::vector<std::string> names(const Path& folder) const;  ///< what is in it, hidden too, sorted
    int writes(const Path& path) const;                        ///< how often it was written, failures aside
    int writes() const;                                        ///< to whatever path

    Result<Done> createDirectory(const Path& path) override;
    Result<Done> writeAtomically(const Path& path, std::span<const std::string_view> pieces,
                                 const Path& temporaryFolder) override;
    Result<Done> keepCopy(const Path& from, const Path& to) override;
    Result<Done> remove(const Path& path) override;
    void removeLeftovers(const Path& temporaryFolder) override;

    std::optional<Path> applicationSupportDirectory() const override { return applicationSupport_; }
    Result<Bytes> read(const Path& path) const override;
    Result<FileReading> open(const Path& path) const override;  ///< fails as `read` does, then or later
    std::optional<std::int64_t> size(const Path& path) const override;
    std::int64_t sizeOfFilesIn(const Path& folder) const override;

private:
    struct Node {
        std::optional<Bytes> file;  ///< absent for a folder
    };
    struct PlannedFailure {
        std::string description;
        std::optional<Path> at;
    };

    std::optional<Failure> plannedFailure(FileOperation operation, const Path& path) const;
    std::optional<Failure> whyUnwritable(const Path& path) const;
    const Node* find(const Path& path) const;

    std::map<Path, Node> nodes_{{"/", Node{}}};
    std::map<FileOperation, PlannedFailure> failures_;
    std::map<Path, int> writes_;
    std::optional<Path> applicationSupport_ = "/home/ana/.local/share";
};

}  // namespace nettlecap
