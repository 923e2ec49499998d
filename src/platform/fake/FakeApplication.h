#pragma once

#include "platform/Application.h"

namespace nettlecap {

class FakeApplication final : public Application {
public:
    struct Icon {
        std::string name;
        std::string fallbackSymbol;

        bool operator==(const Icon&) const = default;
    };

    void raise(OpenEvent event) { opened_.emit(event); }  ///< as the main loop does

    void beep() override { ++beeps_; }
    void setAccessory() override { isAccessory_ = true; }
    void setIcon(std::string_view name, std::string_view fallbackSymbol) override {
        icon_ = {.name = std::string(name), .fallbackSymbol = std::string(fallbackSymbol)};
    }
    void terminate() override { ++terminations_; }
    Subscription onOpenEvent(std::function<void(OpenEvent)> handler) override {
        return opened_.subscribe(std::move(handler));
    }

    int beeps() const { return beeps_; }
    bool isAccessory() const { return isAccessory_; }
    const std::optional<Icon>& icon() const { return icon_; }
    int terminations() const { return terminations_; }

private:
    int beeps_ = 0;
    bool isAccessory_ = false;
    std::optional<Icon> icon_;
    int terminations_ = 0;
    Signal<OpenEvent> opened_;
};

}  // namespace nettlecap
