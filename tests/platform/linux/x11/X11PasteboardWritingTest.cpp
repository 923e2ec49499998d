#include "platform/linux/x11/X11World.h"

#include <QTimer>
#include <sys/socket.h>

using namespace nettlecap;
using namespace nettlecap::test;
using namespace std::chrono_literals;

using Names = std::vector<std::string>;

class X11PasteboardWritingTest : public X11PasteboardTest {
protected:
    static PasteboardItem::Form form(const std::string& type, std::string bytes) {
        return {.type = type, .bytes = [bytes = Bytes(std::move(bytes))] { return bytes; }};
    }
    /// While this program sits in an event loop of its own, time goes on, and the others too.
    std::unique_ptr<QTimer> goOnMeanwhile() {
        auto timer = std::make_unique<QTimer>();
        timer->callOnTimeout([this] {
            world.time.advance(1ms);
            world.pump();
        });
        timer->start(1ms);
        return timer;
    }
};

TEST_F(X11PasteboardWritingTest, TellsOfNoChangeThatIsItsOwn) {
    int hints = 0;
    const auto changes = pasteboard->onChange([&] { ++hints; });

    write("text");
    ASSERT_TRUE(isOurs());
    EXPECT_EQ(paste("UTF8_STRING")->bytes, "text");
    world.advance(1s);

    EXPECT_EQ(hints, 0);
    EXPECT_EQ(pasteboard->changeCount(), 1);
}

TEST_F(X11PasteboardWritingTest, ReadsBackWhatItOwns) {
    pasteboard->clearContents();
    ASSERT_TRUE(pasteboard->write(
        {.forms = {form("public.utf8-plain-text", "text\xFF"), form("public.png", "png")}}));

    EXPECT_EQ(pasteboard->types(), (std::vector<PasteboardType>{"public.utf8-plain-text", "public.png"}));
    EXPECT_EQ(text(), "text\xEF\xBF\xBD");
    EXPECT_EQ(pasteboard->data("public.png"), Bytes("png"));
    EXPECT_EQ(pasteboard->data("public.tiff"), std::nullopt);
}

TEST_F(X11PasteboardWritingTest, SaysWhenAWriteCameTooLate) {
    pasteboard->clearContents();
    auto& other = owner();
    other.offer("UTF8_STRING", "faster");
    other.own();

    EXPECT_FALSE(pasteboard->write({.forms = {form("public.utf8-plain-text", "ours")}}));

    ASSERT_TRUE(waitForChange(2));
    EXPECT_EQ(text(), "faster");
}

TEST_F(X11PasteboardWritingTest, SaysThatNothingCanBeWrittenWithoutAServer) {
    shutdown(xcb_get_file_descriptor(world.connection->xcb()), SHUT_RDWR);

    pasteboard->clearContents();

    EXPECT_FALSE(pasteboard->write({.forms = {form("public.utf8-plain-text", "text")}}));
}

TEST_F(X11PasteboardWritingTest, ReplacesACopyThatWasNotYetNoticed) {
    auto& other = owner();
    other.offer("UTF8_STRING", "theirs");
    other.own();

    write("ours");

    world.advance(1s);
    EXPECT_EQ(paste("UTF8_STRING")->bytes, "ours");
    EXPECT_EQ(pasteboard->changeCount(), 1);
    EXPECT_EQ(text(), "ours");
    EXPECT_EQ(other.askedInAll(), 0);
}

TEST_F(X11PasteboardWritingTest, HandsOverToAClipboardManager) {
    write("testament");
    auto& manager = owner();
    auto& reader = requestor();
    std::optional<std::string> saved;
    std::vector<std::string> targets;
    manager.behave("SAVE_TARGETS", [&](const auto& request) {
        targets = manager.atomsIn(request);
        reader.ask("UTF8_STRING");
        ASSERT_TRUE(world.waitFor([&] { return reader.answer().has_value(); }));
        saved = reader.answer()->bytes;
        manager.putAndTell(request, "NULL", 32, "");
    });
    manager.own("CLIPBOARD_MANAGER");
    const auto others = goOnMeanwhile();

    pasteboard->handOver();

    EXPECT_EQ(saved, "testament");
    EXPECT_EQ(targets, (Names{"UTF8_STRING", "text/plain;charset=utf-8", "text/plain", "STRING"}));
}

TEST_F(X11PasteboardWritingTest, WaitsNotForEverForAClipboardManager) {
    write("testament");
    auto& manager = owner();
    manager.mute("SAVE_TARGETS");
    manager.own("CLIPBOARD_MANAGER");
    const Uptime begin = world.time.uptime();
    const auto others = goOnMeanwhile();

    pasteboard->handOver();

    EXPECT_EQ(manager.asked("SAVE_TARGETS"), 1);
    EXPECT_LE(world.time.uptime() - begin, 1.6s);
}

TEST_F(X11PasteboardWritingTest, HandsNothingOverWithoutAManagerOrContents) {
    const auto others = goOnMeanwhile();
    write("testament");
    pasteboard->handOver();

    auto& manager = owner();
    manager.own("CLIPBOARD_MANAGER");
    pasteboard->clearContents();
    pasteboard->handOver();
    auto& next = owner();
    next.own();
    pasteboard->handOver();

    EXPECT_EQ(manager.asked("SAVE_TARGETS"), 0);
}
