#include "platform/linux/InstalledBundle.h"

#include "platform/linux/PropertyList.h"

namespace nettlecap {
namespace {

constexpr std::int64_t largestInfo = std::int64_t{64} * 1024;

}  // namespace

InstalledBundle::InstalledBundle(const FileSystem& files, Path program) : path_(std::move(program)) {
    const Path folder = path_.parent_path().parent_path() / "share" / "nettlecap";
    const Path info = folder / "Info.plist";
    const auto size = files.size(info);
    if (!size) return;
    path_ = folder;
    if (*size > largestInfo) return;
    const auto contents = files.read(info);
    // What can't be read sets no flag.
    if (contents && contents->size() <= largestInfo) flags_.merge(flagsOfPropertyList(contents->view()));
}

std::optional<bool> InstalledBundle::flag(std::string_view key) const {
    const auto found = flags_.find(key);
    if (found == flags_.end()) return std::nullopt;
    return found->second;
}

Path InstalledBundle::programOfProcess() {
    std::error_code error;
    return std::filesystem::read_symlink("/proc/self/exe", error);
}

}  // namespace nettlecap
