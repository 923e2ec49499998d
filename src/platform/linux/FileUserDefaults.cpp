#include "platform/linux/FileUserDefaults.h"

#include "platform/linux/UserFolders.h"

#include <array>

namespace nettlecap {
namespace {

/// Hidden names are those of "." and "..", and of temporary files.
bool isPlainFileName(std::string_view key) {
    return !key.empty() && !key.starts_with('.') && key.find('/') == std::string_view::npos &&
           key.find('\0') == std::string_view::npos;
}

}  // namespace

FileUserDefaults::FileUserDefaults(FileSystem& files, std::optional<Path> folder)
    : files_(files), folder_(std::move(folder)) {
    if (!folder_) return;
    // Files that others may read are out of their reach in a folder that they can't enter.
    // Where there is no folder, the first value to be kept tries again.
    (void)files_.createDirectory(*folder_);
    files_.removeLeftovers(*folder_);
}

std::optional<Path> FileUserDefaults::folderOfUser() {
    const auto configuration = userFolders::configuration();
    if (!configuration) return std::nullopt;
    return *configuration / "Nettlecap";
}

void FileUserDefaults::setData(std::string_view key, const Bytes& data) {
    const auto path = file(key);
    if (!path) return;
    const std::array pieces = {data.view()};
    // A failure is silent: the old value stays, and the program has the new one in memory.
    (void)files_.createDirectory(*folder_);
    (void)files_.writeAtomically(*path, pieces, *folder_);
}

std::optional<Bytes> FileUserDefaults::data(std::string_view key) const {
    const auto path = file(key);
    if (!path) return std::nullopt;
    const auto contents = files_.read(*path);
    if (!contents) return std::nullopt;
    return *contents;
}

std::optional<Path> FileUserDefaults::file(std::string_view key) const {
    if (!folder_ || !isPlainFileName(key)) return std::nullopt;
    return *folder_ / key;
}

}  // namespace nettlecap
