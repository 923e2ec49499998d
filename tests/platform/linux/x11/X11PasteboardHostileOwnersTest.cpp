#include "platform/linux/x11/X11World.h"

using namespace nettlecap;
using namespace nettlecap::test;
using namespace std::chrono_literals;

using Types = std::vector<PasteboardType>;

class X11PasteboardHostileOwnersTest : public X11PasteboardTest {
protected:
    /// The text's property is what the behaviour makes of it; there is no other text.
    TestOwner& textOwner(std::function<void(TestOwner&, const TestOwner::Request&)> behaviour) {
        auto& program = owner();
        program.behave("UTF8_STRING", [&program, behaviour = std::move(behaviour)](const auto& request) {
            behaviour(program, request);
        });
        return program;
    }
    void expectTheNextCopyIsCaptured() {
        const auto before = pasteboard->changeCount();
        const std::string next = "good after " + std::to_string(before);
        auto& good = owner();
        good.offer("UTF8_STRING", next);
        good.own();
        ASSERT_TRUE(world.settle([&] { return text() == next; }));
        EXPECT_GT(pasteboard->changeCount(), before);
    }
};

TEST_F(X11PasteboardHostileOwnersTest, GivesUpOnAnOwnerThatNeverAnswersTargets) {
    auto& program = owner();
    program.mute("TARGETS");
    program.own();
    ASSERT_TRUE(world.waitFor([&] { return program.asked("TARGETS") == 1; }));

    world.advance(1.499s);
    EXPECT_EQ(pasteboard->changeCount(), 0);
    world.advance(0.002s);
    EXPECT_TRUE(world.waitFor([&] { return pasteboard->changeCount() == 1; }));
    EXPECT_EQ(pasteboard->types(), Types());
}

TEST_F(X11PasteboardHostileOwnersTest, GivesUpOnAnOwnerThatAnswersTargetsOnly) {
    auto& program = owner();
    program.mute("UTF8_STRING");
    program.own();
    ASSERT_TRUE(world.waitFor([&] { return program.asked("UTF8_STRING") == 1; }));

    world.advance(1.501s);

    EXPECT_TRUE(world.waitFor([&] { return pasteboard->changeCount() == 1; }));
    EXPECT_EQ(pasteboard->types(), Types{"public.utf8-plain-text"});
    EXPECT_EQ(text(), std::nullopt);
}

/// Xlib ends a program that answers a window that is gone.
TEST_F(X11PasteboardHostileOwnersTest, LetsAnOwnerAnswerThatNobodyWaitsForAnyMore) {
    TestOwner::Request late{};
    auto& program = textOwner([&](TestOwner&, const TestOwner::Request& request) { late = request; });
    program.own();
    ASSERT_TRUE(world.waitFor([&] { return program.asked("UTF8_STRING") == 1; }));
    expectTheNextCopyIsCaptured();
    const auto isThere = [&] {
        const auto question = xcb_get_geometry(program.xcb(), late.requestor);
        return X11Reply<xcb_get_geometry_reply_t>(xcb_get_geometry_reply(program.xcb(), question, nullptr)) !=
               nullptr;
    };
    EXPECT_TRUE(isThere());

    program.putAndTell(late, "UTF8_STRING", 8, "late");

    EXPECT_TRUE(world.waitFor([&] { return !isThere(); }));
}

TEST_F(X11PasteboardHostileOwnersTest, TriesThePictureOfAnOwnerThatIsMuteAboutItsText) {
    auto& program = owner();
    program.mute("UTF8_STRING");
    program.offer("image/png", "png");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->data("public.png"), Bytes("png"));
}

TEST_F(X11PasteboardHostileOwnersTest, TakesAnOwnerThatIsMuteTwiceForHung) {
    auto& program = owner();
    program.mute("UTF8_STRING");
    program.mute("STRING");
    program.mute("image/png");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(program.asked("UTF8_STRING"), 1);
    EXPECT_EQ(program.asked("STRING"), 1);
    EXPECT_EQ(program.asked("image/png"), 0);
}

TEST_F(X11PasteboardHostileOwnersTest, CapturesAGoodCopyWithoutWaitingForAHungOwner) {
    auto& hung = owner();
    hung.mute("UTF8_STRING");
    hung.own();
    ASSERT_TRUE(world.settle([&] { return hung.asked("UTF8_STRING") == 1; }));
    world.advance(200ms);
    auto& good = owner();
    good.offer("UTF8_STRING", "good");
    const Uptime copied = world.time.uptime();
    good.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), "good");
    EXPECT_LT(world.time.uptime() - copied, 500ms);
    EXPECT_EQ(pasteboard->changeCount(), 1) << "the hung one has nothing to tell of";
}

