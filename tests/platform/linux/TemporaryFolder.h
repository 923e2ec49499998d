#pragma once

#include "platform/Values.h"

#include <cstdlib>
#include <stdexcept>
#include <sys/stat.h>

namespace nettlecap {

/// An empty folder that anybody may use; gone with everything in it when destroyed.
class TemporaryFolder {
public:
    TemporaryFolder() {
        std::string name = std::filesystem::temp_directory_path() / "nettlecap-folder.XXXXXX";
        if (!::mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
        path_ = name;
        ::chmod(path_.c_str(), 0777);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }

    const Path& path() const { return path_; }

private:
    Path path_;
};

}  // namespace nettlecap
