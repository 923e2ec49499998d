#pragma once

#include "platform/Application.h"

#include <gmock/gmock.h>
#include <memory>

namespace nettlecap {

/// The program that a test runs in, and the desktop around it.
class ApplicationHarness {
public:
    virtual ~ApplicationHarness() = default;

    virtual Application& application() = 0;
    virtual void reopen() = 0;      ///< the desktop asks for it while it runs; returns when told
    virtual bool endsItself() = 0;  ///< whether the main loop ends once it runs again
};

/// What every Application does. Instantiate it with a function that makes the harness.
class ApplicationContract : public testing::TestWithParam<std::unique_ptr<ApplicationHarness> (*)()> {
protected:
    Subscription listen(std::vector<OpenEvent>& heard) {
        return harness->application().onOpenEvent([&](OpenEvent event) { heard.push_back(event); });
    }

    std::unique_ptr<ApplicationHarness> harness = GetParam()();
};

TEST_P(ApplicationContract, TellsEverybodyWhoListensThatItIsToOpenAgain) {
    std::vector<OpenEvent> first;
    std::vector<OpenEvent> second;
    const auto listening = listen(first);
    const auto alsoListening = listen(second);

    harness->reopen();
    harness->reopen();

    EXPECT_THAT(first, testing::ElementsAre(OpenEvent::reopen, OpenEvent::reopen));
    EXPECT_EQ(second, first);
}

TEST_P(ApplicationContract, TellsNobodyWhoListensNoMore) {
    std::vector<OpenEvent> heard;
    std::vector<OpenEvent> still;
    auto listening = listen(heard);
    const auto listeningStill = listen(still);

    listening.reset();
    harness->reopen();

    EXPECT_TRUE(heard.empty());
    EXPECT_EQ(still.size(), 1U);
}

TEST_P(ApplicationContract, EndsWhenItIsTold) { EXPECT_TRUE(harness->endsItself()); }

TEST_P(ApplicationContract, BeingAnAccessoryBeepingAndHavingAnIconDisturbNothing) {
    std::vector<OpenEvent> heard;
    const auto listening = listen(heard);

    for (int time = 0; time < 2; ++time) {
        harness->application().setAccessory();
        harness->application().setIcon("no icon of this name", "nor a symbol");
        harness->application().beep();
    }
    harness->reopen();

    EXPECT_EQ(heard.size(), 1U);
}

}  // namespace nettlecap
