#include "platform/linux/x11/X11World.h"

#include <algorithm>
#include <cstring>

using namespace nettlecap;
using namespace nettlecap::test;
using namespace std::chrono_literals;
using namespace std::string_literals;

using Names = std::vector<std::string>;

/// What we write, as other programs see it.
class SelectionServerTest : public X11PasteboardTest {
protected:
    static PasteboardItem::Form form(const std::string& type, std::string bytes) {
        return {.type = type, .bytes = [bytes = Bytes(std::move(bytes))] { return bytes; }};
    }
    void put(std::vector<PasteboardItem::Form> forms) {
        pasteboard->clearContents();
        ASSERT_TRUE(pasteboard->write({.forms = std::move(forms)}));
    }
    static xcb_timestamp_t timeIn(const TestRequestor::Answer& answer) {
        xcb_timestamp_t time = 0;
        if (answer.bytes.size() == sizeof time) std::memcpy(&time, answer.bytes.data(), sizeof time);
        return time;
    }
};

TEST_F(SelectionServerTest, ListsItsTargets) {
    put({form("public.utf8-plain-text", "text"), form("public.png", "png"), form("public.tiff", "tiff"),
         form("com.nettlecap.internal", "id")});

    auto& reader = requestor();
    reader.ask("TARGETS");
    ASSERT_TRUE(world.waitFor([&] { return reader.answer().has_value(); }));

    EXPECT_EQ(reader.names(),
              (Names{"TARGETS", "TIMESTAMP", "MULTIPLE", "UTF8_STRING", "text/plain;charset=utf-8",
                     "text/plain", "STRING", "image/png", "image/tiff", "com.nettlecap.internal"}));
    EXPECT_EQ(reader.answer()->type, "ATOM");
    EXPECT_EQ(reader.answer()->format, 32U);
}

TEST_F(SelectionServerTest, GivesTextUnderItsUsualTargets) {
    put({form("public.utf8-plain-text", "maçã\0fim"s)});

    for (const std::string target : {"UTF8_STRING", "text/plain;charset=utf-8", "text/plain"}) {
        const auto answer = paste(target);
        EXPECT_EQ(answer->bytes, "maçã\0fim"s) << target;
        EXPECT_EQ(answer->type, target);
        EXPECT_EQ(answer->format, 8U);
    }
    EXPECT_EQ(paste("STRING")->bytes, "ma\xE7\xE3\0fim"s);
    EXPECT_EQ(paste("STRING")->type, "STRING");
}

TEST_F(SelectionServerTest, RefusesStringForWhatLatin1CannotSay) {
    put({form("public.utf8-plain-text", "5 €")});

    EXPECT_TRUE(paste("STRING")->refused);
    EXPECT_EQ(paste("UTF8_STRING")->bytes, "5 €");
}

TEST_F(SelectionServerTest, GivesPicturesAndThePrivateTypeAsTheyAre) {
    const std::string picture = "\x89PNG\r\n\x1A\n\0\xFF"s;
    put({form("public.png", picture), form("public.tiff", "II*\0"s), form("com.nettlecap.internal", "ID")});

    EXPECT_EQ(paste("image/png")->bytes, picture);
    EXPECT_EQ(paste("image/tiff")->bytes, "II*\0"s);
    EXPECT_EQ(paste("com.nettlecap.internal")->bytes, "ID");
}

TEST_F(SelectionServerTest, GivesEmptyContents) {
    write("");

    EXPECT_FALSE(paste("UTF8_STRING")->refused);
    EXPECT_EQ(paste("UTF8_STRING")->bytes, "");
}

TEST_F(SelectionServerTest, RefusesWhatItDoesNotOffer) {
    write("text");

    EXPECT_TRUE(paste("image/png")->refused);
    EXPECT_TRUE(paste("DELETE")->refused);
    EXPECT_TRUE(paste("SAVE_TARGETS")->refused);
}

TEST_F(SelectionServerTest, OffersNoFormsAfterClearing) {
    pasteboard->clearContents();

    auto& reader = requestor();
    reader.ask("TARGETS");
    ASSERT_TRUE(world.waitFor([&] { return reader.answer().has_value(); }));
    EXPECT_EQ(reader.names(), (Names{"TARGETS", "TIMESTAMP", "MULTIPLE"}));
    EXPECT_TRUE(paste("UTF8_STRING")->refused);
}

TEST_F(SelectionServerTest, SaysSinceWhenItOwns) {
    const xcb_timestamp_t before = observer.serverTime();
    write("text");
    const xcb_timestamp_t after = observer.serverTime();

    const auto answer = paste("TIMESTAMP");

    EXPECT_EQ(answer->type, "INTEGER");
    EXPECT_LE(before, timeIn(*answer));
    EXPECT_LE(timeIn(*answer), after);
}

