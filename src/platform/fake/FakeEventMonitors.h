#pragma once

#include "platform/InputEvents.h"

namespace nettlecap {

/// Tells of every key and click that a test sends.
class FakeEventMonitors final : public EventMonitors {
public:
    void sendGlobal(const InputEvent& event) { global_.emit(event); }  ///< to another application
    void sendLocal(const InputEvent& event) { local_.emit(event); }    ///< to this program's windows
    /// Monitors added from now on; those that are there go on.
    void setRefusesGlobal(bool refuses) { refusesGlobal_ = refuses; }
    void setRefusesLocal(bool refuses) { refusesLocal_ = refuses; }

    std::optional<Subscription> addGlobal(std::uint32_t mask, Handler handler) override {
        if (refusesGlobal_) return std::nullopt;
        return add(global_, mask, std::move(handler));
    }
    std::optional<Subscription> addLocal(std::uint32_t mask, Handler handler) override {
        if (refusesLocal_) return std::nullopt;
        return add(local_, mask, std::move(handler));
    }

private:
    static Subscription add(const Signal<InputEvent>& events, std::uint32_t mask, Handler handler) {
        return events.subscribe([mask, handler = std::move(handler)](const InputEvent& event) {
            if ((mask & static_cast<std::uint32_t>(event.kind)) != 0) handler(event);
        });
    }

    Signal<InputEvent> global_;
    Signal<InputEvent> local_;
    bool refusesGlobal_ = false;
    bool refusesLocal_ = false;
};

}  // namespace nettlecap
