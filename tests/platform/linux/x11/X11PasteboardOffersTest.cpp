#include "platform/linux/x11/X11World.h"

using namespace nettlecap;
using namespace nettlecap::test;
using namespace std::chrono_literals;
using namespace std::string_literals;

using Types = std::vector<PasteboardType>;

class X11PasteboardOffersTest : public X11PasteboardTest {};

TEST_F(X11PasteboardOffersTest, FetchesACopiedText) {
    auto& program = owner();
    program.offer("UTF8_STRING", "maçã");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types(), Types{"public.utf8-plain-text"});
    EXPECT_EQ(text(), "maçã");
    EXPECT_EQ(pasteboard->data("public.utf8-plain-text"), Bytes("maçã"));
    EXPECT_EQ(pasteboard->data("public.png"), std::nullopt);
    EXPECT_EQ(pasteboard->changeCount(), 1);
}

TEST_F(X11PasteboardOffersTest, LooksAtTheClipboardAlone) {
    auto& selecting = owner();
    selecting.offer("UTF8_STRING", "selected with the mouse");
    selecting.own("PRIMARY");
    auto& copying = owner();
    copying.offer("UTF8_STRING", "copied");
    copying.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), "copied");
    EXPECT_EQ(pasteboard->changeCount(), 1);
    EXPECT_EQ(selecting.askedInAll(), 0);
}

TEST_F(X11PasteboardOffersTest, TellsOfAChangeOnceItCanBeRead) {
    std::vector<std::string> read;
    const auto changes = pasteboard->onChange([&] { read.push_back(*text()); });
    auto& program = owner();
    program.offer("UTF8_STRING", "first");
    program.own();
    ASSERT_TRUE(waitForChange());

    auto& another = owner();
    another.offer("UTF8_STRING", "second");
    another.own();
    ASSERT_TRUE(waitForChange(2));

    EXPECT_EQ(read, (std::vector<std::string>{"first", "second"}));
}

TEST_F(X11PasteboardOffersTest, FetchesLargeTextsAndPicturesInPieces) {
    const std::string large(1'000'003, 'a');
    const std::string picture = "PNG" + std::string(700'000, '\0');
    auto& program = owner();
    program.offer("UTF8_STRING", large);
    program.offer("image/png", picture);
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), large);
    EXPECT_EQ(pasteboard->data("public.png"), Bytes(picture));
}

TEST_F(X11PasteboardOffersTest, FetchesALargePropertyInSlices) {
    const std::string large = std::string(3'000'001, 'x') + "end";
    auto& program = owner();
    program.behave("UTF8_STRING",
                   [&](const auto& request) { program.putAndTell(request, "UTF8_STRING", 8, large); });
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), large);
}

TEST_F(X11PasteboardOffersTest, AsksForTheFirstPictureOnly) {
    auto& program = owner();
    program.offer("image/jpeg", "jpeg");
    program.offer("image/tiff", "tiff");
    program.offer("image/png", "png");
    program.offer("UTF8_STRING", "text");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->data("public.png"), Bytes("png"));
    EXPECT_EQ(text(), "text");
    EXPECT_EQ(program.asked("image/tiff") + program.asked("image/jpeg"), 0);
    EXPECT_EQ(pasteboard->types(),
              (Types{"public.jpeg", "public.tiff", "public.png", "public.utf8-plain-text"}));
}

TEST_F(X11PasteboardOffersTest, TakesTheFirstPictureThatReallyArrives) {
    auto& program = owner();
    program.refuse("image/png");
    program.offer("image/tiff", "tiff");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->data("public.png"), std::nullopt);
    EXPECT_EQ(pasteboard->data("public.tiff"), Bytes("tiff"));
    EXPECT_EQ(pasteboard->types(), (Types{"public.png", "public.tiff"}));
}

TEST_F(X11PasteboardOffersTest, TakesAnEmptyPictureForOneThatArrived) {
    auto& program = owner();
    program.offer("image/png", "");
    program.offer("image/tiff", "tiff");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->data("public.png"), Bytes());
    EXPECT_EQ(program.asked("image/tiff"), 0);
}

TEST_F(X11PasteboardOffersTest, AsksForTheTextBeforeThePictures) {
    std::vector<std::string> asked;
    auto& program = owner();
    for (const auto* target : {"image/png", "UTF8_STRING"})
        program.behave(target, [&program, &asked, target](const auto& request) {
            asked.emplace_back(target);
            program.putAndTell(request, target, 8, "bytes");
        });
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(asked, (std::vector<std::string>{"UTF8_STRING", "image/png"}));
}