TEST_F(SelectionServerTest, RefusesWhoAsksForAnEarlierTime) {
    const xcb_timestamp_t before = observer.serverTime();
    ASSERT_TRUE(world.waitFor([&] { return observer.serverTime() > before; }));
    write("text");
    const xcb_timestamp_t since = timeIn(*paste("TIMESTAMP"));
    auto& reader = requestor();

    reader.ask("UTF8_STRING", "CLIPBOARD", since - 1);
    ASSERT_TRUE(world.waitFor([&] { return reader.answer().has_value(); }));
    EXPECT_TRUE(reader.answer()->refused);

    reader.ask("UTF8_STRING", "CLIPBOARD", since);
    ASSERT_TRUE(world.waitFor([&] { return reader.answer().has_value(); }));
    EXPECT_EQ(reader.answer()->bytes, "text");
    EXPECT_EQ(reader.answer()->time, since);
}

TEST_F(SelectionServerTest, AnswersClientsThatNameNoProperty) {
    write("text");
    auto& reader = requestor();

    reader.askWithoutProperty("UTF8_STRING");

    ASSERT_TRUE(world.waitFor([&] { return reader.answer().has_value(); }));
    EXPECT_EQ(reader.answer()->bytes, "text");
}

TEST_F(SelectionServerTest, AnswersSeveralQuestionsInOne) {
    put({form("public.utf8-plain-text", "text"), form("public.png", "png")});
    auto& reader = requestor();

    reader.askMultiple({{"UTF8_STRING", "A"}, {"image/gif", "B"}, {"image/png", "C"}, {"TIMESTAMP", "D"}});

    ASSERT_TRUE(world.waitFor([&] { return reader.answer().has_value(); }));
    EXPECT_EQ(reader.names(),
              (Names{"UTF8_STRING", "A", "image/gif", "", "image/png", "C", "TIMESTAMP", "D"}));
    EXPECT_EQ(reader.answer()->type, "ATOM_PAIR");
    EXPECT_EQ(reader.property("A").bytes, "text");
    EXPECT_TRUE(reader.property("B").refused);
    EXPECT_EQ(reader.property("C").bytes, "png");
    EXPECT_EQ(reader.property("D").type, "INTEGER");
}

TEST_F(SelectionServerTest, RefusesSenselessPartsOfSeveralQuestions) {
    write("text");
    auto& reader = requestor();

    reader.askMultiple({{"MULTIPLE", "A"}, {"UTF8_STRING", ""}, {"", "C"}, {"UTF8_STRING", "D"}});

    ASSERT_TRUE(world.waitFor([&] { return reader.answer().has_value(); }));
    EXPECT_EQ(reader.names(), (Names{"MULTIPLE", "", "UTF8_STRING", "", "", "", "UTF8_STRING", "D"}));
    EXPECT_EQ(reader.property("D").bytes, "text");
}

TEST_F(SelectionServerTest, RefusesSeveralQuestionsThatAreNotThere) {
    write("text");
    EXPECT_TRUE(paste("MULTIPLE")->refused);
}

TEST_F(SelectionServerTest, SendsLargeContentsInPieces) {
    std::string large;
    for (int line = 0; large.size() < (8U << 20U); ++line) large += "line " + std::to_string(line) + "\n";
    write(large);

    const auto answer = paste("UTF8_STRING");

    EXPECT_TRUE(answer->inPieces);
    EXPECT_EQ(answer->type, "UTF8_STRING");
    EXPECT_EQ(answer->bytes, large);
}

TEST_F(SelectionServerTest, SendsInPiecesOnlyWhatIsLarge) {
    write(std::string(256U << 10U, 'a'));
    EXPECT_FALSE(paste("UTF8_STRING")->inPieces);

    write(std::string((256U << 10U) + 1, 'a'));
    const auto answer = paste("UTF8_STRING");
    EXPECT_TRUE(answer->inPieces);
    EXPECT_EQ(answer->bytes.size(), (256U << 10U) + 1);
}

