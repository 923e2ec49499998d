#pragma once

#include "platform/BundleInfo.h"

#include <map>

namespace nettlecap {

/// An installed program whose Info.plist says nothing until a test writes in it.
class FakeBundleInfo final : public BundleInfo {
public:
    void setPath(Path path) { path_ = std::move(path); }
    void setFlag(std::string_view key, bool isOn) { flags_.insert_or_assign(std::string(key), isOn); }

    Path path() const override { return path_; }
    std::optional<bool> flag(std::string_view key) const override {
        const auto found = flags_.find(key);
        return found == flags_.end() ? std::nullopt : std::optional(found->second);
    }

private:
    Path path_ = "/usr/share/nettlecap";
    std::map<std::string, bool, std::less<>> flags_;
};

}  // namespace nettlecap
