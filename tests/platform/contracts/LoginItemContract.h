#pragma once

#include "platform/LoginItem.h"

#include <gtest/gtest.h>
#include <memory>

namespace nettlecap {

/// A login item to be tested, and the user who has the last word. The program is there to be
/// started, and nothing is registered at first.
class LoginItemHarness {
public:
    virtual ~LoginItemHarness() = default;

    virtual LoginItem& loginItem() = 0;
    virtual void restart() = 0;  ///< as when the program starts again
    virtual void forbid() = 0;   ///< in the system's own settings; it is registered
    virtual void allow() = 0;    ///< after that
    virtual void removeProgram() = 0;
    virtual void whileChangesFail(const Task& task) = 0;  ///< as where nothing can be written
};

inline void PrintTo(LoginItemStatus status, std::ostream* out) {
    constexpr std::string_view names[]{"notRegistered", "enabled", "requiresApproval", "notFound", "unknown"};
    *out << names[static_cast<std::size_t>(status)];
}

/// What every LoginItem does. Instantiate it with a function that makes the harness.
class LoginItemContract : public testing::TestWithParam<std::unique_ptr<LoginItemHarness> (*)()> {
protected:
    LoginItemStatus status() const { return harness->loginItem().status(); }
    Result<Done> registerItem() { return harness->loginItem().registerItem(); }
    Result<Done> unregisterItem() { return harness->loginItem().unregisterItem(); }

    std::unique_ptr<LoginItemHarness> harness = GetParam()();
};

TEST_P(LoginItemContract, IsNotRegisteredAtFirst) { EXPECT_EQ(status(), LoginItemStatus::notRegistered); }

TEST_P(LoginItemContract, IsEnabledOnceItIsRegistered) {
    EXPECT_TRUE(registerItem());

    EXPECT_EQ(status(), LoginItemStatus::enabled);
}

TEST_P(LoginItemContract, StaysEnabledWhenItIsRegisteredAgain) {
    EXPECT_TRUE(registerItem());

    EXPECT_TRUE(registerItem());

    EXPECT_EQ(status(), LoginItemStatus::enabled);
}

TEST_P(LoginItemContract, IsNotRegisteredOnceItIsUnregistered) {
    EXPECT_TRUE(registerItem());

    EXPECT_TRUE(unregisterItem());

    EXPECT_EQ(status(), LoginItemStatus::notRegistered);
}

TEST_P(LoginItemContract, CanBeRegisteredAnew) {
    EXPECT_TRUE(registerItem());
    EXPECT_TRUE(unregisterItem());

    EXPECT_TRUE(registerItem());

    EXPECT_EQ(status(), LoginItemStatus::enabled);
}

TEST_P(LoginItemContract, OutlivesTheProgram) {
    EXPECT_TRUE(registerItem());

    harness->restart();

    EXPECT_EQ(status(), LoginItemStatus::enabled);
}

TEST_P(LoginItemContract, RequiresApprovalOnceTheUserForbidsIt) {
    EXPECT_TRUE(registerItem());

    harness->forbid();
    EXPECT_EQ(status(), LoginItemStatus::requiresApproval);

    harness->allow();
    EXPECT_EQ(status(), LoginItemStatus::enabled);
}

TEST_P(LoginItemContract, DoesNotOverruleTheUserWhenItIsRegistered) {
    EXPECT_TRUE(registerItem());
    harness->forbid();

    (void)registerItem();

    EXPECT_EQ(status(), LoginItemStatus::requiresApproval);
}

TEST_P(LoginItemContract, CanBeUnregisteredWhileItRequiresApproval) {
    EXPECT_TRUE(registerItem());
    harness->forbid();

    EXPECT_TRUE(unregisterItem());

    EXPECT_EQ(status(), LoginItemStatus::notRegistered);
}

TEST_P(LoginItemContract, IsNotFoundWhereThereIsNothingToStart) {
    harness->removeProgram();

    EXPECT_EQ(status(), LoginItemStatus::notFound);
}

TEST_P(LoginItemContract, SaysWhyNothingCanBeRegisteredWhereThereIsNothingToStart) {
    harness->removeProgram();

    const auto registered = registerItem();

    ASSERT_FALSE(registered);
    EXPECT_NE(registered.description(), "");
    EXPECT_EQ(status(), LoginItemStatus::notFound);
}

TEST_P(LoginItemContract, SaysWhyItCannotBeRegistered) {
    std::string description;
    harness->whileChangesFail([&] {
        const auto registered = registerItem();
        ASSERT_FALSE(registered);
        description = registered.description();
    });

    EXPECT_NE(description, "");
    EXPECT_EQ(status(), LoginItemStatus::notRegistered);
}

TEST_P(LoginItemContract, SaysWhyItCannotBeUnregistered) {
    EXPECT_TRUE(registerItem());
    std::string description;
    harness->whileChangesFail([&] {
        const auto unregistered = unregisterItem();
        ASSERT_FALSE(unregistered);
        description = unregistered.description();
    });

    EXPECT_NE(description, "");
    EXPECT_EQ(status(), LoginItemStatus::enabled);
}

TEST_P(LoginItemContract, WorksAgainAfterAFailure) {
    harness->whileChangesFail([&] { EXPECT_FALSE(registerItem()); });

    EXPECT_TRUE(registerItem());

    EXPECT_EQ(status(), LoginItemStatus::enabled);
}

}  // namespace nettlecap
