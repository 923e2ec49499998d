#pragma once

#include "platform/Values.h"

#include <cstdlib>
#include <filesystem>

namespace nettlecap {

/// A folder of its own, gone with it.
class TemporaryFolder {
public:
    TemporaryFolder() {
        const char* base = std::getenv("TMPDIR");
        std::string name = std::string(base ? base : "/tmp") + "/nettlecap-bench-XXXXXX";
        if (!::mkdtemp(name.data())) std::abort();
        path_ = name;
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder() { std::filesystem::remove_all(path_); }

    const Path& path() const { return path_; }

private:
    Path path_;
};

}  // namespace nettlecap
