#include "platform/fake/FakeFileSystem.h"

#include <algorithm>
#include <numeric>

namespace nettlecap {
namespace {

constexpr std::string_view leftoverPrefix = ".nettlecap-";

Failure failure(std::errc error) { return {std::make_error_code(error).message()}; }

bool isHidden(const Path& relative) {
    return std::ranges::any_of(relative, [](const Path& part) { return part.native().starts_with('.'); });
}

bool isInside(const Path& path, const Path& folder) {
    const auto [inFolder, inPath] = std::ranges::mismatch(folder, path);
    return inFolder == folder.end() && inPath != path.end();
}

}  // namespace

void FakeFileSystem::fail(FileOperation operation, std::string description, std::optional<Path> at) {
    failures_[operation] = {.description = std::move(description), .at = std::move(at)};
}

void FakeFileSystem::stopFailing(FileOperation operation) { failures_.erase(operation); }

void FakeFileSystem::setApplicationSupportDirectory(std::optional<Path> path) {
    applicationSupport_ = std::move(path);
}

void FakeFileSystem::put(const Path& path, std::string contents) {
    for (Path folder = path.parent_path(); folder != folder.root_path(); folder = folder.parent_path())
        nodes_[folder] = Node{};
    nodes_[path].file = Bytes(std::move(contents));
}

void FakeFileSystem::leaveLeftover(const Path& temporaryFolder) {
    put(temporaryFolder / (std::string(leftoverPrefix) + std::to_string(nodes_.size())), "half");
}

std::optional<std::string> FakeFileSystem::contents(const Path& path) const {
    const Node* node = find(path);
    if (!node || !node->file) return std::nullopt;
    return std::string(node->file->view());
}

bool FakeFileSystem::hasFolder(const Path& path) const {
    const Node* node = find(path);
    return node && !node->file;
}

std::vector<std::string> FakeFileSystem::names(const Path& folder) const {
    std::vector<std::string> result;
    for (const auto& [path, node] : nodes_)
        if (path != folder && path.parent_path() == folder) result.push_back(path.filename());
    return result;
}

int FakeFileSystem::writes(const Path& path) const {
    const auto found = writes_.find(path);
    return found == writes_.end() ? 0 : found->second;
}

int FakeFileSystem::writes() const {
    return std::transform_reduce(writes_.begin(), writes_.end(), 0, std::plus<>(),
                                 [](const auto& entry) { return entry.second; });
}

Result<Done> FakeFileSystem::createDirectory(const Path& path) {
    if (auto planned = plannedFailure(FileOperation::createDirectory, path)) return *planned;
    Path made;
    for (const Path& part : path) {
        made /= part;
        const Node* node = find(made);
        if (node && node->file)
            return failure(made == path ? std::errc::file_exists : std::errc::not_a_directory);
        if (!node) nodes_[made] = Node{};
    }
    return Done();
}

Result<Done> FakeFileSystem::writeAtomically(const Path& path, std::span<const std::string_view> pieces,
                                             const Path& temporaryFolder) {
    if (auto planned = plannedFailure(FileOperation::write, path)) return *planned;
    if (auto why = whyUnwritable(temporaryFolder / "temporary")) return *why;
    if (auto why = whyUnwritable(path)) return *why;
    std::string contents;
    for (const auto piece : pieces) contents += piece;
    nodes_[path].file = Bytes(std::move(contents));
    ++writes_[path];
    return Done();
}

Result<Done> FakeFileSystem::keepCopy(const Path& from, const Path& to) {
    if (auto planned = plannedFailure(FileOperation::keepCopy, from)) return *planned;
    const Node* source = find(from);
    if (!source) return failure(std::errc::no_such_file_or_directory);
    if (!source->file) return failure(std::errc::is_a_directory);
    if (auto why = whyUnwritable(to)) return *why;
    nodes_[to] = *source;
    return Done();
}

Result<Done> FakeFileSystem::remove(const Path& path) {
    if (auto planned = plannedFailure(FileOperation::remove, path)) return *planned;
    const Node* node = find(path);
    if (!node) return failure(std::errc::no_such_file_or_directory);
    if (!node->file) return failure(std::errc::is_a_directory);
    nodes_.erase(path);
    return Done();
}

void FakeFileSystem::removeLeftovers(const Path& temporaryFolder) {
    std::erase_if(nodes_, [&](const auto& entry) {
        const auto& [path, node] = entry;
        return node.file && path.parent_path() == temporaryFolder &&
               path.filename().native().starts_with(leftoverPrefix);
    });
}

Result<Bytes> FakeFileSystem::read(const Path& path) const {
    if (auto planned = plannedFailure(FileOperation::read, path)) return *planned;
    const Node* node = find(path);
    if (!node) return failure(std::errc::no_such_file_or_directory);
    if (!node->file) return failure(std::errc::is_a_directory);
    return *node->file;
}

Result<FileReading> FakeFileSystem::open(const Path& path) const {
    const auto now = read(path);
    if (!now) return Failure{now.description()};
    return FileReading([this, path, contents = *now]() -> Result<Bytes> {
        if (auto planned = plannedFailure(FileOperation::read, path)) return *planned;
        return contents;
    });
}

std::optional<std::int64_t> FakeFileSystem::size(const Path& path) const {
    const Node* node = find(path);
    if (!node || !node->file) return std::nullopt;
    return static_cast<std::int64_t>(node->file->size());
}

std::int64_t FakeFileSystem::sizeOfFilesIn(const Path& folder) const {
    std::int64_t sum = 0;
    for (const auto& [path, node] : nodes_)
        if (node.file && isInside(path, folder) && !isHidden(path.lexically_relative(folder)))
            sum += static_cast<std::int64_t>(node.file->size());
    return sum;
}

std::optional<Failure> FakeFileSystem::plannedFailure(FileOperation operation, const Path& path) const {
    const auto found = failures_.find(operation);
    if (found == failures_.end() || (found->second.at && *found->second.at != path)) return std::nullopt;
    return Failure{found->second.description};
}

std::optional<Failure> FakeFileSystem::whyUnwritable(const Path& path) const {
    const Node* parent = find(path.parent_path());
    if (!parent) return failure(std::errc::no_such_file_or_directory);
    if (parent->file) return failure(std::errc::not_a_directory);
    if (hasFolder(path)) return failure(std::errc::is_a_directory);
    return std::nullopt;
}

const FakeFileSystem::Node* FakeFileSystem::find(const Path& path) const {
    const auto found = nodes_.find(path);
    return found == nodes_.end() ? nullptr : &found->second;
}

}  // namespace nettlecap