TEST_F(X11PasteboardHostileOwnersTest, LetsAnOldOwnerFinishWhatItBegan) {
    std::vector<std::string> read;
    const auto changes = pasteboard->onChange([&] { read.push_back(text().value_or("nothing")); });
    std::optional<TestOwner::Request> request;
    auto& slow = textOwner([&](TestOwner&, const auto& asked) { request = asked; });
    slow.own();
    ASSERT_TRUE(world.settle([&] { return request.has_value(); }));
    world.advance(100ms);
    auto& next = owner();
    next.offer("UTF8_STRING", "second");
    next.own();
    ASSERT_TRUE(world.waitFor([&] { return next.asked("UTF8_STRING") == 1; }));

    slow.putAndTell(*request, "UTF8_STRING", 8, "first");

    ASSERT_TRUE(waitForChange(2));
    EXPECT_EQ(read, (std::vector<std::string>{"first", "second"}));
}

TEST_F(X11PasteboardHostileOwnersTest, WaitsNoLongerThanASecondForAnOldOwnerThatTrickles) {
    auto& slow = textOwner([](TestOwner& program, const auto& request) {
        program.announce(request, 1000);
        program.onTaken(request, [&program](const auto& to) { program.put(to, "UTF8_STRING", 8, "."); });
    });
    slow.own();
    ASSERT_TRUE(world.settle([&, end = world.time.uptime() + 50ms] { return world.time.uptime() > end; }));
    auto& next = owner();
    next.offer("UTF8_STRING", "second");
    const Uptime copied = world.time.uptime();
    next.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), "second");
    EXPECT_LT(world.time.uptime() - copied, 1.5s);
}

TEST_F(X11PasteboardHostileOwnersTest, GivesUpOnAnOwnerThatStallsBetweenPieces) {
    int pieces = 0;
    textOwner([&](TestOwner& program, const auto& request) {
        program.announce(request, 1000);
        program.onTaken(request, [&](const auto& to) {
            if (++pieces < 3) program.put(to, "UTF8_STRING", 8, "piece");
        });
    }).own();
    ASSERT_TRUE(world.waitFor([&] { return pieces == 3; }));

    world.advance(1.501s);

    EXPECT_TRUE(world.waitFor([&] { return pasteboard->changeCount() == 1; }));
    EXPECT_EQ(text(), std::nullopt);
    expectTheNextCopyIsCaptured();
}

TEST_F(X11PasteboardHostileOwnersTest, WaitsAnewForEachPiece) {
    std::optional<TestOwner::Request> waiting;
    int pieces = 0;
    auto& program = textOwner([&](TestOwner& self, const auto& request) {
        self.announce(request, 1000);
        self.onTaken(request, [&](const auto& to) { waiting = to; });
    });
    program.own();
    while (pieces < 3) {
        ASSERT_TRUE(world.waitFor([&] { return waiting.has_value(); }));
        world.advance(1.4s);
        program.put(*std::exchange(waiting, std::nullopt), "UTF8_STRING", 8, ++pieces < 3 ? "piece" : "");
    }

    EXPECT_TRUE(world.waitFor([&] { return pasteboard->changeCount() == 1; }));
    EXPECT_EQ(text(), "piecepiece");
}

TEST_F(X11PasteboardHostileOwnersTest, WaitsNoLongerThanAMinuteForAllPieces) {
    std::optional<TestOwner::Request> waiting;
    auto& program = textOwner([&](TestOwner& self, const auto& request) {
        self.announce(request, 1000);
        self.onTaken(request, [&](const auto& to) { waiting = to; });
    });
    program.own();
    const Uptime begin = world.time.uptime();

    while (world.time.uptime() - begin < 59.5s) {
        EXPECT_EQ(pasteboard->changeCount(), 0);
        ASSERT_TRUE(world.waitFor([&] { return waiting.has_value(); }));
        program.put(*std::exchange(waiting, std::nullopt), "UTF8_STRING", 8, ".");
        world.advance(1s);
    }

    EXPECT_TRUE(world.waitFor([&] { return pasteboard->changeCount() == 1; }));
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(X11PasteboardHostileOwnersTest, GivesUpOnPiecesThatBringNothing) {
    auto& program = textOwner([&](TestOwner& self, const auto& request) {
        self.announce(request, 1000);
        self.onTaken(request, [&self, property = request.property](const auto& to) {
            if (to.property != property) return;
            self.put(to, "UTF8_STRING", 8, "x");  // and away with it before it is read
            xcb_delete_property(self.xcb(), to.requestor, to.property);
        });
    });
    program.own();

    EXPECT_TRUE(waitForChange());
    expectTheNextCopyIsCaptured();
}

TEST_F(X11PasteboardHostileOwnersTest, DoesNotBelieveAnAnnouncedSize) {
    textOwner([](TestOwner& program, const auto& request) {
        program.announce(request, 4'000'000'000U);
        program.onTaken(request, [&program, sent = 0](const auto& to) mutable {
            program.put(to, "UTF8_STRING", 8, sent++ == 0 ? "short" : "");
        });
    }).own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), "short");
}