TEST_F(SelectionServerTest, ServesManyRequestorsAtOnce) {
    const std::string large(600'000, 'x');
    write(large);
    std::vector<TestRequestor*> readers(50);
    for (auto*& reader : readers) reader = &requestor();

    for (auto* reader : readers) reader->ask("UTF8_STRING");

    ASSERT_TRUE(world.waitFor([&] {
        return std::ranges::all_of(readers, [](auto* reader) { return reader->answer().has_value(); });
    }));
    EXPECT_TRUE(std::ranges::all_of(readers, [&](auto* reader) { return reader->answer()->bytes == large; }));
}

TEST_F(SelectionServerTest, IsNotHeldUpByARequestorThatReadsNothing) {
    write(std::string(600'000, 'x'));
    auto& idle = requestor();
    idle.setTakesNothing();
    idle.ask("UTF8_STRING");
    ASSERT_TRUE(world.waitFor([&] { return idle.wasTold(); }));

    EXPECT_EQ(paste("UTF8_STRING")->bytes.size(), 600'000U);
    world.advance(20s);
    EXPECT_EQ(paste("UTF8_STRING")->bytes.size(), 600'000U);
}

TEST_F(SelectionServerTest, IsNotHeldUpByRequestorsThatDie) {
    write(std::string(600'000, 'x'));
    auto& reader = requestor();  // before a dead one's window can be its own
    auto& atOnce = requestor();
    atOnce.ask("UTF8_STRING");
    atOnce.sync();
    atOnce.quit();
    auto& inTheMiddle = requestor();
    inTheMiddle.setTakesNothing();
    inTheMiddle.ask("UTF8_STRING");
    ASSERT_TRUE(world.waitFor([&] { return inTheMiddle.wasTold(); }));
    inTheMiddle.quit();

    reader.ask("UTF8_STRING");
    ASSERT_TRUE(world.waitFor([&] { return reader.answer().has_value(); }));
    EXPECT_EQ(reader.answer()->bytes.size(), 600'000U);
}

TEST_F(SelectionServerTest, MakesALateFormWhenSomebodyAsks) {
    auto made = std::make_shared<int>(0);
    put({form("public.png", "png"), {.type = "public.tiff", .bytes = [made] {
                                         ++*made;
                                         return Bytes("tiff");
                                     }}});
    EXPECT_EQ(paste("image/png")->bytes, "png");
    EXPECT_EQ(*made, 0);

    EXPECT_EQ(paste("image/tiff")->bytes, "tiff");
    EXPECT_EQ(*made, 1);
}

TEST_F(SelectionServerTest, MakesALateFormOnceForAllWhoWait) {
    auto made = std::make_shared<int>(0);
    put({{.type = "public.tiff", .bytes = [made] {
              ++*made;
              return Bytes("tiff");
          }}});
    world.runsBackgroundWork = false;
    auto& first = requestor();
    auto& second = requestor();
    first.ask("image/tiff");
    second.ask("image/tiff");
    auto& witness = requestor();
    witness.ask("TARGETS");
    ASSERT_TRUE(world.waitFor([&] { return witness.answer().has_value(); })) << "others are served meanwhile";

    world.runsBackgroundWork = true;

    ASSERT_TRUE(world.waitFor([&] { return first.answer() && second.answer(); }));
    EXPECT_EQ(second.answer()->bytes, "tiff");
    EXPECT_EQ(*made, 1);
}

TEST_F(SelectionServerTest, RefusesALateFormThatCannotBeHad) {
    put({{.type = "public.tiff", .bytes = [] { return std::optional<Bytes>(); }}});

    EXPECT_TRUE(paste("image/tiff")->refused);
}

TEST_F(SelectionServerTest, CompletesWhatItBeganWhenTheContentsChange) {
    write(std::string(600'000, 'a'));
    auto& reader = requestor();
    reader.ask("UTF8_STRING");
    ASSERT_TRUE(world.waitFor([&] { return reader.wasTold(); }));

    write("b");

    ASSERT_TRUE(world.waitFor([&] { return reader.answer().has_value(); }));
    EXPECT_EQ(reader.answer()->bytes, std::string(600'000, 'a'));
    EXPECT_EQ(paste("UTF8_STRING")->bytes, "b");
}

TEST_F(SelectionServerTest, CompletesWhatItBeganWhenTheSelectionIsLost) {
    write(std::string(600'000, 'a'));
    auto& reader = requestor();
    reader.ask("UTF8_STRING");
    ASSERT_TRUE(world.waitFor([&] { return reader.wasTold(); }));

    auto& next = owner();
    next.offer("UTF8_STRING", "next");
    next.own();

    ASSERT_TRUE(world.waitFor([&] { return reader.answer().has_value(); }));
    EXPECT_EQ(reader.answer()->bytes.size(), 600'000U);
    ASSERT_TRUE(waitForChange(2));
    EXPECT_EQ(text(), "next");
    EXPECT_FALSE(isOurs());
}
