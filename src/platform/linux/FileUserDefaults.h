#pragma once

#include "platform/Files.h"
#include "platform/UserDefaults.h"

namespace nettlecap {

/// One file for each key, named by it and holding the blob as it stands. A key that is no
/// plain, visible file name keeps nothing. Only one process may use the folder at a time.
class FileUserDefaults final : public UserDefaults {
public:
    /// Makes the folder and takes others' rights to it away. Where it is absent nothing is
    /// kept. `files` must outlive the defaults.
    FileUserDefaults(FileSystem& files, std::optional<Path> folder);

    /// The program's folder for the user of this process. Absent: the user has no home.
    static std::optional<Path> folderOfUser();

    void setData(std::string_view key, const Bytes& data) override;
    std::optional<Bytes> data(std::string_view key) const override;

private:
    std::optional<Path> file(std::string_view key) const;

    FileSystem& files_;
    std::optional<Path> folder_;
};

}  // namespace nettlecap
