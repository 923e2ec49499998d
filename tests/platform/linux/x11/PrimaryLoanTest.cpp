#include "platform/linux/x11/X11World.h"

using namespace nettlecap;
using namespace nettlecap::test;
using namespace std::chrono_literals;

/// PRIMARY while the clipboard is pasted into a program that knows nothing else.
class PrimaryLoanTest : public X11PasteboardTest {
protected:
    bool isLent() { return observer.ownerOf("PRIMARY") != XCB_NONE; }
    bool isGivenBack() {
        return world.waitFor([this] { return !isLent(); });
    }
    std::optional<TestRequestor::Answer> read(TestRequestor& reader, const std::string& target) {
        reader.ask(target, "PRIMARY");
        world.waitFor([&] { return reader.answer().has_value(); });
        return reader.answer();
    }

    TestRequestor& xterm = requestor();
};

TEST_F(PrimaryLoanTest, LeavesPrimaryAloneWhileNobodyAsksForIt) {
    write("text");
    world.advance(5s);
    pasteboard->clearContents();

    EXPECT_TRUE(isOurs());
    EXPECT_FALSE(isLent());
}

TEST_F(PrimaryLoanTest, OwnsPrimaryByTheTimeItSaysSo) {
    write("text");

    EXPECT_TRUE(pasteboard->lendAsPrimary(xterm.window()));

    EXPECT_TRUE(isLent());
    EXPECT_TRUE(isOurs());
}

TEST_F(PrimaryLoanTest, GivesWhatItPutOnTheClipboard) {
    write("maçã");
    pasteboard->lendAsPrimary(xterm.window());

    EXPECT_EQ(read(xterm, "UTF8_STRING")->bytes, "maçã");
    EXPECT_EQ(paste("UTF8_STRING")->bytes, "maçã");
}

TEST_F(PrimaryLoanTest, GivesWhatAnotherProgramCopied) {
    auto& other = owner();
    other.offer("UTF8_STRING", "alheio");
    other.own();
    ASSERT_TRUE(waitForChange());

    ASSERT_TRUE(pasteboard->lendAsPrimary(xterm.window()));

    EXPECT_EQ(read(xterm, "UTF8_STRING")->bytes, "alheio");
    EXPECT_EQ(other.ownerOf("CLIPBOARD"), other.window());
}

TEST_F(PrimaryLoanTest, GivesPrimaryBackOnceItWasRead) {
    write("text");
    pasteboard->lendAsPrimary(xterm.window());
    EXPECT_FALSE(read(xterm, "TARGETS")->refused);
    EXPECT_TRUE(isLent());

    EXPECT_EQ(read(xterm, "UTF8_STRING")->bytes, "text");

    EXPECT_TRUE(isGivenBack());
    EXPECT_TRUE(isOurs());
}

TEST_F(PrimaryLoanTest, GivesALargeTextWhole) {
    const std::string large(3'000'000, 'a');
    write(large);
    pasteboard->lendAsPrimary(xterm.window());

    const auto answer = read(xterm, "UTF8_STRING");

    EXPECT_TRUE(answer->inPieces);
    EXPECT_TRUE(answer->bytes == large);
    EXPECT_TRUE(isGivenBack());
}

TEST_F(PrimaryLoanTest, IsNotDoneWhenAnotherProgramReadsPrimary) {
    write("text");
    pasteboard->lendAsPrimary(xterm.window());

    EXPECT_EQ(read(requestor(), "UTF8_STRING")->bytes, "text");
    EXPECT_TRUE(isLent());

    EXPECT_EQ(read(xterm, "UTF8_STRING")->bytes, "text");
    EXPECT_TRUE(isGivenBack());
}

TEST_F(PrimaryLoanTest, IsNotDoneWhenAFormWasRefused) {
    write("5 €");
    pasteboard->lendAsPrimary(xterm.window());

    EXPECT_TRUE(read(xterm, "STRING")->refused);
    EXPECT_TRUE(isLent());
}

TEST_F(PrimaryLoanTest, GivesPrimaryBackAfterASecondThatNobodyReadItIn) {
    write("text");
    pasteboard->lendAsPrimary(xterm.window());

    world.advance(999ms);
    EXPECT_TRUE(isLent());

    world.advance(1ms);
    EXPECT_TRUE(isGivenBack());
    EXPECT_TRUE(read(xterm, "UTF8_STRING")->refused);
}

TEST_F(PrimaryLoanTest, CountsTheSecondFromTheLastPaste) {
    write("text");
    pasteboard->lendAsPrimary(xterm.window());
    world.advance(600ms);
    pasteboard->lendAsPrimary(xterm.window());

    world.advance(600ms);
    EXPECT_TRUE(isLent());

    world.advance(400ms);
    EXPECT_TRUE(isGivenBack());
}

TEST_F(PrimaryLoanTest, TakesNothingFromWhoTookPrimaryMeanwhile) {
    write("text");
    pasteboard->lendAsPrimary(xterm.window());
    auto& other = owner();
    other.own("PRIMARY");

    world.advance(2s);
    world.pump();

    EXPECT_EQ(observer.ownerOf("PRIMARY"), other.window());
}

TEST_F(PrimaryLoanTest, LendsOnlyTexts) {
    EXPECT_FALSE(pasteboard->lendAsPrimary(xterm.window()));

    pasteboard->clearContents();
    ASSERT_TRUE(pasteboard->write(
        {.forms = {{.type = "public.png", .bytes = [bytes = Bytes("png")] { return bytes; }}}}));
    EXPECT_FALSE(pasteboard->lendAsPrimary(xterm.window()));
    EXPECT_FALSE(isLent());
}
