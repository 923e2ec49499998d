#include "platform/fake/FakePlatform.h"

#include <array>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

class FakeFileSystemTest : public testing::Test {
protected:
    Result<Done> write(const Path& path) {
        const std::array<std::string_view, 1> pieces = {"x"};
        return files.writeAtomically(path, pieces, "/");
    }

    FakeFileSystem files;
};

TEST_F(FakeFileSystemTest, FailsInTheWordsItWasTold) {
    files.fail(FileOperation::write, "No space left on device");
    const auto failed = write("/a");
    files.stopFailing(FileOperation::write);
    const auto written = write("/a");

    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.description(), "No space left on device");
    EXPECT_TRUE(written);
    EXPECT_EQ(files.writes("/a"), 1);
}

TEST_F(FakeFileSystemTest, FailsAtOnePathOnly) {
    files.fail(FileOperation::write, "Input/output error", "/a");

    EXPECT_FALSE(write("/a"));
    EXPECT_TRUE(write("/b"));
    EXPECT_EQ(files.writes(), 1);
}

TEST_F(FakeFileSystemTest, ShowsWhatIsInAFolder) {
    files.put("/home/ana/b", "two");
    files.put("/home/ana/a/deeper", "one");

    EXPECT_EQ(files.names("/home/ana"), (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(files.contents("/home/ana/b"), "two");
    EXPECT_TRUE(files.hasFolder("/home/ana/a"));
}

TEST(FakePasteboardTest, HoldsOfEachGroupTheFirstTypeThatArrives) {
    FakePasteboard pasteboard;
    pasteboard.setInterest({.groups = {{"public.png", "public.tiff", "public.jpeg"}}, .unlessOffered = {}});

    pasteboard.copyFromOutside(
        {{"public.png", std::nullopt}, {"public.tiff", Bytes("t")}, {"public.jpeg", Bytes("j")}});

    EXPECT_EQ(pasteboard.data("public.png"), std::nullopt);
    EXPECT_EQ(pasteboard.data("public.tiff"), Bytes("t"));
    EXPECT_EQ(pasteboard.data("public.jpeg"), std::nullopt);
}

TEST(FakePasteboardTest, HoldsNothingBesideATypeThatForbidsIt) {
    FakePasteboard pasteboard;
    pasteboard.setInterest({.groups = {{"public.utf8-plain-text"}}, .unlessOffered = {"secret"}});

    pasteboard.copyFromOutside({{"public.utf8-plain-text", Bytes("text")}, {"secret", Bytes()}});

    EXPECT_EQ(pasteboard.string("public.utf8-plain-text"), std::nullopt);
    EXPECT_EQ(pasteboard.changeCount(), 1);
}

TEST(FakePasteboardTest, AsksForAFormWhenSomebodyWantsIt) {
    FakePasteboard pasteboard;
    int asked = 0;
    const auto bytes = [&asked] { return std::optional(Bytes(std::to_string(++asked))); };

    pasteboard.clearContents();
    EXPECT_TRUE(pasteboard.write({.forms = {{.type = "public.tiff", .bytes = bytes}}}));
    EXPECT_EQ(asked, 0);

    EXPECT_EQ(pasteboard.data("public.tiff"), Bytes("1"));
}

TEST(FakePasteboardTest, TellsOfOthersCopiesOnly) {
    FakePasteboard pasteboard;
    int hints = 0;
    const auto subscription = pasteboard.onChange([&] { ++hints; });

    pasteboard.clearContents();
    EXPECT_EQ(hints, 0);

    pasteboard.copyFromOutside("text");
    pasteboard.dropOwnership();
    EXPECT_EQ(hints, 2);
    EXPECT_EQ(pasteboard.types(), std::nullopt);
    EXPECT_EQ(pasteboard.changeCount(), 3);
}

TEST(FakeEventMonitorsTest, TellsOfTheKindsInTheMaskOnly) {
    FakeEventMonitors events;
    int told = 0;
    const auto keys =
        events.addGlobal(static_cast<std::uint32_t>(InputKind::keyDown), [&](auto&) { ++told; });
    ASSERT_TRUE(keys);

    events.sendGlobal({.kind = InputKind::leftMouseDown});
    events.sendLocal({.kind = InputKind::keyDown});
    EXPECT_EQ(told, 0);

    events.sendGlobal({.kind = InputKind::keyDown});
    EXPECT_EQ(told, 1);
}

TEST(FakeEventMonitorsTest, MayRefuse) {
    FakeEventMonitors events;
    events.setRefusesGlobal(true);

    EXPECT_FALSE(events.addGlobal(~0U, [](auto&) {}));
    EXPECT_TRUE(events.addLocal(~0U, [](auto&) {}));
}

TEST(FakeWorkspaceTest, TellsOfTheApplicationThatComesToTheFront) {
    FakePlatform fake;
    std::optional<std::string> seen;
    const auto subscription = fake.platform().workspace.onActivation(
        [&](const RunningApplication& application) { seen = application.localizedName; });

    fake.workspace.activate({.localizedName = "Editor"});

    EXPECT_EQ(seen, "Editor");
    EXPECT_EQ(fake.workspace.frontmostApplication()->localizedName, "Editor");
}

}  // namespace
}  // namespace nettlecap
