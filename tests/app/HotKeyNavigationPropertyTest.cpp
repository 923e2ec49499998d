#include "app/AppModelFixture.h"

#include <algorithm>
#include <random>

namespace nettlecap {
namespace {

/// The rules of navigation in their plainest form, with time in whole milliseconds.
class NavigationRules {
public:
    struct Item {
        std::string text;
        bool isFavorite = false;
    };

    static constexpr std::size_t limit = 10;
    static constexpr ModifierFlags previousModifiers = modifier::command;
    static constexpr ModifierFlags nextModifiers = modifier::control | modifier::option;

    std::vector<Item> items;  // the texts are all different
    std::string standsOn = "nothing";
    std::string card = "hidden";
    std::string pasteboard;
    std::string status = "none";
    ModifierFlags modifiersDown = 0;
    bool isTrusted = true;
    std::size_t pastes = 0;
    int beeps = 0;

    void capture(const std::string& text) {
        Item item{.text = text};
        if (const auto known = find(text); known != items.end()) {
            item = *known;
            items.erase(known);
        }
        items.insert(items.begin(), item);
        for (auto i = items.end(); items.size() > limit && i != items.begin();)
            if (!(--i)->isFavorite) i = items.erase(i);
        pasteboard = text;
        standsOn = "nothing";
    }

    void remove(std::size_t index) {
        if (items[index].text == standsOn) standsOn = "an entry that is gone";
        items.erase(at(index));
    }

    void pressed(bool isNext) {
        wait.reset();
        if (held != isNext) {
            held = isNext;
            hasSelection = false;
        }
        if (step(isNext)) hasSelection = true;
    }

    void released(bool isNext) {
        if (held != isNext) return;
        held.reset();
        if (std::exchange(hasSelection, false)) {
            wait = {isNext ? nextModifiers : previousModifiers, now};
            look();
        } else {
            card = "hidden";
        }
    }

    void openSearch() {
        wait.reset();
        card = "hidden";
    }

    void favorite() {
        const auto item = find(standsOn);
        if (item == items.end()) {
            ++beeps;
            status = "Selecione um item do histórico com ↑ ou ↓";
            return;
        }
        status = item->isFavorite ? "Removido dos favoritos" : "Adicionado aos favoritos";
        item->isFavorite = !item->isFavorite;
    }

    void copySnippet(const std::string& text) {
        pasteboard = text;
        standsOn = "nothing";
        status = "Copiado — use ⌘V para colar";
    }

    void purge() {
        const auto removed = std::erase_if(items, [](const Item& item) { return !item.isFavorite; });
        standsOn = "nothing";
        status = (removed == 1 ? "1 item removido" : std::to_string(removed) + " itens removidos") +
                 "; favoritos e Salvos foram preservados";
    }

    void pass(int milliseconds) {
        for (; milliseconds > 0; --milliseconds) {
            ++now;
            look();
            pastes += std::erase(typedAt, now);
        }
    }

private:
    struct Wait {
        ModifierFlags modifiers = 0;
        int looksAt = 0;
    };

    std::vector<Item>::iterator at(std::size_t index) {
        return items.begin() + static_cast<std::ptrdiff_t>(index);
    }
    std::vector<Item>::iterator find(const std::string& text) {
        return std::ranges::find(items, text, &Item::text);
    }

    bool step(bool isNext) {
        if (items.empty()) {
            ++beeps;
            return false;
        }
        const auto from = find(standsOn);
        const auto current = from == items.end() ? 0 : from - items.begin();
        const auto wanted = isNext ? current - 1 : current + 1;
        const auto index = std::clamp<std::ptrdiff_t>(wanted, 0, std::ssize(items) - 1);
        standsOn = pasteboard = items[static_cast<std::size_t>(index)].text;
        card = standsOn + ", " + std::to_string(index + 1) + " of " + std::to_string(items.size());
        status = "Copiado — use ⌘V para colar";
        return true;
    }

    void look() {
        if (!wait || wait->looksAt != now) return;
        if ((modifiersDown & wait->modifiers) != 0) {
            wait->looksAt += 20;
            return;
        }
        wait.reset();
        card = "hidden";
        if (isTrusted)
            typedAt.push_back(now + 120);
        else
            status = "Copiado. Autorize Acessibilidade para colar automaticamente.";
    }

    std::optional<bool> held;  // whether it is the chord of the next entry
    bool hasSelection = false;
    std::optional<Wait> wait;
    std::vector<int> typedAt;
    int now = 0;
};

class HotKeyNavigationPropertyTest : public AppModelFixture, public testing::WithParamInterface<unsigned> {
protected:
    static constexpr Shortcut nextChord{19, hotKeyModifier::control | hotKeyModifier::option};

