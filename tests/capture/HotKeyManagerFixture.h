#pragma once

#include "capture/HotKeyManager.h"
#include "platform/fake/FakeHotKeyService.h"
#include "platform/fake/FakeTime.h"

#include <gmock/gmock.h>

namespace nettlecap {

/// Keeps a diary of what is ended, and can succeed without handing out a reference.
class OddHotKeyService final : public HotKeyService {
public:
    FakeHotKeyService fake;
    bool keepsHandlerReference = false;
    bool keepsHotKeyReferences = false;
    std::vector<std::string> diary;

    Registered<HandlerReference> installHandler(Handler handler) override {
        auto installed = fake.installHandler(std::move(handler));
        if (keepsHandlerReference) installed.reference.reset();
        return installed;
    }
    void removeHandler(HandlerReference handler) override {
        diary.push_back("handler");
        fake.removeHandler(handler);
    }
    Registered<HotKeyReference> registerHotKey(const HotKeyRequest& request) override {
        auto registered = fake.registerHotKey(request);
        if (keepsHotKeyReferences) registered.reference.reset();
        return registered;
    }
    void unregisterHotKey(HotKeyReference hotKey) override {
        diary.push_back("hot key " + std::to_string(fake.registered().at(hotKey).id.id));
        fake.unregisterHotKey(hotKey);
    }
    bool isBehind() override { return fake.isBehind(); }
};

class HotKeyManagerFixture : public testing::Test {
protected:
    using Call = std::pair<HotKeyAction, HotKeyPhase>;

    HotKeyManager::ActionHandler note() {
        return [this](HotKeyAction action, HotKeyPhase phase) { calls.emplace_back(action, phase); };
    }
    std::vector<HotKeyAction> registerAll() { return manager->registerShortcuts(shortcuts, note()); }
    /// As the system hands over an event of this id.
    Status deliver(std::uint32_t id, std::uint32_t kind = HotKeyEvent::pressed) {
        const HotKeyEvent event{.kind = kind, .id = {.signature = HotKeyManager::signature, .id = id}};
        return service.fake.deliver(&event).value();
    }
    void runMainLoop() { time.advance(Seconds(0)); }
    std::vector<std::uint32_t> registeredIds() const {
        std::vector<std::uint32_t> ids;
        for (const auto& [reference, request] : service.fake.registered()) ids.push_back(request.id.id);
        return ids;
    }
    /// What a shortcut of these flags is registered with.
    std::uint32_t registeredModifiers(ModifierFlags flags) {
        shortcuts.previous.modifiers = flags;
        registerAll();
        return service.fake.registered().begin()->second.modifiers;
    }

    static constexpr FakeHotKeyService::Shortcut commandOne{18, 0x100};
    static constexpr FakeHotKeyService::Shortcut commandTwo{19, 0x100};

    HotKeyShortcuts shortcuts{
        .previous = {.keyCode = 18, .modifiers = modifier::command},
        .next = {.keyCode = 19, .modifiers = modifier::command},
        .openSearch = {.keyCode = 9, .modifiers = modifier::command | modifier::shift},
        .toggleFavorite = {.keyCode = 3, .modifiers = modifier::option},
    };
    OddHotKeyService service;
    FakeTime time;
    std::unique_ptr<HotKeyManager> manager = std::make_unique<HotKeyManager>(service, time);
    std::vector<Call> calls;
};

}  // namespace nettlecap