TEST_F(X11PasteboardOffersTest, TriesTheNextTargetOfAText) {
    auto& program = owner();
    program.refuse("UTF8_STRING");
    program.offer("STRING", "caf\xE9");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), "café") << "STRING is Latin-1";
    EXPECT_EQ(pasteboard->data("public.utf8-plain-text"), Bytes("café"));
}

TEST_F(X11PasteboardOffersTest, BelievesTheTypeOfTheAnswerMoreThanTheTarget) {
    auto& program = owner();
    program.behave("STRING",
                   [&](const auto& request) { program.putAndTell(request, "UTF8_STRING", 8, "café"); });
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), "café");
}

TEST_F(X11PasteboardOffersTest, RepairsInvalidTextWhenItIsReadAsText) {
    auto& program = owner();
    program.offer("UTF8_STRING", "a\xFF\0b"s);
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), "a\xEF\xBF\xBD\0b"s);
    EXPECT_EQ(pasteboard->data("public.utf8-plain-text"), Bytes("a\xFF\0b"s));
}

TEST_F(X11PasteboardOffersTest, ListsWhatIsNotWantedAndNeverAsksForIt) {
    auto& program = owner();
    program.offer("text/html", "<b>text</b>");
    program.offer("UTF8_STRING", "text");
    program.offer("com.example.private", "?");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types(), (Types{"public.html", "public.utf8-plain-text", "com.example.private"}));
    EXPECT_EQ(pasteboard->data("public.html"), std::nullopt);
    EXPECT_EQ(program.asked("text/html") + program.asked("com.example.private"), 0);
}

TEST_F(X11PasteboardOffersTest, FetchesNothingOfWhatAnIgnoredTypeMarks) {
    auto& program = owner();
    program.offer("UTF8_STRING", "text");
    program.offer("com.nettlecap.internal", "id");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types(), (Types{"public.utf8-plain-text", "com.nettlecap.internal"}));
    EXPECT_EQ(text(), std::nullopt);
    EXPECT_EQ(program.asked("UTF8_STRING"), 0);
}

TEST_F(X11PasteboardOffersTest, FetchesNothingOfWhatANonCopyMarks) {
    auto& program = owner();
    program.offer("UTF8_STRING", "kept in step by the desktop");
    program.offer("application/x-kde-syncselection", "");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types(), (Types{"public.utf8-plain-text", "org.nspasteboard.AutoGeneratedType"}));
    EXPECT_EQ(program.askedInAll(), program.asked("TARGETS"));
}

TEST_F(X11PasteboardOffersTest, TellsAtOnceOfWhatNobodyWants) {
    pasteboard->setInterest({});
    auto& program = owner();
    program.offer("UTF8_STRING", "text");
    program.own();

    ASSERT_TRUE(world.waitFor([&] { return pasteboard->changeCount() == 1; })) << "no time passes";
    EXPECT_EQ(pasteboard->types(), std::nullopt);
    EXPECT_EQ(text(), std::nullopt);

    pasteboard->setInterest(textAndImages());
    auto& later = owner();
    later.offer("UTF8_STRING", "later");
    later.own();
    ASSERT_TRUE(waitForChange(2));
    EXPECT_EQ(program.askedInAll(), 0) << "it stays unfetched";
}

TEST_F(X11PasteboardOffersTest, AsksForNoPicturesWhileTheyAreNotWanted) {
    pasteboard->setInterest({.groups = {{"public.utf8-plain-text"}}, .unlessOffered = {}});
    auto& program = owner();
    program.offer("image/png", "png");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->types(), Types{"public.png"});
    EXPECT_EQ(program.asked("image/png"), 0);
}

TEST_F(X11PasteboardOffersTest, NeverAsksAnOfficeProgramForItsPicture) {
    auto& program = owner();
    program.offer("application/x-openoffice-embed-source-xml;windows_formatname=\"Star Embed Source\"",
                  "zip");
    program.offer("image/png", "a rendering");
    program.offer("UTF8_STRING", "cells");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), "cells");
    EXPECT_EQ(pasteboard->types()->size(), 2U);
    EXPECT_EQ(program.asked("image/png"), 0);
}

TEST_F(X11PasteboardOffersTest, AsksAnOfficeProgramForThePictureThatItInsistsOn) {
    auto& program = owner();
    program.offer("application/vnd.oasis.opendocument.spreadsheet", "zip");
    program.offer("image/png", "a picture");
    program.offer("UTF8_STRING", "cells");
    program.offer("x-kde-force-image-copy", "");
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(pasteboard->data("public.png"), Bytes("a picture"));
}

