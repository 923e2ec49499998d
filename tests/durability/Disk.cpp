#include "durability/Disk.h"

#include <fstream>
#include <iterator>

namespace nettlecap {
namespace {

namespace fs = std::filesystem;

/// Beyond so many changes of one folder only some of the selections are looked into.
constexpr std::size_t mostForAllSelections = 6;

std::string contents(const Path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// Which of so many changes reached the disk.
std::set<std::vector<bool>> selections(std::size_t count) {
    std::set<std::vector<bool>> result;
    if (count <= mostForAllSelections) {
        for (std::size_t bits = 0; bits < std::size_t{1} << count; ++bits) {
            std::vector<bool> selection(count);
            for (std::size_t n = 0; n < count; ++n) selection[n] = ((bits >> n) & 1U) != 0;
            result.insert(selection);
        }
        return result;
    }
    // The first so many; all but one; only one.
    for (std::size_t n = 0; n <= count; ++n) {
        std::vector<bool> first(count, false);
        std::fill_n(first.begin(), n, true);
        result.insert(first);
        if (n == count) break;
        std::vector<bool> one(count, false);
        one[n] = true;
        result.insert(one);
        one.flip();
        result.insert(one);
    }
    return result;
}

}  // namespace

DiskContents contentsBelow(const Path& folder) {
    DiskContents result;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file()) result[entry.path()] = contents(entry.path());
    return result;
}

Disk::Disk(const Path& root) : root_(root) {
    for (const auto& entry : fs::recursive_directory_iterator(root)) {
        if (entry.is_directory()) {
            safeNames_[entry.path()] = folder;
            continue;
        }
        safeNames_[entry.path()] = files_.size();
        files_.push_back({.written = contents(entry.path())});
    }
    names_ = safeNames_;
}

void Disk::after(const DiskCall& call) {
    switch (call.call) {
    case SystemCall::create:
        files_.push_back({});
        change(call.path.parent_path(), {.added = call.path, .file = files_.size() - 1, .removed = {}});
        break;
    case SystemCall::makeFolder:
        change(call.path.parent_path(), {.added = call.path, .file = folder, .removed = {}});
        break;
    case SystemCall::link:
        change(call.newPath.parent_path(),
               {.added = call.newPath, .file = names_.at(call.path), .removed = {}});
        break;
    case SystemCall::rename: rename(call.path, call.newPath); break;
    case SystemCall::remove:
        change(call.path.parent_path(), {.added = {}, .file = folder, .removed = call.path});
        break;
    case SystemCall::write: {
        File& file = files_[names_.at(call.path)];
        file.written += call.bytes;
        file.isFlushed = false;
        break;
    }
    case SystemCall::flushFile: files_[names_.at(call.path)].isFlushed = true; break;
    case SystemCall::flushFolder:
        for (const Change& done : unflushed_[call.path]) {
            if (done.removed) safeNames_.erase(*done.removed);
            if (done.added) safeNames_[*done.added] = done.file;
        }
        unflushed_.erase(call.path);
        break;
    case SystemCall::openFile:
    case SystemCall::openFolder:
    case SystemCall::changeMode:
    case SystemCall::close: return;
    }
    ++moments_;
    seen_.merge(afterPowerCut());
}

void Disk::change(const Path& in, Change change) {
    if (change.removed) names_.erase(*change.removed);
    if (change.added) names_[*change.added] = change.file;
    unflushed_[in].push_back(std::move(change));
}

void Disk::rename(const Path& from, const Path& to) {
    const FileNumber file = names_.at(from);
    const auto before = names_.find(to);
    // Of two names of one file, rename(2) leaves both.
    if (before != names_.end() && before->second == file) return;
    if (from.parent_path() == to.parent_path()) {
        change(to.parent_path(), {.added = to, .file = file, .removed = from});
        return;
    }
    change(to.parent_path(), {.added = to, .file = file, .removed = {}});
    change(from.parent_path(), {.added = {}, .file = folder, .removed = from});
}

std::set<DiskContents> Disk::afterPowerCut() const {
    std::set<DiskContents> result;
    for (const Names& names : possibleNames()) addContents(names, result);
    return result;
}

std::set<DiskContents> Disk::afterAnyPowerCut() { return std::exchange(seen_, {}); }

std::vector<Disk::Names> Disk::possibleNames() const {
    std::vector<Names> result{safeNames_};
    for (const auto& [path, changes] : unflushed_) {
        std::vector<Names> next;
        for (const Names& names : result)
            for (const auto& selection : selections(changes.size())) {
                Names changed = names;
                for (std::size_t n = 0; n < changes.size(); ++n) {
                    if (!selection[n]) continue;
                    if (changes[n].removed) changed.erase(*changes[n].removed);
                    if (changes[n].added) changed[*changes[n].added] = changes[n].file;
                }
                next.push_back(std::move(changed));
            }
        result = std::move(next);
    }
    return result;
}

/// A name is lost with any of the folders that it is in.
bool Disk::standsInFolders(const Path& path, const Names& names) const {
    Path parent = path.parent_path();
    for (; parent != root_; parent = parent.parent_path())
        if (!names.contains(parent)) return false;
    return true;
}

void Disk::addContents(const Names& names, std::set<DiskContents>& to) const {
    std::vector<DiskContents> disks{{}};
    std::map<FileNumber, std::vector<Path>> namesOf;
    for (const auto& [path, file] : names)
        if (file != folder && standsInFolders(path, names)) namesOf[file].push_back(path);
    for (const auto& [number, paths] : namesOf) {
        const File& file = files_[number];
        std::set<std::string> possible{file.written};
        if (!file.isFlushed)
            possible.insert({"", file.written.substr(0, file.written.size() / 2),
                             std::string(file.written.size(), '\0')});
        std::vector<DiskContents> next;
        for (const DiskContents& disk : disks)
            for (const std::string& contents : possible) {
                next.push_back(disk);
                for (const Path& path : paths) next.back()[path] = contents;
            }
        disks = std::move(next);
    }
    to.insert(disks.begin(), disks.end());
}

}  // namespace nettlecap
