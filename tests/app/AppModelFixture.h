#pragma once

#include "app/AppFakes.h"
#include "app/AppModel.h"
#include "platform/fake/FakePlatform.h"

#include <gmock/gmock.h>

namespace nettlecap {

using namespace std::chrono_literals;

/// A model on a system in memory. It is made, not started.
class AppModelFixture : public testing::Test {
protected:
    using Shortcut = FakeHotKeyService::Shortcut;

    // The default shortcuts.
    static constexpr Shortcut previous{18, hotKeyModifier::command};
    static constexpr Shortcut next{19, hotKeyModifier::command};
    static constexpr Shortcut openSearch{9, hotKeyModifier::command | hotKeyModifier::shift};
    static constexpr Shortcut toggleFavorite{3, hotKeyModifier::option};

    static inline const RunningApplication notes{
        .processIdentifier = 7, .localizedName = "Notas", .bundleIdentifier = "notas", .handle = 70};
    static inline const RunningApplication mail{
        .processIdentifier = 8, .localizedName = "Correio", .bundleIdentifier = "correio", .handle = 80};

    /// A new model of the same user.
    void make() {
        model.reset();
        model = newModel({.updates = std::make_unique<FakeUpdates>(services),
                          .loginItem = std::make_unique<FakeLoginItemSync>(services)});
        popoverClosing =
            model->onPopoverShouldClose([this] { windows.happenings.emplace_back("popover closed"); });
    }
    void make(const AppPreferences& preferences) {
        preferences.save(system.defaults);
        make();
    }
    std::unique_ptr<AppModel> newModel(AppModel::Services with) {
        return std::make_unique<AppModel>(
            system.platform(),
            AppModel::Windows{.hud = std::make_unique<FakeNavigationHUD>(windows),
                              .searchPanel = std::make_unique<FakeSearchPanel>(windows)},
            std::move(with));
    }
    /// Started, with these texts in the history; the last is the newest.
    void startWith(const std::vector<std::string>& texts) {
        model->start();
        for (const auto& text : texts) copyOutside(text);
    }

    /// Takes a millisecond, so that no two copies have one date.
    void copyOutside(const FakePasteboard::Offer& offer) {
        system.pasteboard.copyFromOutside(offer);
        system.time.advance(1ms);
    }
    void copyOutside(std::string text) { copyOutside({{"public.utf8-plain-text", Bytes(std::move(text))}}); }
    void copyPictureOutside() { copyOutside({{"public.png", Bytes("\x89PNG\r\n\x1a\nflor")}}); }

    void press(const Shortcut& shortcut) {
        system.hotKeys.press(shortcut);
        system.time.advance(0s);
    }
    void release(const Shortcut& shortcut) {
        system.hotKeys.release(shortcut);
        system.time.advance(0s);
    }
    void tap(const Shortcut& shortcut) {
        press(shortcut);
        release(shortcut);
    }
    void hold(ModifierFlags modifiers) { system.keyboard.setModifiersDown(modifiers); }
    void letGo() { hold(0); }
    /// Long enough for a waiting paste to be over.
    void wait() { system.time.advance(1s); }

    const ClipboardEntry& entry(std::size_t index) const { return *model->store().entries()->at(index); }
    std::vector<std::string> history() const {
        std::vector<std::string> texts;
        for (const auto& stored : *model->store().entries())
            texts.push_back(stored->text.value_or("picture"));
        return texts;
    }
    std::optional<std::string> pasteboardText() const {
        return system.pasteboard.string("public.utf8-plain-text");
    }
    std::string status() const { return model->statusMessage()->value_or("none"); }
    /// What the entry says on which navigation stands.
    std::string standsOn() const {
        if (!model->navigationEntryID()) return "nothing";
        for (const auto& stored : *model->store().entries())
            if (stored->id == *model->navigationEntryID()) return stored->text.value_or("picture");
        return "an entry that is gone";
    }
    /// Such as "dois, 2 of 3".
    std::string card() const {
        if (!windows.card) return "hidden";
        return windows.card->entry.text.value_or("picture") + ", " + std::to_string(windows.card->position) +
               " of " + std::to_string(windows.card->total);
    }
    std::size_t pastes() const { return system.keyboard.typed().size() / 2; }

    const Path folder = "/home/ana/.local/share/Nettlecap";

    FakePlatform system;
    SeenWindows windows;
    SeenServices services;
    std::unique_ptr<AppModel> model;
    Subscription popoverClosing;

    AppModelFixture() { make(); }
};

}  // namespace nettlecap