    HotKeyNavigationPropertyTest() {
        AppPreferences preferences;
        preferences.nextShortcut.modifiers = NavigationRules::nextModifiers;
        preferences.maxHistoryItems = NavigationRules::limit;
        make(preferences);
        model->start();
    }

    int upTo(int most) { return std::uniform_int_distribution(0, most)(random); }

    /// Does one thing to the model and the same by the rules; says what it did.
    std::string act() {
        switch (upTo(15)) {
        case 0:
        case 1: return press(false);
        case 2:
        case 3: return release(false);
        case 4: return press(true);
        case 5: return release(true);
        case 6: return captureSomething();
        case 7: return removeSomething();
        case 8: return pressFavorite();
        case 9: return pressOpenSearch();
        case 10:
        case 11: return holdSomething();
        case 12: return seldom();
        default: return letTimePass();
        }
    }

    std::string press(bool isNext) {
        AppModelFixture::press(isNext ? nextChord : previous);
        rules.pressed(isNext);
        return isNext ? "next pressed" : "previous pressed";
    }
    std::string release(bool isNext) {
        AppModelFixture::release(isNext ? nextChord : previous);
        rules.released(isNext);
        return isNext ? "next released" : "previous released";
    }
    std::string captureSomething() {
        const std::string text = "texto " + std::to_string(upTo(14));
        copyOutside(text);
        rules.capture(text);
        rules.pass(1);
        return text + " captured";
    }
    std::string removeSomething() {
        if (rules.items.empty()) return "nothing";
        const auto index = static_cast<std::size_t>(upTo(static_cast<int>(rules.items.size()) - 1));
        model->store().remove(ClipboardEntry(entry(index)));
        rules.remove(index);
        return "entry " + std::to_string(index) + " removed";
    }
    std::string pressFavorite() {
        tap(toggleFavorite);
        rules.favorite();
        return "favourite pressed";
    }
    std::string pressOpenSearch() {
        tap(openSearch);
        rules.openSearch();
        return "open search pressed";
    }
    std::string holdSomething() {
        constexpr std::array some{modifier::command, modifier::control, modifier::option, modifier::shift};
        const ModifierFlags held =
            upTo(2) == 0 ? 0
                         : some[static_cast<std::size_t>(upTo(3))] | some[static_cast<std::size_t>(upTo(3))];
        hold(held);
        rules.modifiersDown = held;
        return "modifiers " + std::to_string(held) + " down";
    }
    std::string seldom() {
        switch (upTo(7)) {
        case 0:
            model->purgeHistory();
            rules.purge();
            return "purged";
        case 1:
        case 2:
            model->copy(SavedSnippet{.content = "Olá"});
            rules.copySnippet("Olá");
            return "snippet copied";
        case 3:
            rules.isTrusted = !rules.isTrusted;
            system.keyboard.setTrusted(rules.isTrusted);
            return "permission changed";
        default:
            // Nothing of a gesture, of the position or of a waiting paste changes by it.
            model->updatePreferences([](AppPreferences& preferences) { preferences.captureImages = false; });
            return "preferences changed";
        }
    }
    std::string letTimePass() {
        const int milliseconds = upTo(3) == 0 ? upTo(200) : upTo(25);
        system.time.advance(std::chrono::milliseconds(milliseconds));
        rules.pass(milliseconds);
        return std::to_string(milliseconds) + " ms passed";
    }

    void expectTheSame() const {
        std::vector<std::string> texts;
        for (const auto& item : rules.items) texts.push_back(item.text);
        EXPECT_EQ(history(), texts);
        EXPECT_EQ(standsOn(), rules.standsOn);
        EXPECT_EQ(card(), rules.card);
        EXPECT_EQ(pasteboardText().value_or(""), rules.pasteboard);
        EXPECT_EQ(pastes(), rules.pastes);
        EXPECT_EQ(status(), rules.status);
        EXPECT_EQ(system.application.beeps(), rules.beeps);
    }

    std::mt19937 random{GetParam()};
    NavigationRules rules;
};

TEST_P(HotKeyNavigationPropertyTest, FollowsTheRulesThroughWhateverHappens) {
    std::string lately;
    for (int i = 0; i < 2000 && !HasFailure(); ++i) {
        lately = lately.substr(lately.size() > 400 ? lately.size() - 400 : 0) + act() + "; ";
        SCOPED_TRACE("step " + std::to_string(i) + ", lately: " + lately);
        expectTheSame();
    }
    EXPECT_GT(pastes(), 10U);
}

INSTANTIATE_TEST_SUITE_P(Seeds, HotKeyNavigationPropertyTest, testing::Range(1U, 31U));

}  // namespace
}  // namespace nettlecap
