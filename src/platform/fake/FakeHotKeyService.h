#pragma once

#include "platform/HotKeyService.h"

#include <map>
#include <set>
#include <vector>

namespace nettlecap {

/// Delivers the keys that a test presses to whoever registered them.
class FakeHotKeyService final : public HotKeyService {
public:
    using Shortcut = std::pair<KeyCode, std::uint32_t>;  ///< key code and `hotKeyModifier` bits

    static constexpr Status taken = -9878;             ///< eventHotKeyExistsErr
    static constexpr Status alreadyInstalled = -9866;  ///< eventHandlerAlreadyInstalledErr

    /// Presses and releases a shortcut; nothing happens where nobody registered it.
    void press(const Shortcut& shortcut) { tell(shortcut, HotKeyEvent::pressed); }
    void release(const Shortcut& shortcut) { tell(shortcut, HotKeyEvent::released); }
    /// Hands the event over as it stands. Absent: there is no handler.
    std::optional<Status> deliver(const HotKeyEvent* event) {
        if (!handler_) return std::nullopt;
        return handler_->second(event);
    }
    /// Another program has the shortcut from now on.
    void take(const Shortcut& shortcut) { takenByOthers_.insert(shortcut); }
    void giveBack(const Shortcut& shortcut) { takenByOthers_.erase(shortcut); }
    void setHandlerStatus(Status status) { handlerStatus_ = status; }
    /// The user has pressed something that is still on its way.
    void setBehind(bool isBehind) { isBehind_ = isBehind; }

    Registered<HandlerReference> installHandler(Handler handler) override {
        ++installations_;
        if (handlerStatus_ != 0) return {.status = handlerStatus_};
        if (handler_) return {.status = alreadyInstalled};
        handler_ = {HandlerReference{++lastReference_}, std::move(handler)};
        return {.reference = handler_->first};
    }
    void removeHandler(HandlerReference handler) override {
        if (handler_ && handler_->first == handler) handler_.reset();
    }
    Registered<HotKeyReference> registerHotKey(const HotKeyRequest& request) override {
        requests_.push_back(request);
        const Shortcut shortcut(request.keyCode, request.modifiers);
        if (takenByOthers_.contains(shortcut) || find(shortcut)) return {.status = taken};
        const HotKeyReference reference{++lastReference_};
        registered_.emplace(reference, request);
        return {.reference = reference};
    }
    void unregisterHotKey(HotKeyReference hotKey) override { registered_.erase(hotKey); }
    bool isBehind() override { return isBehind_; }

    const std::map<HotKeyReference, HotKeyRequest>& registered() const { return registered_; }
    const std::vector<HotKeyRequest>& requests() const { return requests_; }  ///< all ever made
    bool hasHandler() const { return handler_.has_value(); }
    int installations() const { return installations_; }  ///< of handlers, failed ones too

private:
    const HotKeyRequest* find(const Shortcut& shortcut) const {
        for (const auto& [reference, request] : registered_)
            if (Shortcut(request.keyCode, request.modifiers) == shortcut) return &request;
        return nullptr;
    }
    void tell(const Shortcut& shortcut, std::uint32_t kind) {
        const HotKeyRequest* request = find(shortcut);
        if (!request) return;
        const HotKeyEvent event{.kind = kind, .id = request->id};
        (void)deliver(&event);
    }

    std::optional<std::pair<HandlerReference, Handler>> handler_;
    std::map<HotKeyReference, HotKeyRequest> registered_;
    std::vector<HotKeyRequest> requests_;
    std::set<Shortcut> takenByOthers_;
    Status handlerStatus_ = 0;
    std::uint64_t lastReference_ = 0;
    int installations_ = 0;
    bool isBehind_ = false;
};

}  // namespace nettlecap
