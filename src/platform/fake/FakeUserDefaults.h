#pragma once

#include "platform/UserDefaults.h"

#include <map>

namespace nettlecap {

class FakeUserDefaults final : public UserDefaults {
public:
    void setRefusesWrites(bool refuses) { refusesWrites_ = refuses; }

    void setData(std::string_view key, const Bytes& data) override {
        if (!refusesWrites_) values_.insert_or_assign(std::string(key), data);
    }
    std::optional<Bytes> data(std::string_view key) const override {
        const auto found = values_.find(key);
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::map<std::string, Bytes, std::less<>> values_;
    bool refusesWrites_ = false;
};

}  // namespace nettlecap