TEST_F(X11PasteboardHostileOwnersTest, TakesMoreThanWasAnnounced) {
    textOwner([](TestOwner& program, const auto& request) {
        program.announce(request, 1);
        program.onTaken(request, [&program, sent = 0](const auto& to) mutable {
            program.put(to, "UTF8_STRING", 8, sent++ < 5 ? std::string(100'000, 'a') : "");
        });
    }).own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), std::string(500'000, 'a'));
}

TEST_F(X11PasteboardHostileOwnersTest, TakesATextOfSixtyFourMebibytesAndNoMore) {
    auto& fitting = owner();
    fitting.offer("UTF8_STRING", std::string(64U << 20U, 'a'));
    fitting.own();
    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->data("public.utf8-plain-text")->size(), 64U << 20U);

    auto& tooLarge = owner();
    tooLarge.offer("UTF8_STRING", std::string((64U << 20U) + 1, 'a'));
    tooLarge.offer("STRING", "not asked for either");
    tooLarge.offer("image/png", "png");
    tooLarge.own();
    ASSERT_TRUE(waitForChange(2));
    EXPECT_EQ(pasteboard->types(), (Types{"public.utf8-plain-text", "public.png"}));
    EXPECT_EQ(text(), std::nullopt);
    EXPECT_EQ(pasteboard->data("public.png"), Bytes("png"));
    EXPECT_EQ(tooLarge.asked("STRING"), 0);
}

TEST_F(X11PasteboardHostileOwnersTest, StopsReadingAnEndlessText) {
    std::size_t sent = 0;
    const std::string piece(1U << 20U, 'a');
    textOwner([&](TestOwner& program, const auto& request) {
        program.announce(request, 10);
        program.onTaken(request, [&](const auto& to) {
            sent += piece.size();
            program.put(to, "UTF8_STRING", 8, piece);
        });
    }).own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), std::nullopt);
    EXPECT_LE(sent, 66U << 20U);
}

TEST_F(X11PasteboardHostileOwnersTest, StopsReadingAnEndlessPicture) {
    std::size_t sent = 0;
    const std::string piece(8U << 20U, 'a');
    auto& program = owner();
    program.behave("image/png", [&](const auto& request) {
        program.announce(request, 10);
        program.onTaken(request, [&](const auto& to) {
            sent += piece.size();
            program.put(to, "image/png", 8, piece);
        });
    });
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->data("public.png"), std::nullopt);
    EXPECT_GT(sent, 256U << 20U);
    EXPECT_LE(sent, 272U << 20U);
}

TEST_F(X11PasteboardHostileOwnersTest, ReadsNoTextFromUnitsOfAnotherSize) {
    auto& program = textOwner([](TestOwner& self, const auto& request) {
        self.putAndTell(request, "UTF8_STRING", 32, "abcdefgh");
    });
    program.offer("STRING", "text");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), "text") << "from the next target";
}

TEST_F(X11PasteboardHostileOwnersTest, ReadsNoTextFromCompoundText) {
    auto& program = textOwner(
        [](TestOwner& self, const auto& request) { self.putAndTell(request, "COMPOUND_TEXT", 8, "\x1B%G"); });
    program.offer("STRING", "text");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), "text");
}

TEST_F(X11PasteboardHostileOwnersTest, RefusesPiecesThatChangeTheirType) {
    textOwner([](TestOwner& program, const auto& request) {
        program.announce(request, 10);
        program.onTaken(request, [&program, sent = 0](const auto& to) mutable {
            program.put(to, sent++ == 0 ? "UTF8_STRING" : "STRING", 8, "piece");
        });
    }).own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(X11PasteboardHostileOwnersTest, NoticesThatAnAnnouncedPropertyIsNotThere) {
    textOwner([](TestOwner& program, const auto& request) { program.tell(request); }).own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), std::nullopt);
}

TEST_F(X11PasteboardHostileOwnersTest, TakesNoNoticeOfAnswersThatComeTooLate) {
    std::optional<TestOwner::Request> request;
    auto& late = textOwner([&](TestOwner&, const auto& asked) { request = asked; });
    late.own();
    ASSERT_TRUE(waitForChange());
    expectTheNextCopyIsCaptured();

    late.putAndTell(*request, "UTF8_STRING", 8, "too late");
    late.sync();

    expectTheNextCopyIsCaptured();
    EXPECT_EQ(pasteboard->changeCount(), 3);
}

TEST_F(X11PasteboardHostileOwnersTest, AbandonsAFetchWhenWeWrite) {
    auto& slow = owner();
    slow.mute("UTF8_STRING");
    slow.own();
    ASSERT_TRUE(world.settle([&] { return slow.asked("UTF8_STRING") == 1; }));

    write("ours");

    world.advance(10s);
    ASSERT_TRUE(world.settle([&] { return slow.hasLost(); }));
    world.advance(10s);
    EXPECT_EQ(pasteboard->changeCount(), 1);
    EXPECT_EQ(text(), "ours");
}
