#include "platform/linux/x11/X11EmbeddingTray.h"
#include "platform/linux/x11/X11World.h"

namespace nettlecap::test {
namespace {

constexpr const char* selection = "_NET_SYSTEM_TRAY_S0";

/// A desktop without a tray, to which some may come.
class X11EmbeddingTrayTest : public testing::Test {
protected:
    X11EmbeddingTrayTest() {
        EXPECT_TRUE(world.waitFor([this] { return observer.ownerOf(selection) == XCB_NONE; }));
        auto opened = X11EmbeddingTray::open(*world.connection);
        EXPECT_TRUE(opened);
        tray = std::move(*opened);
        arrival = tray->onArrival([this] { ++arrivals; });
    }

    TestOwner& newTray() {
        auto& owner = world.add<TestOwner>();
        owner.own(selection);
        return owner;
    }
    bool waitForArrivals(int count) {
        return world.waitFor([this, count] { return arrivals >= count; });
    }
    /// Once all that has happened by now is told.
    int arrivalsInAll() {
        world.advance(Seconds(0));
        return arrivals;
    }

    X11World world;
    TestClient& observer = world.add<TestRequestor>();
    std::unique_ptr<X11EmbeddingTray> tray;
    Subscription arrival;
    int arrivals = 0;
};

TEST_F(X11EmbeddingTrayTest, IsThereWhileSomebodyOwnsItsSelection) {
    EXPECT_FALSE(tray->isThere());

    auto& owner = newTray();
    EXPECT_TRUE(tray->isThere());

    owner.release();
    EXPECT_FALSE(tray->isThere());
}

TEST_F(X11EmbeddingTrayTest, IsGoneWithTheProgramThatHadIt) {
    auto& owner = newTray();

    owner.quit();

    EXPECT_TRUE(world.waitFor([this] { return !tray->isThere(); }));
}

TEST_F(X11EmbeddingTrayTest, TellsOfEveryOneThatComes) {
    auto& first = newTray();
    EXPECT_TRUE(waitForArrivals(1));
    first.quit();
    EXPECT_TRUE(world.waitFor([this] { return !tray->isThere(); }));

    newTray();

    EXPECT_TRUE(waitForArrivals(2));
}

TEST_F(X11EmbeddingTrayTest, TellsOfOneThatTakesThePlaceOfAnother) {
    newTray();
    EXPECT_TRUE(waitForArrivals(1));

    newTray();

    EXPECT_TRUE(waitForArrivals(2));
}

TEST_F(X11EmbeddingTrayTest, TellsOfNoneThatGoes) {
    auto& first = newTray();
    auto& second = newTray();
    EXPECT_TRUE(waitForArrivals(2));

    second.release();
    first.own(selection);
    EXPECT_TRUE(waitForArrivals(3));
    first.destroyWindow();
    newTray();

    EXPECT_TRUE(waitForArrivals(4));
    EXPECT_EQ(arrivalsInAll(), 4);
}

TEST_F(X11EmbeddingTrayTest, TellsNobodyWhoListensNoMore) {
    int others = 0;
    const auto other = tray->onArrival([&] { ++others; });
    arrival.reset();

    newTray();

    EXPECT_TRUE(world.waitFor([&] { return others == 1; }));
    EXPECT_EQ(arrivals, 0);
}

TEST_F(X11EmbeddingTrayTest, LeavesOtherSelectionsAlone) {
    world.add<TestOwner>().own("_NET_SYSTEM_TRAY_S1");
    world.add<TestOwner>().own("CLIPBOARD");
    newTray();

    EXPECT_TRUE(waitForArrivals(1));
    EXPECT_EQ(arrivalsInAll(), 1);
}

}  // namespace
}  // namespace nettlecap::test
