#include "platform/linux/HistoryLock.h"

#include "platform/linux/ChildProcess.h"
#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace nettlecap {
namespace {

class HistoryLockTest : public testing::Test {
protected:
    std::string take() const {
        const auto lock = HistoryLock::take(folder);
        if (!lock) return lock.description();
        return *lock ? "taken" : "somebody else's";
    }

    TemporaryFolder temporary;
    Path folder = temporary.path();
};

TEST_F(HistoryLockTest, IsHeldOnceAtATime) {
    auto first = HistoryLock::take(folder);
    ASSERT_TRUE(first && *first);
    EXPECT_EQ(take(), "somebody else's");

    (*first).reset();
    EXPECT_EQ(take(), "taken");
}

TEST_F(HistoryLockTest, ShutsOtherProcessesOut) {
    const auto lock = HistoryLock::take(folder);
    ASSERT_TRUE(lock && *lock);

    EXPECT_EQ(inChild([&] { return take(); }), "somebody else's");
}

TEST_F(HistoryLockTest, IsFreeAgainWhenItsProcessIsKilled) {
    ChildProcess holder([&](const ChildProcess::Say& say) {
        const auto lock = HistoryLock::take(folder);
        say(lock && *lock ? "taken." : "failed.");
        while (true) ::pause();
    });
    ASSERT_EQ(holder.readUntil('.'), "taken.");
    EXPECT_EQ(take(), "somebody else's");

    holder.kill();

    EXPECT_EQ(take(), "taken");
}

TEST_F(HistoryLockTest, MovesWithItsOwner) {
    auto taken = HistoryLock::take(folder);
    ASSERT_TRUE(taken && *taken);
    std::optional<HistoryLock> owner = std::move(*taken);

    EXPECT_EQ(take(), "somebody else's");
    owner.reset();
    EXPECT_EQ(take(), "taken");
}

TEST_F(HistoryLockTest, EachFolderHasItsOwn) {
    const TemporaryFolder other;
    const auto lock = HistoryLock::take(folder);

    EXPECT_TRUE(*HistoryLock::take(other.path()));
}

TEST_F(HistoryLockTest, SaysWhyItCannotBeTaken) {
    std::filesystem::permissions(folder, std::filesystem::perms(0555));
    const auto readOnly = asOrdinaryUser([&] { return take(); });
    std::filesystem::permissions(folder, std::filesystem::perms(0777));

    EXPECT_EQ(readOnly, "Permission denied");
    folder /= "nowhere";
    EXPECT_EQ(take(), "No such file or directory");
}

TEST_F(HistoryLockTest, IsHiddenAndNobodyElsesToOpen) {
    ASSERT_EQ(take(), "taken");

    const auto status = std::filesystem::status(folder / ".lock");
    EXPECT_EQ(status.permissions(), std::filesystem::perms(0600));
}

}  // namespace
}  // namespace nettlecap
