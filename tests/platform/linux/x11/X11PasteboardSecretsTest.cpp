#include "platform/linux/x11/X11World.h"

using namespace nettlecap;
using namespace nettlecap::test;
using namespace std::chrono_literals;

using Types = std::vector<PasteboardType>;

class X11PasteboardSecretsTest : public X11PasteboardTest {
protected:
    TestOwner& passwordManager() {
        auto& program = owner();
        program.offer("UTF8_STRING", "secret");
        program.offer("image/png", "secret");
        return program;
    }
    int contentsAsked(TestOwner& program) {
        return program.asked("UTF8_STRING") + program.asked("image/png");
    }
};

TEST_F(X11PasteboardSecretsTest, NeverAsksForWhatIsConcealed) {
    auto& program = passwordManager();
    program.offer("x-kde-passwordManagerHint", "secret");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types(),
              (Types{"public.utf8-plain-text", "public.png", "org.nspasteboard.ConcealedType"}));
    EXPECT_EQ(text(), std::nullopt);
    EXPECT_EQ(contentsAsked(program), 0);
}

TEST_F(X11PasteboardSecretsTest, KnowsTheHintInItsOtherForm) {
    auto& program = passwordManager();
    program.offer("text/x-kde-passwordManagerHint", "");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types()->back(), "org.nspasteboard.ConcealedType");
    EXPECT_EQ(contentsAsked(program), 0);
}

TEST_F(X11PasteboardSecretsTest, ReadsWhatIsSaidToBePublic) {
    auto& program = passwordManager();
    program.offer("x-kde-passwordManagerHint", "public");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types(), (Types{"public.utf8-plain-text", "public.png"}));
    EXPECT_EQ(text(), "secret");
}

TEST_F(X11PasteboardSecretsTest, ReadsNothingWhereOneHintOfTwoIsNotPublic) {
    auto& program = passwordManager();
    program.offer("x-kde-passwordManagerHint", "public");
    program.offer("text/x-kde-passwordManagerHint", "secret");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(contentsAsked(program), 0);
}

TEST_F(X11PasteboardSecretsTest, TakesNoAnswerForConcealment) {
    auto& program = passwordManager();
    program.mute("x-kde-passwordManagerHint");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types()->back(), "org.nspasteboard.ConcealedType");
    EXPECT_EQ(contentsAsked(program), 0);
}

TEST_F(X11PasteboardSecretsTest, TakesARefusalForConcealment) {
    auto& program = passwordManager();
    program.refuse("x-kde-passwordManagerHint");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types()->back(), "org.nspasteboard.ConcealedType");
    EXPECT_EQ(contentsAsked(program), 0);
}

TEST_F(X11PasteboardSecretsTest, NeverAsksForWhatIsConcealedEvenIfNobodyIgnoresIt) {
    pasteboard->setInterest({.groups = {{"public.utf8-plain-text"}}, .unlessOffered = {}});
    auto& program = passwordManager();
    program.offer("org.nspasteboard.ConcealedType", "");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(contentsAsked(program), 0);
}

TEST_F(X11PasteboardSecretsTest, AsksNothingMoreOfTheNextOwnerInAnOldOnesName) {
    auto& program = owner();
    program.mute("UTF8_STRING");
    program.offer("image/png", "png");
    program.own();
    ASSERT_TRUE(world.settle([&] { return program.asked("UTF8_STRING") == 1; }));

    auto& secret = passwordManager();
    secret.offer("x-kde-passwordManagerHint", "secret");
    secret.own();

    ASSERT_TRUE(world.settle([&] {
        const auto types = pasteboard->types();
        return types && types->back() == "org.nspasteboard.ConcealedType";
    }));
    EXPECT_EQ(contentsAsked(secret), 0);
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(X11PasteboardSecretsTest, KeepsNothingAliveWhenThePasswordManagerDies) {
    auto& program = passwordManager();
    program.offer("x-kde-passwordManagerHint", "secret");
    program.own();
    ASSERT_TRUE(waitForChange());

    program.quit();

    ASSERT_TRUE(world.waitFor([&] { return observer.ownerOf("CLIPBOARD") == XCB_NONE; }));
    world.advance(1s);
    EXPECT_EQ(observer.ownerOf("CLIPBOARD"), XCB_NONE + 0U);
}

TEST_F(X11PasteboardSecretsTest, LeavesAClearedPasswordCleared) {
    auto& program = owner();
    program.offer("UTF8_STRING", "password without a hint");
    program.own();
    ASSERT_TRUE(waitForChange());

    program.release();
    ASSERT_TRUE(waitForChange(2));
    program.quit();

    EXPECT_EQ(pasteboard->types(), std::nullopt);
    EXPECT_EQ(text(), std::nullopt);
    world.advance(1s);
    EXPECT_EQ(observer.ownerOf("CLIPBOARD"), XCB_NONE + 0U);
}