TEST_F(X11PasteboardOffersTest, ReportsAnOfferOnceItStoodForTwentyMilliseconds) {
    auto& program = owner();
    program.offer("UTF8_STRING", "text");
    program.own();
    ASSERT_TRUE(world.waitFor([&] { return program.asked("UTF8_STRING") == 1; }));
    auto& witness = requestor();
    witness.ask("TARGETS");
    ASSERT_TRUE(world.waitFor([&] { return witness.answer().has_value(); }));

    world.advance(19ms);
    EXPECT_EQ(pasteboard->changeCount(), 0);
    world.advance(1ms);
    EXPECT_TRUE(world.waitFor([&] { return pasteboard->changeCount() == 1; }));
}

TEST_F(X11PasteboardOffersTest, ReportsOneCopyOfAProgramThatOwnsAgainAndAgain) {
    auto& program = owner();
    program.offer("UTF8_STRING", "draft");
    program.own();
    program.offer("UTF8_STRING", "final");
    program.own();
    program.own();

    ASSERT_TRUE(waitForChange());
    EXPECT_EQ(text(), "final");
    ASSERT_TRUE(world.settle([&, end = world.time.uptime() + 200ms] { return world.time.uptime() > end; }));
    EXPECT_EQ(pasteboard->changeCount(), 1);
}

TEST_F(X11PasteboardOffersTest, TakesTheSameContentsOfTheSameProgramForNoChange) {
    auto& program = owner();
    program.offer("UTF8_STRING", "text");
    program.own();
    ASSERT_TRUE(waitForChange());

    program.own();
    ASSERT_TRUE(world.settle([&] { return program.asked("UTF8_STRING") == 2; }));
    program.offer("UTF8_STRING", "other text");
    ASSERT_TRUE(world.settle([&, end = world.time.uptime() + 100ms] { return world.time.uptime() > end; }));
    EXPECT_EQ(pasteboard->changeCount(), 1);

    program.own();
    ASSERT_TRUE(waitForChange(2));
    EXPECT_EQ(text(), "other text");
}

TEST_F(X11PasteboardOffersTest, TakesTheSameContentsOfAnotherProgramForAChange) {
    auto& program = owner();
    program.offer("UTF8_STRING", "text");
    program.own();
    ASSERT_TRUE(waitForChange());

    auto& another = owner();
    another.offer("UTF8_STRING", "text");
    another.own();

    EXPECT_TRUE(waitForChange(2));
}

TEST_F(X11PasteboardOffersTest, FetchesWhatStandsAtStartWithoutTellingOfIt) {
    pasteboard.reset();
    auto& program = owner();
    program.offer("UTF8_STRING", "older than the program");
    program.own();
    int hints = 0;

    start();
    const auto changes = pasteboard->onChange([&] { ++hints; });

    EXPECT_TRUE(world.settle([&] { return text() == "older than the program"; }));
    EXPECT_EQ(pasteboard->changeCount(), 0);
    EXPECT_EQ(hints, 0);
}

TEST_F(X11PasteboardOffersTest, FetchesWhatStandsOnceSomethingIsWanted) {
    pasteboard.reset();
    auto& program = owner();
    program.offer("UTF8_STRING", "older than the program");
    program.own();
    pasteboard = std::move(*X11Pasteboard::open(world.ports()));
    pasteboard->setInterest({});
    world.advance(1s);
    EXPECT_EQ(program.askedInAll(), 0);

    pasteboard->setInterest(textAndImages());

    EXPECT_TRUE(world.settle([&] { return text() == "older than the program"; }));
    EXPECT_EQ(pasteboard->changeCount(), 0);
}

TEST_F(X11PasteboardOffersTest, LosesNoneOfManyCopiesInQuickSuccession) {
    std::vector<std::string> read;
    const auto changes = pasteboard->onChange([&] { read.push_back(text().value_or("nothing")); });
    auto& first = owner();
    auto& second = owner();
    std::vector<std::string> copied;

    for (int copy = 0; copy < 200; ++copy) {
        auto& program = copy % 2 == 0 ? first : second;
        copied.push_back("copy " + std::to_string(copy));
        program.offer("UTF8_STRING", copied.back());
        program.own();
        const int before = copy / 2;  // of its own
        ASSERT_TRUE(world.waitFor([&] { return program.asked("UTF8_STRING") > before; }));
        world.advance(100ms);
    }

    EXPECT_TRUE(waitForChange(200));
    EXPECT_EQ(read, copied);
}
