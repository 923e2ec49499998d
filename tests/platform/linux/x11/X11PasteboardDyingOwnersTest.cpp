#include "platform/linux/x11/X11World.h"

using namespace nettlecap;
using namespace nettlecap::test;
using namespace std::chrono_literals;

class X11PasteboardDyingOwnersTest : public X11PasteboardTest {};

TEST_F(X11PasteboardDyingOwnersTest, OffersOnWhatADeadProgramLeft) {
    auto& program = owner();
    program.offer("UTF8_STRING", "testament");
    program.offer("image/png", "png");
    program.own();
    ASSERT_TRUE(waitForChange());

    program.quit();

    ASSERT_TRUE(world.waitFor([&] { return isOurs(); }));
    EXPECT_EQ(paste("UTF8_STRING")->bytes, "testament");
    EXPECT_EQ(paste("STRING")->bytes, "testament");
    EXPECT_EQ(paste("image/png")->bytes, "png");
    EXPECT_EQ(pasteboard->changeCount(), 1) << "our own take-over is no change";
    EXPECT_EQ(text(), "testament");
}

TEST_F(X11PasteboardDyingOwnersTest, OffersOnWhatADestroyedWindowLeft) {
    auto& program = owner();
    program.offer("UTF8_STRING", "testament");
    program.own();
    ASSERT_TRUE(waitForChange());

    program.destroyWindow();

    ASSERT_TRUE(world.waitFor([&] { return isOurs(); }));
    EXPECT_EQ(paste("UTF8_STRING")->bytes, "testament");
}

TEST_F(X11PasteboardDyingOwnersTest, OffersOnExactlyWhatItHas) {
    auto& program = owner();
    program.offer("text/html", "<b>never read</b>");
    program.offer("text/plain", "text");
    program.own();
    ASSERT_TRUE(waitForChange());

    program.quit();

    ASSERT_TRUE(world.waitFor([&] { return isOurs(); }));
    EXPECT_TRUE(paste("text/html")->refused);
    EXPECT_EQ(paste("UTF8_STRING")->bytes, "text");
    EXPECT_EQ(pasteboard->types()->size(), 2U) << "what belongs to the change count stays";
}

TEST_F(X11PasteboardDyingOwnersTest, CapturesACopyWhoseProgramQuitsAtOnce) {
    auto& program = owner();
    program.offer("UTF8_STRING", "last words");
    program.behave("UTF8_STRING", [&](const auto& request) {
        program.putAndTell(request, "UTF8_STRING", 8, "last words");
        program.sync();
        program.quit();
    });
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), "last words");
    EXPECT_TRUE(world.waitFor([&] { return isOurs(); }));
    EXPECT_EQ(paste("UTF8_STRING")->bytes, "last words");
    EXPECT_EQ(pasteboard->changeCount(), 1);
}

TEST_F(X11PasteboardDyingOwnersTest, KeepsWhatStoodAtStartAlive) {
    pasteboard.reset();
    auto& program = owner();
    program.offer("UTF8_STRING", "older than the program");
    program.own();
    start();
    ASSERT_TRUE(world.settle([&] { return text().has_value(); }));

    program.quit();

    ASSERT_TRUE(world.waitFor([&] { return isOurs(); }));
    EXPECT_EQ(paste("UTF8_STRING")->bytes, "older than the program");
    EXPECT_EQ(pasteboard->changeCount(), 0);
}

TEST_F(X11PasteboardDyingOwnersTest, ReportsWhatItHasOfAnOwnerThatDiesBetweenTextAndPicture) {
    auto& program = owner();
    program.offer("UTF8_STRING", "text");
    program.behave("image/png", [&](const auto&) { program.quit(); });
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), "text");
    world.advance(1s);
    EXPECT_EQ(observer.ownerOf("CLIPBOARD"), XCB_NONE + 0U) << "half a copy is not offered on";
}

TEST_F(X11PasteboardDyingOwnersTest, SurvivesAnOwnerThatDiesBeforeItsTargets) {
    auto& program = owner();
    program.behave("TARGETS", [&](const auto&) { program.quit(); });
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(X11PasteboardDyingOwnersTest, SurvivesAnOwnerThatDiesBeforeItsHint) {
    auto& program = owner();
    program.offer("UTF8_STRING", "text");
    program.behave("x-kde-passwordManagerHint", [&](const auto&) { program.quit(); });
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types()->back(), "org.nspasteboard.ConcealedType");
}

TEST_F(X11PasteboardDyingOwnersTest, SurvivesAnOwnerThatDiesBetweenPieces) {
    auto& program = owner();
    int pieces = 0;
    program.behave("UTF8_STRING", [&](const auto& request) {
        program.announce(request, 1000);
        program.onTaken(request, [&](const auto& to) {
            if (++pieces == 3) return program.quit();
            program.put(to, "UTF8_STRING", 8, "piece");
        });
    });
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pieces, 3);
    EXPECT_EQ(text(), std::nullopt) << "half a text is none";
    world.advance(1s);
    EXPECT_EQ(observer.ownerOf("CLIPBOARD"), XCB_NONE + 0U);
}

TEST_F(X11PasteboardDyingOwnersTest, LeavesTheSelectionToANewerOwner) {
    auto& program = owner();
    program.offer("UTF8_STRING", "old");
    program.own();
    ASSERT_TRUE(waitForChange());
    auto& next = owner();
    next.offer("UTF8_STRING", "new");

    program.quit();
    ASSERT_TRUE(world.waitFor([&] { return next.ownerOf("CLIPBOARD") != program.window(); }));
    next.own();

    ASSERT_TRUE(waitForChange(2));
    EXPECT_EQ(text(), "new");
    EXPECT_EQ(observer.ownerOf("CLIPBOARD"), next.window());
}

TEST_F(X11PasteboardDyingOwnersTest, GivesUpWhatItTookOverToTheNextOwner) {
    auto& program = owner();
    program.offer("UTF8_STRING", "old");
    program.own();
    ASSERT_TRUE(waitForChange());
    program.quit();
    ASSERT_TRUE(world.waitFor([&] { return isOurs(); }));

    auto& next = owner();
    next.offer("UTF8_STRING", "new");
    next.own();

    ASSERT_TRUE(waitForChange(2));
    EXPECT_EQ(text(), "new");
}

TEST_F(X11PasteboardDyingOwnersTest, TakesTheSameTextOfTheNextProgramForAChange) {
    auto& program = owner();
    program.offer("UTF8_STRING", "text");
    program.own();
    ASSERT_TRUE(waitForChange());
    program.quit();
    ASSERT_TRUE(world.waitFor([&] { return isOurs(); }));

    auto& next = owner();  // the server may give it the dead one's number
    next.offer("UTF8_STRING", "text");
    next.own();

    EXPECT_TRUE(waitForChange(2));
}

TEST_F(X11PasteboardDyingOwnersTest, TakesNothingOverThatWasNotFetched) {
    pasteboard->setInterest({});
    auto& program = owner();
    program.offer("UTF8_STRING", "text");
    program.own();
    ASSERT_TRUE(waitForChange());

    program.quit();

    ASSERT_TRUE(world.waitFor([&] { return observer.ownerOf("CLIPBOARD") == XCB_NONE; }));
    world.advance(1s);
    EXPECT_EQ(observer.ownerOf("CLIPBOARD"), XCB_NONE + 0U);
}
