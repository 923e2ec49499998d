#include "ClipboardMonitorFixture.h"

namespace nettlecap {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

class ClipboardMonitorImagesTest : public ClipboardMonitorFixture {
protected:
    ClipboardMonitorImagesTest() { monitor->start(); }

    void copyTiff(std::string_view payload) { copy({{"public.tiff", tiff(payload)}}); }
};

// PNG.

TEST_F(ClipboardMonitorImagesTest, StoresPNGWithinTheSamePollUndecoded) {
    pressCopyKeyIn("Fotos");
    system.time.advance(0.25s);
    copy({{"public.png", png("flor")}});

    EXPECT_THAT(contents(), ElementsAre("PNG:flor"));
    EXPECT_EQ(entry(0).kind, ClipboardContentKind::image);
    EXPECT_EQ(entry(0).text, std::nullopt);
    EXPECT_EQ(entry(0).sourceApplication, "Fotos");
    EXPECT_EQ(entry(0).createdAt, Date{800'000'000.25});
    EXPECT_EQ(system.images.decodings(), 0);
    EXPECT_EQ(system.background.waitingJobs(), 0U);
    EXPECT_EQ(captures, 1);
}

TEST_F(ClipboardMonitorImagesTest, StoresWhateverBearsThePNGType) {
    copy({{"public.png", bytes("no picture at all")}});

    EXPECT_THAT(contents(), ElementsAre("PNG:re at all"));
}

TEST_F(ClipboardMonitorImagesTest, PrefersPNGToOtherForms) {
    system.pasteboard.setIgnoresInterest(true);
    copy({{"public.jpeg", jpeg("c")}, {"public.tiff", tiff("b")}, {"public.png", png("a")}});

    EXPECT_THAT(contents(), ElementsAre("PNG:a"));
    EXPECT_EQ(system.background.waitingJobs(), 0U);
}

TEST_F(ClipboardMonitorImagesTest, StoresThePictureAloneWhereThereIsATextToo) {
    copy({{"public.utf8-plain-text", bytes("flor.png")}, {"public.png", png("flor")}});

    EXPECT_THAT(contents(), ElementsAre("PNG:flor"));
}

TEST_F(ClipboardMonitorImagesTest, CapturesNothingForAPNGWithoutBytes) {
    copy({{"public.utf8-plain-text", bytes("olá")}, {"public.png", bytes("")}});

    EXPECT_THAT(contents(), IsEmpty());
    EXPECT_EQ(captures, 0);
}

TEST_F(ClipboardMonitorImagesTest, StoresTheSamePictureOnce) {
    copy({{"public.png", png("flor")}});
    copy("olá");
    const Date date = system.time.now();
    copy({{"public.png", png("flor")}});

    EXPECT_THAT(contents(), ElementsAre("PNG:flor", "olá"));
    EXPECT_EQ(entry(0).createdAt, date);
    EXPECT_EQ(captures, 3);
}

TEST_F(ClipboardMonitorImagesTest, DoesNotTellOfAPictureThatCannotBeWritten) {
    system.files.fail(FileOperation::write, "No space left on device");

    copy({{"public.png", png("flor")}});

    EXPECT_THAT(contents(), IsEmpty());
    EXPECT_EQ(*store.persistenceError(), "Não foi possível salvar a imagem: No space left on device");
    EXPECT_EQ(captures, 0);
}

// Other pictures.

TEST_F(ClipboardMonitorImagesTest, StoresATIFFOnceItIsConvertedDatedAtTheCopy) {
    pressCopyKeyIn("Fotos");
    system.time.advance(1s);
    copyTiff("flor");
    system.time.advance(30s);
    EXPECT_THAT(contents(), IsEmpty());
    EXPECT_EQ(captures, 0);

    convertNext();
    EXPECT_THAT(contents(), ElementsAre("PNG:flor"));
    EXPECT_EQ(entry(0).createdAt, Date{800'000'001});
    EXPECT_EQ(entry(0).sourceApplication, "Fotos");
    EXPECT_EQ(captures, 1);
}

TEST_F(ClipboardMonitorImagesTest, StoresTwoTIFFsInTheOrderOfCopyingEachWithItsOwnDateAndSource) {
    pressCopyKeyIn("Fotos");
    const Date first = system.time.now();
    copyTiff("um");
    pressCopyKeyIn("Mapas");
    const Date second = system.time.now();
    copyTiff("dois");
    system.time.advance(9s);

    convertNext();
    EXPECT_THAT(contents(), ElementsAre("PNG:um"));
    convertNext();
    EXPECT_THAT(contents(), ElementsAre("PNG:dois", "PNG:um"));
    EXPECT_THAT(sources(), ElementsAre("Mapas", "Fotos"));
    EXPECT_EQ(entry(0).createdAt, second);
    EXPECT_EQ(entry(1).createdAt, first);
}

TEST_F(ClipboardMonitorImagesTest, FilesALatePictureBelowWhatWasCopiedMeanwhile) {
    copyTiff("flor");
    copy("olá");

    convertNext();

    EXPECT_THAT(contents(), ElementsAre("olá", "PNG:flor"));
}

TEST_F(ClipboardMonitorImagesTest, KeepsThePictureOfACopyThatIsGone) {
    copyTiff("flor");
    system.pasteboard.dropOwnership();

    convertNext();

    EXPECT_THAT(contents(), ElementsAre("PNG:flor"));
}

TEST_F(ClipboardMonitorImagesTest, PassesPNGBytesUnderAnotherTypeOnAsTheyAre) {
    copy({{"public.tiff", png("BROKEN")}});

    convertNext();

    EXPECT_THAT(contents(), ElementsAre("PNG:BROKEN"));
}

TEST_F(ClipboardMonitorImagesTest, DropsATIFFThatDoesNotDecodeWithoutAWord) {
    copy({{"public.utf8-plain-text", bytes("olá")}, {"public.tiff", tiff("BROKEN")}});
    copy({{"public.utf8-plain-text", bytes("olá")}, {"public.tiff", bytes("")}});
    copyTiff("flor");

    convertNext();
    convertNext();
    convertNext();

    EXPECT_THAT(contents(), ElementsAre("PNG:flor"));
    EXPECT_EQ(*store.persistenceError(), std::nullopt);
    EXPECT_EQ(captures, 1);
}

TEST_F(ClipboardMonitorImagesTest, ConvertsEveryKindOfPicture) {
    for (const auto* type : {"public.jpeg", "public.heic", "public.heif", "public.webp", "com.compuserve.gif",
                             "com.microsoft.bmp"}) {
        copy({{type, jpeg(type)}});
        convertNext();
        EXPECT_EQ(contents().front(), std::string("PNG:") + type);
    }
}

TEST_F(ClipboardMonitorImagesTest, PrefersTheFirstKindThatIsAPicture) {
    system.pasteboard.setIgnoresInterest(true);
    copy({{"com.microsoft.bmp", jpeg("bmp")},
          {"public.webp", jpeg("webp")},
          {"public.jpeg", bytes("no picture")}});
    convertNext();
    EXPECT_THAT(contents(), ElementsAre("PNG:webp"));

    copy({{"public.jpeg", jpeg("jpeg")}, {"public.tiff", tiff("tiff")}});
    convertNext();
    EXPECT_EQ(contents().front(), "PNG:tiff");
}

TEST_F(ClipboardMonitorImagesTest, DoesNotDecodeWhileItLooks) {
    copy({{"public.jpeg", jpeg("flor")}});

    EXPECT_EQ(system.images.decodings(), 0);
}

TEST_F(ClipboardMonitorImagesTest, CapturesTheTextBesideWhatIsNoPicture) {
    copy({{"public.utf8-plain-text", bytes("um")}, {"public.jpeg", bytes("no picture")}});
    copy({{"public.utf8-plain-text", bytes("dois")}, {"public.heic", bytes("")}});
    copy({{"public.utf8-plain-text", bytes("três")}, {"public.png", std::nullopt}});
    copy({{"public.jpeg", bytes("no picture")}});

    EXPECT_THAT(contents(), ElementsAre("três", "dois", "um"));
    EXPECT_EQ(system.background.waitingJobs(), 0U);
}

// Text or picture.

TEST_F(ClipboardMonitorImagesTest, TakesTheTextOfOfficePrograms) {
    pressCopyKeyIn("Microsoft Excel");
    copy({{"public.utf8-plain-text", bytes("1\t2")}, {"public.png", png("cells")}});
    pressCopyKeyIn("PAGES");
    copy({{"public.utf8-plain-text", bytes("olá")}, {"public.png", png("words")}});

    EXPECT_THAT(contents(), ElementsAre("olá", "1\t2"));
}

TEST_F(ClipboardMonitorImagesTest, TakesThePictureOfOfficeProgramsWhereThereIsNoText) {
    pressCopyKeyIn("Microsoft Excel");
    copy({{"public.utf8-plain-text", bytes("")}, {"public.png", png("chart")}});

    EXPECT_THAT(contents(), ElementsAre("PNG:chart"));
}

TEST_F(ClipboardMonitorImagesTest, TakesTheTextBesideABitmap) {
    copy({{"public.utf8-plain-text", bytes("olá")}, {"com.microsoft.bmp", jpeg("flor")}});

    EXPECT_THAT(contents(), ElementsAre("olá"));
    EXPECT_EQ(system.background.waitingJobs(), 0U);
}

TEST_F(ClipboardMonitorImagesTest, TakesThePictureBesideATextOfBlanks) {
    copy({{"public.utf8-plain-text", bytes(" \n")}, {"public.png", png("flor")}});

    EXPECT_THAT(contents(), ElementsAre("PNG:flor"));
}

// The switches.

TEST_F(ClipboardMonitorImagesTest, TakesTheTextAndNoPictureWhilePicturesAreOff) {
    system.pasteboard.setIgnoresInterest(true);
    monitor->setCaptureImages(false);

    copy({{"public.utf8-plain-text", bytes("flor.png")}, {"public.png", png("flor")}});
    copy({{"public.png", png("flor")}});
    copyTiff("flor");

    EXPECT_THAT(contents(), ElementsAre("flor.png"));
    EXPECT_EQ(system.background.waitingJobs(), 0U);
}

TEST_F(ClipboardMonitorImagesTest, TakesPicturesAgainOnceTheyAreOn) {
    monitor->setCaptureImages(false);
    monitor->setCaptureImages(true);

    copy({{"public.utf8-plain-text", bytes("flor.png")}, {"public.png", png("flor")}});

    EXPECT_THAT(contents(), ElementsAre("PNG:flor"));
}

TEST_F(ClipboardMonitorImagesTest, DropsPicturesUnderWayWhenPicturesAreSwitchedOff) {
    copyTiff("um");
    copyTiff("dois");
    system.background.runNext();

    monitor->setCaptureImages(false);
    system.time.advance(0s);
    convertNext();

    EXPECT_THAT(contents(), IsEmpty());
    EXPECT_EQ(system.background.waitingJobs(), 0U);
    EXPECT_EQ(captures, 0);
}

TEST_F(ClipboardMonitorImagesTest, DropsPicturesUnderWayWhenItIsSwitchedOff) {
    copyTiff("um");
    copyTiff("dois");
    system.background.runNext();

    monitor->setEnabled(false);
    system.time.advance(0s);
    convertNext();

    EXPECT_THAT(contents(), IsEmpty());
    EXPECT_EQ(captures, 0);
}

TEST_F(ClipboardMonitorImagesTest, KeepsPicturesThatAreConvertedAfterItIsOnAgain) {
    copyTiff("um");
    copyTiff("dois");

    monitor->setEnabled(false);
    convertNext();
    monitor->setEnabled(true);
    convertNext();

    EXPECT_THAT(contents(), ElementsAre("PNG:dois"));
}

// Lifetime and calls in the middle.

TEST_F(ClipboardMonitorImagesTest, MayGoAwayWhileAPictureIsConverted) {
    copyTiff("um");
    copyTiff("dois");
    system.background.runNext();

    monitor.reset();
    system.time.advance(1s);

    EXPECT_THAT(contents(), IsEmpty());
    EXPECT_EQ(system.background.waitingJobs(), 0U);
    EXPECT_EQ(captures, 0);
}

TEST_F(ClipboardMonitorImagesTest, KeepsTheOrderWhenAListenerOfTheStoreCopiesAPicture) {
    const auto subscription = store.entries().subscribe([this] {
        if (store.entries()->size() == 1) copyTiff("três");
    });
    copyTiff("um");
    copyTiff("dois");

    convertNext();
    convertNext();
    convertNext();

    EXPECT_THAT(contents(), ElementsAre("PNG:três", "PNG:dois", "PNG:um"));
    EXPECT_EQ(captures, 3);
}

TEST_F(ClipboardMonitorImagesTest, CapturesBetweenTwoConversions) {
    copyTiff("um");
    system.background.runNext();
    copy("olá");
    EXPECT_TRUE(monitor->putOnPasteboard(entry(0)));
    system.time.advance(1s);

    EXPECT_THAT(contents(), ElementsAre("olá", "PNG:um"));
    EXPECT_EQ(captures, 2);
}

}  // namespace
}  // namespace nettlecap
