#include "platform/linux/x11/X11World.h"

using namespace nettlecap;
using namespace nettlecap::test;

using Types = std::vector<PasteboardType>;

using X11PasteboardHostileTargetsTest = X11PasteboardTest;

TEST_F(X11PasteboardHostileTargetsTest, TakesTargetsOfAWrongKindForNone) {
    auto& program = owner();
    program.offer("UTF8_STRING", "text");
    program.behave("TARGETS",
                   [&](const auto& request) { program.putAndTell(request, "STRING", 8, "UTF8_STRING"); });
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types(), Types());
    EXPECT_EQ(program.asked("UTF8_STRING"), 0);
}

TEST_F(X11PasteboardHostileTargetsTest, ReadsThousandsOfTargets) {
    auto& program = owner();
    for (int i = 0; i < 5000; ++i) program.list(program.atom("com.example.target-" + std::to_string(i)));
    program.offer("UTF8_STRING", "text");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types()->size(), 5001U);
    EXPECT_EQ(text(), "text");
}

TEST_F(X11PasteboardHostileTargetsTest, ReadsWhatHasANameAmongThousandsThatHaveNone) {
    auto& program = owner();
    for (xcb_atom_t i = 0; i < 16'000; ++i) program.list(4'000'000'000U + i);
    program.offer("UTF8_STRING", "text");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types(), Types{"public.utf8-plain-text"});
    EXPECT_EQ(text(), "text");
}

TEST_F(X11PasteboardHostileTargetsTest, ReadsNoneOfAMillionTargets) {
    auto& program = owner();
    program.offer("UTF8_STRING", "text");
    program.behave("TARGETS", [&](const auto& request) {
        program.putAndTell(request, "ATOM", 32, std::string(4'000'000, '\x01'));
    });
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types(), Types());
}

TEST_F(X11PasteboardHostileTargetsTest, PassesOverTargetsWithoutANameOrTwice) {
    auto& program = owner();
    program.list(4'000'000'000U);
    program.list(XCB_ATOM_NONE);
    program.offer("UTF8_STRING", "text");
    program.list(program.atom("UTF8_STRING"));
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types(), Types{"public.utf8-plain-text"});
    EXPECT_EQ(program.asked("UTF8_STRING"), 1);
}
