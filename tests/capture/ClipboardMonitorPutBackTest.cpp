#include "ClipboardMonitorFixture.h"

namespace nettlecap {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

class ClipboardMonitorPutBackTest : public ClipboardMonitorFixture {
protected:
    ClipboardMonitorPutBackTest() { monitor->start(); }

    std::vector<PasteboardType> types() const { return system.pasteboard.types().value(); }

    const Uuid id = Uuid::parse("0f8fad5b-d9cb-469f-a165-70867728950e").value();
    const ClipboardEntry text{.id = id, .kind = ClipboardContentKind::text, .text = " olá\r\n"};
    const SavedSnippet snippet{.id = id, .title = "Saudação", .content = "Olá, tudo bem?"};
};

// What is written.

TEST_F(ClipboardMonitorPutBackTest, WritesATextAsItWasCopiedWithItsIdentifier) {
    EXPECT_TRUE(monitor->putOnPasteboard(text));

    EXPECT_THAT(types(), ElementsAre("public.utf8-plain-text", "com.nettlecap.internal"));
    EXPECT_EQ(pasteboardHas("public.utf8-plain-text"), " olá\r\n");
    EXPECT_EQ(pasteboardHas("com.nettlecap.internal"), "0F8FAD5B-D9CB-469F-A165-70867728950E");
}

TEST_F(ClipboardMonitorPutBackTest, WritesASnippetsContentWithItsIdentifier) {
    EXPECT_TRUE(monitor->putOnPasteboard(snippet));

    EXPECT_THAT(types(), ElementsAre("public.utf8-plain-text", "com.nettlecap.internal"));
    EXPECT_EQ(pasteboardHas("public.utf8-plain-text"), "Olá, tudo bem?");
    EXPECT_EQ(pasteboardHas("com.nettlecap.internal"), "0F8FAD5B-D9CB-469F-A165-70867728950E");
}

TEST_F(ClipboardMonitorPutBackTest, WritesAnEmptyText) {
    EXPECT_TRUE(monitor->putOnPasteboard(ClipboardEntry{.id = id, .text = ""}));

    EXPECT_EQ(pasteboardHas("public.utf8-plain-text"), "");
}

TEST_F(ClipboardMonitorPutBackTest, WritesAPictureAsPNGAndAsTIFFMadeOnDemand) {
    copy({{"public.png", png("flor")}});
    EXPECT_TRUE(monitor->putOnPasteboard(entry(0)));

    EXPECT_THAT(types(), ElementsAre("public.png", "public.tiff", "com.nettlecap.internal"));
    EXPECT_EQ(pasteboardHas("public.png"), "\x89PNG\r\n\x1a\nflor");
    EXPECT_EQ(pasteboardHas("com.nettlecap.internal"), entry(0).id.text());
    EXPECT_EQ(system.images.decodings(), 0);
    EXPECT_EQ(pasteboardHas("public.tiff"), "TIFF:flor");
}

TEST_F(ClipboardMonitorPutBackTest, WritesAPictureAsPNGAloneWhereItIsNone) {
    copy({{"public.png", bytes("no picture at all")}});

    EXPECT_TRUE(monitor->putOnPasteboard(entry(0)));

    EXPECT_THAT(types(), ElementsAre("public.png", "com.nettlecap.internal"));
    EXPECT_EQ(pasteboardHas("public.png"), "no picture at all");
}

TEST_F(ClipboardMonitorPutBackTest, HasNoTIFFOfAPictureThatDoesNotDecode) {
    copy({{"public.png", png("BROKEN")}});

    EXPECT_TRUE(monitor->putOnPasteboard(entry(0)));

    EXPECT_EQ(pasteboardHas("public.png"), "\x89PNG\r\n\x1a\nBROKEN");
    EXPECT_EQ(pasteboardHas("public.tiff"), std::nullopt);
}

TEST_F(ClipboardMonitorPutBackTest, ServesAPictureWhoseFileIsGoneSince) {
    copy({{"public.png", png("flor")}});
    EXPECT_TRUE(monitor->putOnPasteboard(entry(0)));

    store.remove(entry(0));

    EXPECT_EQ(pasteboardHas("public.png"), "\x89PNG\r\n\x1a\nflor");
    EXPECT_EQ(pasteboardHas("public.tiff"), "TIFF:flor");
}

TEST_F(ClipboardMonitorPutBackTest, ReadsAPictureOnlyForWhoeverAsksForIt) {
    copy({{"public.png", png("flor")}});
    EXPECT_TRUE(monitor->putOnPasteboard(entry(0)));

    system.files.fail(FileOperation::read, "Input/output error");
    EXPECT_EQ(pasteboardHas("public.png"), std::nullopt);
    EXPECT_EQ(pasteboardHas("public.tiff"), std::nullopt);

    system.files.stopFailing(FileOperation::read);
    EXPECT_EQ(pasteboardHas("public.png"), "\x89PNG\r\n\x1a\nflor");
}

TEST_F(ClipboardMonitorPutBackTest, ServesWhatItWroteAfterTheMonitorIsGone) {
    copy({{"public.png", png("flor")}});
    EXPECT_TRUE(monitor->putOnPasteboard(entry(0)));

    monitor.reset();

    EXPECT_EQ(pasteboardHas("public.tiff"), "TIFF:flor");
}

// What can't be written.

TEST_F(ClipboardMonitorPutBackTest, LeavesThePasteboardAloneWhereTheContentIsMissing) {
    copy("antes");
    const auto changeCount = system.pasteboard.changeCount();
    const auto picture = [this](std::optional<std::string> file) {
        return ClipboardEntry{
            .id = id, .kind = ClipboardContentKind::image, .imageFilename = std::move(file)};
    };

    EXPECT_FALSE(monitor->putOnPasteboard(ClipboardEntry{.id = id, .kind = ClipboardContentKind::text}));
    EXPECT_FALSE(monitor->putOnPasteboard(picture(std::nullopt)));
    EXPECT_FALSE(monitor->putOnPasteboard(picture("gone.png")));
    EXPECT_FALSE(monitor->putOnPasteboard(picture("../history.json")));
    EXPECT_FALSE(monitor->putOnPasteboard(picture("..")));
    EXPECT_FALSE(monitor->putOnPasteboard(picture("")));

    EXPECT_EQ(pasteboardHas("public.utf8-plain-text"), "antes");
    EXPECT_EQ(system.pasteboard.changeCount(), changeCount);
}

TEST_F(ClipboardMonitorPutBackTest, LeavesThePasteboardAloneWhereTheFileCannotBeRead) {
    copy({{"public.png", png("flor")}});
    copy("antes");
    system.files.fail(FileOperation::read, "Input/output error");

    EXPECT_FALSE(monitor->putOnPasteboard(entry(1)));

    EXPECT_EQ(pasteboardHas("public.utf8-plain-text"), "antes");
}

TEST_F(ClipboardMonitorPutBackTest, SaysThatThePasteboardRefusedTheWrite) {
    copy("antes");
    system.pasteboard.setWritesFail(true);

    EXPECT_FALSE(monitor->putOnPasteboard(text));
    EXPECT_FALSE(monitor->putOnPasteboard(snippet));
    system.time.advance(0.45s);

    EXPECT_THAT(contents(), ElementsAre("antes"));
    EXPECT_EQ(captures, 1);
}

// What is not captured.

TEST_F(ClipboardMonitorPutBackTest, DoesNotCaptureWhatItWrote) {
    EXPECT_TRUE(monitor->putOnPasteboard(text));
    system.time.advance(0.45s);
    EXPECT_TRUE(monitor->putOnPasteboard(snippet));
    system.time.advance(0.45s);

    EXPECT_EQ(captures, 0);
}

TEST_F(ClipboardMonitorPutBackTest, KeepsAPendingGestureThroughItsOwnWrite) {
    pressCopyKeyIn("Notas");
    EXPECT_TRUE(monitor->putOnPasteboard(text));
    system.time.advance(0.45s);

    copy("olá");

    EXPECT_THAT(sources(), ElementsAre("Notas"));
}

TEST_F(ClipboardMonitorPutBackTest, KnowsWhatItWroteByItsTypeWhereAnotherChangeSlippedIn) {
    EXPECT_TRUE(monitor->putOnPasteboard(text));
    system.pasteboard.clearContents();
    EXPECT_TRUE(system.pasteboard.write(
        {.forms = {{.type = "public.utf8-plain-text", .bytes = [] { return Bytes("olá"); }},
                   {.type = "com.nettlecap.internal", .bytes = [] { return Bytes("0F8FAD5B"); }}}}));

    system.time.advance(0.45s);

    EXPECT_EQ(captures, 0);
}

TEST_F(ClipboardMonitorPutBackTest, CapturesACopyMadeAfterItsOwnWrite) {
    EXPECT_TRUE(monitor->putOnPasteboard(text));
    copySilently("depois");

    system.time.advance(0.45s);

    EXPECT_THAT(contents(), ElementsAre("depois"));
}

TEST_F(ClipboardMonitorPutBackTest, CapturesAgainWhatWasPutBackOnceItIsCopiedElsewhere) {
    copy("um");
    copy("dois");
    EXPECT_TRUE(monitor->putOnPasteboard(entry(1)));

    copy("um");

    EXPECT_THAT(contents(), ElementsAre("um", "dois"));
    EXPECT_EQ(captures, 3);
}

TEST_F(ClipboardMonitorPutBackTest, WritesWhileItIsOff) {
    monitor->setEnabled(false);
    EXPECT_TRUE(monitor->putOnPasteboard(text));
    monitor->setEnabled(true);
    system.time.advance(0.45s);

    EXPECT_EQ(pasteboardHas("public.utf8-plain-text"), " olá\r\n");
    EXPECT_EQ(captures, 0);
}

}  // namespace
}  // namespace nettlecap
