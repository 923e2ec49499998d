#include "platform/contracts/IdentifiersContract.h"
#include "platform/linux/ChildProcess.h"
#include "platform/linux/PosixFileSystem.h"
#include "platform/linux/RandomIdentifiers.h"
#include "platform/linux/SystemClock.h"

#include <chrono>
#include <cstdlib>
#include <pwd.h>
#include <unistd.h>

namespace nettlecap {
namespace {

INSTANTIATE_TEST_SUITE_P(Random, IdentifiersContract, testing::Values([]() -> std::unique_ptr<Identifiers> {
                             return std::make_unique<RandomIdentifiers>();
                         }));

TEST(RandomIdentifiersTest, TwoProcessesGetDifferentOnes) {
    const auto text = [] { return RandomIdentifiers().next().text(); };

    EXPECT_NE(inChild(text), inChild(text));
}

TEST(RandomIdentifiersTest, EveryFreeBitVaries) {
    RandomIdentifiers identifiers;
    Uuid ones;
    Uuid zeros;
    for (int i = 0; i < 1'000; ++i) {
        const Uuid id = identifiers.next();
        ones = {.high = ones.high | id.high, .low = ones.low | id.low};
        zeros = {.high = zeros.high | ~id.high, .low = zeros.low | ~id.low};
    }

    EXPECT_EQ(ones.high & zeros.high, 0xFFFF'FFFF'FFFF'0FFFU);
    EXPECT_EQ(ones.low & zeros.low, 0x3FFF'FFFF'FFFF'FFFFU);
}

TEST(SystemClockTest, IsTheSystemsTime) {
    using namespace std::chrono;
    constexpr auto start = sys_days(year(2001) / January / 1);

    const double before = Seconds(system_clock::now() - start).count();
    const double now = SystemClock().now().secondsSince2001;
    const double after = Seconds(system_clock::now() - start).count();

    EXPECT_LE(before, now + 0.000001);
    EXPECT_LE(now, after + 0.000001);
}

TEST(SystemClockTest, UptimeIsTheMonotonicClocks) {
    const Seconds before = std::chrono::steady_clock::now().time_since_epoch();
    const Uptime uptime = SystemClock().uptime();
    const Seconds after = std::chrono::steady_clock::now().time_since_epoch();

    EXPECT_LE(before, uptime);
    EXPECT_LE(uptime, after);
}

class ApplicationSupportDirectoryTest : public testing::Test {
protected:
    /// In an environment of these two alone; absent: not set.
    static std::string directory(const char* dataHome, const char* home) {
        return inChild([=]() -> std::string {
            ::clearenv();
            if (dataHome) ::setenv("XDG_DATA_HOME", dataHome, 1);
            if (home) ::setenv("HOME", home, 1);
            return PosixFileSystem().applicationSupportDirectory().value_or("absent");
        });
    }
};

TEST_F(ApplicationSupportDirectoryTest, IsWhereTheEnvironmentSays) {
    EXPECT_EQ(directory("/data/ana", "/home/ana"), "/data/ana");
}

TEST_F(ApplicationSupportDirectoryTest, IsInTheHomeFolderOtherwise) {
    EXPECT_EQ(directory(nullptr, "/home/ana"), "/home/ana/.local/share");
    EXPECT_EQ(directory("", "/home/ana"), "/home/ana/.local/share");
    EXPECT_EQ(directory("relative/path", "/home/ana"), "/home/ana/.local/share");
}

TEST_F(ApplicationSupportDirectoryTest, AsksForTheHomeFolderWhereTheEnvironmentDoesNotSay) {
    const passwd* user = ::getpwuid(::geteuid());
    ASSERT_NE(user, nullptr);
    const std::string home = user->pw_dir;

    EXPECT_EQ(directory(nullptr, nullptr), home + "/.local/share");
    EXPECT_EQ(directory(nullptr, ""), home + "/.local/share");
}

}  // namespace
}  // namespace nettlecap
