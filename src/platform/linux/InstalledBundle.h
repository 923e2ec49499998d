#pragma once

#include "platform/BundleInfo.h"
#include "platform/Files.h"

#include <map>

namespace nettlecap {

/// The folder share/nettlecap beside the bin that the program runs from. A program that was
/// not installed has none, and no flag is set for it.
class InstalledBundle final : public BundleInfo {
public:
    explicit InstalledBundle(const FileSystem& files, Path program = programOfProcess());

    Path path() const override { return path_; }
    std::optional<bool> flag(std::string_view key) const override;

private:
    static Path programOfProcess();

    Path path_;
    std::map<std::string, bool, std::less<>> flags_;
};

}  // namespace nettlecap
