#pragma once

#include "platform/StatusItem.h"

#include <functional>
#include <gmock/gmock.h>
#include <memory>

namespace nettlecap {

/// A status item to be tested, the pointer on it, and the keyboard beside it.
class StatusItemHarness {
public:
    virtual ~StatusItemHarness() = default;

    virtual StatusItem& item() = 0;
    virtual void click(StatusItemClick button) = 0;
    virtual bool isMenuOpen() = 0;
    virtual void choose(const std::string& title) = 0;  ///< with the pointer, in the open menu
    virtual void pressCommand(char key) = 0;            ///< ⌘ and the key
    virtual void leaveMenu() = 0;                       ///< with nothing chosen
    virtual bool runUntil(const std::function<bool()>& condition) = 0;  ///< false: long past the time for it
};

/// What every StatusItem does. Instantiate it with a function that makes the harness.
class StatusItemContract : public testing::TestWithParam<std::unique_ptr<StatusItemHarness> (*)()> {
protected:
    StatusItemContract() {
        item.setToolTip("Nettlecap");
        item.setMenu(makeMenu());
    }

    MenuItem line(const std::string& title, const std::string& key) {
        return {.title = title, .keyEquivalent = key, .action = [this, title] { told.push_back(title); }};
    }
    Menu makeMenu() {
        return {.title = "Nettlecap",
                .items = {line("Buscar", ""), {}, line("Settings", ","), {}, line("Quit", "q")},
                .willOpen =
                    [this](Menu& menu) {
                        told.push_back("opens");
                        menu.items[0].isEnabled = isFirstEnabled;
                        menu.items[4].isEnabled = isLastEnabled;
                    },
                .didClose = [this] { told.push_back("closed"); }};
    }
    void click(StatusItemClick button) {
        const auto before = clicks.size();
        harness->click(button);
        EXPECT_TRUE(harness->runUntil([&] { return clicks.size() > before; }));
    }
    void open() {
        item.popUpMenu();
        ASSERT_TRUE(harness->runUntil([this] { return harness->isMenuOpen(); }));
    }
    bool waitUntilClosed() {
        return harness->runUntil([this] { return !harness->isMenuOpen(); });
    }
    bool waitUntilTold(const std::string& last) {
        return harness->runUntil([&] { return !told.empty() && told.back() == last; });
    }

    bool isFirstEnabled = true;
    bool isLastEnabled = true;
    std::vector<std::string> told;  // of the menu, in order; an item by its title
    std::vector<StatusItemClick> clicks;
    std::unique_ptr<StatusItemHarness> harness = GetParam()();
    StatusItem& item = harness->item();
    Subscription clicking = item.onClick([this](StatusItemClick click) { clicks.push_back(click); });
};

TEST_P(StatusItemContract, TellsWhichButtonClickedIt) {
    using enum StatusItemClick;
    for (const auto button : {left, right, right, left, left}) click(button);

    EXPECT_THAT(clicks, testing::ElementsAre(left, right, right, left, left));
    EXPECT_TRUE(told.empty());
}

TEST_P(StatusItemContract, TellsAClickToNobodyWhoListensNoMore) {
    int others = 0;
    const auto other = item.onClick([&](StatusItemClick) { ++others; });
    clicking.reset();

    harness->click(StatusItemClick::left);

    EXPECT_TRUE(harness->runUntil([&] { return others == 1; }));
    EXPECT_TRUE(clicks.empty());
}

TEST_P(StatusItemContract, TellsThatTheMenuOpensAndThatItIsClosed) {
    for (int time = 0; time < 2; ++time) {
        told.clear();
        open();
        EXPECT_THAT(told, testing::ElementsAre("opens"));

        harness->leaveMenu();

        EXPECT_TRUE(waitUntilClosed());
        EXPECT_THAT(told, testing::ElementsAre("opens", "closed"));
    }
}

TEST_P(StatusItemContract, WhatIsChosenActsOnceTheMenuIsClosed) {
    for (const char* title : {"Buscar", "Settings", "Quit"}) {
        told.clear();
        open();

        harness->choose(title);

        EXPECT_TRUE(waitUntilTold(title));
        EXPECT_TRUE(waitUntilClosed());
        EXPECT_THAT(told, testing::ElementsAre("opens", "closed", title));
    }
}

TEST_P(StatusItemContract, WhatIsDisabledAtAnOpeningCannotBeChosenThen) {
    isFirstEnabled = false;
    open();
    harness->choose("Buscar");
    harness->leaveMenu();
    ASSERT_TRUE(waitUntilClosed());
    EXPECT_THAT(told, testing::ElementsAre("opens", "closed"));

    isFirstEnabled = true;
    open();
    harness->choose("Buscar");

    EXPECT_TRUE(waitUntilTold("Buscar"));
}

TEST_P(StatusItemContract, AKeyChoosesWhileTheMenuIsOpen) {
    for (const auto& [key, title] : {std::pair(',', "Settings"), std::pair('q', "Quit")}) {
        told.clear();
        open();

        harness->pressCommand(key);

        EXPECT_TRUE(waitUntilTold(title));
        EXPECT_TRUE(waitUntilClosed());
        EXPECT_THAT(told, testing::ElementsAre("opens", "closed", title));
    }
}

TEST_P(StatusItemContract, AKeyChoosesNothingThatIsDisabled) {
    isLastEnabled = false;
    open();

    harness->pressCommand('q');
    harness->leaveMenu();

    EXPECT_TRUE(waitUntilClosed());
    EXPECT_THAT(told, testing::ElementsAre("opens", "closed"));
}

TEST_P(StatusItemContract, AKeyDoesNothingWhileTheMenuIsClosed) {
    open();
    harness->leaveMenu();
    ASSERT_TRUE(waitUntilClosed());

    harness->pressCommand('q');
    click(StatusItemClick::left);

    EXPECT_THAT(told, testing::ElementsAre("opens", "closed"));
}

TEST_P(StatusItemContract, AClickOnItWhileTheMenuIsOpenClosesTheMenuAndNoMore) {
    open();

    harness->click(StatusItemClick::left);

    EXPECT_TRUE(waitUntilClosed());
    click(StatusItemClick::right);  // told after whatever the first one had to tell
    EXPECT_THAT(clicks, testing::ElementsAre(StatusItemClick::right));
}

TEST_P(StatusItemContract, HasTheMenuThatItWasGivenLast) {
    item.setMenu({.title = "Nettlecap", .items = {line("Outro", "")}, .willOpen = {}, .didClose = {}});

    open();
    harness->choose("Outro");

    EXPECT_TRUE(waitUntilTold("Outro"));
    EXPECT_THAT(told, testing::ElementsAre("Outro"));
}

}  // namespace nettlecap
