#pragma once

#include "durability/SystemCalls.h"

#include <map>
#include <set>
#include <vector>

namespace nettlecap {

/// The files of a disk with what they hold.
using DiskContents = std::map<Path, std::string>;

/// What is on the disk below a folder right now.
DiskContents contentsBelow(const Path& folder);

/// Follows what a program does to the files below a folder and knows what a power cut may
/// leave of it. Until it was flushed, a file may hold all that was written, half of it,
/// nothing, or zeros; until its folder was flushed, a name may be there already, or still,
/// or not, each name for itself and in whatever order.
class Disk final : public SystemCallWatcher {
public:
    /// Begins with what is there, safely.
    explicit Disk(const Path& root);

    void after(const DiskCall& call) override;

    /// What may be found if the power fails now.
    std::set<DiskContents> afterPowerCut() const;
    /// The same for every moment since the last question.
    std::set<DiskContents> afterAnyPowerCut();
    std::size_t moments() const { return moments_; }  ///< at which a power cut was looked into

private:
    struct File {
        std::string written;
        bool isFlushed = true;
    };
    using FileNumber = std::size_t;
    using Names = std::map<Path, FileNumber>;
    /// One step that a folder takes as a whole.
    struct Change {
        std::optional<Path> added;
        FileNumber file = 0;
        std::optional<Path> removed;
    };
    using Changes = std::vector<Change>;

    void change(const Path& in, Change change);
    void rename(const Path& from, const Path& to);
    std::vector<Names> possibleNames() const;
    bool standsInFolders(const Path& path, const Names& names) const;
    void addContents(const Names& names, std::set<DiskContents>& to) const;

    static constexpr FileNumber folder = 0;  // no file

    Path root_;
    std::vector<File> files_{File{}};
    Names names_;      // as the program sees them
    Names safeNames_;  // as they are on the disk in any case
    std::map<Path, Changes> unflushed_;
    std::set<DiskContents> seen_;
    std::size_t moments_ = 0;
};

}  // namespace nettlecap
