#include "ui/qml/HistoryPictures.h"
#include "platform/linux/ChildProcess.h"
#include "platform/linux/HostilePictures.h"
#include "platform/linux/PictureBytes.h"
#include "ui/ClipboardEntryRow.h"
#include "ui/HistoryOnFakes.h"
#include "ui/PrintQt.h"
#include "ui/Waiting.h"

#include <QColor>
#include <QFile>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace nettlecap {
namespace {

constexpr QSize side(38, 38);

class HistoryPicturesTest : public testing::Test {
protected:
    HistoryPicturesTest() { QDir().mkdir(folder); }

    void save(const QString& path, QSize size, const QColor& color = Qt::red) {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(color);
        ASSERT_TRUE(picture.save(path, "PNG"));
    }
    void write(const QString& path, const std::string& bytes) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes.data(), static_cast<qint64>(bytes.size()));
    }
    QImage thumbnail(const QString& name) {
        return HistoryPictures(folder.toStdString(), HistoryPictures::Use::tile).picture(name, side);
    }

    QTemporaryDir room;
    QString folder = room.filePath("Images");
};

TEST_F(HistoryPicturesTest, FillsTheTileWithTheMiddleOfThePicture) {
    QImage picture(300, 100, QImage::Format_RGB32);
    picture.fill(Qt::blue);
    for (int x = 100; x < 200; ++x)
        for (int y = 0; y < 100; ++y) picture.setPixelColor(x, y, Qt::green);
    picture.save(folder + "/gato.png");

    const QImage result = thumbnail("gato.png");

    EXPECT_EQ(result.size(), side);
    EXPECT_EQ(result.pixelColor(19, 19), QColor(Qt::green));
    EXPECT_EQ(result.pixelColor(3, 19), QColor(Qt::green));
    EXPECT_EQ(result.pixelColor(34, 19), QColor(Qt::green));
}

TEST_F(HistoryPicturesTest, RoundsTheCorners) {
    save(folder + "/gato.png", {100, 100});

    EXPECT_EQ(thumbnail("gato.png").pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(thumbnail("gato.png").pixelColor(19, 0), QColor(Qt::red));
}

TEST_F(HistoryPicturesTest, EnlargesASmallPictureToTheTile) {
    save(folder + "/ponto.png", {1, 1});

    EXPECT_EQ(thumbnail("ponto.png").size(), side);
}

TEST_F(HistoryPicturesTest, CopesWithAPictureThatIsAllLength) {
    for (const QSize size : {QSize(400'000, 1), QSize(1, 400'000)}) {
        save(folder + "/fita.png", size);

        EXPECT_EQ(thumbnail("fita.png").pixelColor(19, 19), QColor(Qt::red)) << size.width();
    }
}

TEST_F(HistoryPicturesTest, OpensNothingOutsideItsFolder) {
    save(room.filePath("x.png"), {10, 10});
    QDir(folder).mkdir("a");
    save(folder + "/a/b", {10, 10});

    EXPECT_TRUE(thumbnail("../x.png").isNull());
    EXPECT_TRUE(thumbnail("a/b").isNull());
    EXPECT_TRUE(thumbnail(room.filePath("x.png")).isNull());
    EXPECT_TRUE(thumbnail("").isNull());
    EXPECT_TRUE(thumbnail(".").isNull());
    EXPECT_TRUE(thumbnail("..").isNull());
    EXPECT_TRUE(thumbnail("a").isNull());
}

TEST_F(HistoryPicturesTest, FollowsNoLink) {
    save(room.filePath("x.png"), {10, 10});
    QFile::link(room.filePath("x.png"), folder + "/elo.png");

    EXPECT_TRUE(thumbnail("elo.png").isNull());
}

TEST_F(HistoryPicturesTest, GivesNothingForAFileThatIsMissingOrNoPicture) {
    QFile text(folder + "/texto.png");
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("isto não é uma imagem");
    text.close();

    EXPECT_TRUE(thumbnail("sumiu.png").isNull());
    EXPECT_TRUE(thumbnail("texto.png").isNull());
}

TEST_F(HistoryPicturesTest, GivesNothingForAPictureOfAbsurdSize) {
    // One bit a pixel, so that it is the rule which refuses it and not the lack of memory.
    const QImage largest(8192, 8192, QImage::Format_Mono);
    const QImage tooLarge(8192, 8193, QImage::Format_Mono);
    ASSERT_TRUE(largest.save(folder + "/grande.png"));
    ASSERT_TRUE(tooLarge.save(folder + "/enorme.png"));

    EXPECT_FALSE(thumbnail("grande.png").isNull());
    EXPECT_TRUE(thumbnail("enorme.png").isNull());
}

TEST_F(HistoryPicturesTest, GivesNothingForAPictureOfDeepColoursOfHalfTheAbsurdSize) {
    const std::string deep("\x10\4\0\0\0", 5);  // grey and alpha
    constexpr std::size_t width = 8192;
    for (const int height : {4096, 4097}) {
        const auto rows = static_cast<std::size_t>(height);
        write(folder + "/funda.png", picture::pngOfZeros(width, rows, deep, rows * (width * 4 + 1)));

        EXPECT_EQ(thumbnail("funda.png").isNull(), height > 4096);
    }
}

TEST_F(HistoryPicturesTest, ShowsAnInterlacedPicture) {
    constexpr std::size_t length = 64;
    constexpr std::size_t rowsOfAllPasses = 120;
    const std::string interlaced("\x08\0\0\0\1", 5);
    write(folder + "/trama.png",
          picture::pngOfZeros(length, length, interlaced, length * length + rowsOfAllPasses));

    EXPECT_EQ(thumbnail("trama.png").pixelColor(19, 19), QColor(Qt::black));
}

TEST_F(HistoryPicturesTest, GivesNothingForAPictureThatBreaksOff) {
    save(folder + "/gato.png", {100, 100});
    QFile file(folder + "/gato.png");

    EXPECT_FALSE(thumbnail("gato.png").isNull());
    ASSERT_TRUE(file.resize(file.size() - 20));
    EXPECT_TRUE(thumbnail("gato.png").isNull());
}

TEST_F(HistoryPicturesTest, ShowsAPictureOfTwoColoursInThemHoweverLargeItIs) {
    for (const int size : {10, 38, 300}) {
        QImage picture(size, size, QImage::Format_Mono);
        picture.setColorTable({QColor(Qt::red).rgb(), QColor(Qt::blue).rgb()});
        picture.fill(0);
        ASSERT_TRUE(picture.save(folder + "/duas.png"));

        EXPECT_EQ(thumbnail("duas.png").pixelColor(19, 19), QColor(Qt::red)) << size;
    }
}

TEST_F(HistoryPicturesTest, ShowsTheSameWithoutTheTextsInAPicture) {
    QImage picture(100, 100, QImage::Format_RGB32);
    picture.fill(Qt::red);
    ASSERT_TRUE(picture.save(folder + "/calado.png"));
    picture.setText("Comment", QString(100'000, 'x'));
    ASSERT_TRUE(picture.save(folder + "/falante.png"));

    EXPECT_EQ(thumbnail("falante.png"), thumbnail("calado.png"));
}

TEST_F(HistoryPicturesTest, GivesNothingForAFileLargerThanAnyCopy) {
    save(folder + "/gato.png", {100, 100});

    ASSERT_TRUE(QFile::resize(folder + "/gato.png", HistoryPictures::mostBytes));
    EXPECT_FALSE(thumbnail("gato.png").isNull());
    ASSERT_TRUE(QFile::resize(folder + "/gato.png", HistoryPictures::mostBytes + 1));
    EXPECT_TRUE(thumbnail("gato.png").isNull());
}

TEST_F(HistoryPicturesTest, NeverTakesMemoryForTheTextsInAPicture) {
    const QString path = folder + "/bomba.png";
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    for (const picture::Hostile& hostile : picture::hostilePngs())
        if (std::string_view(hostile.name) == "990 packed texts of 8 MB")
            file.write(hostile.make().view().data(), static_cast<qint64>(hostile.make().size()));
    file.close();

    const std::string peak = inChild([&] {
        const bool isShown = !thumbnail("bomba.png").isNull();
        rusage usage{};
        ::getrusage(RUSAGE_SELF, &usage);
        return std::string(isShown && usage.ru_maxrss < 2'000'000 ? "small" : "large");
    });

    EXPECT_EQ(peak, "small");
}

constexpr QSize box(436, 240);

class CardPicturesTest : public HistoryPicturesTest {
protected:
    /// Of a red picture of this size; transparent where it is not.
    QImage shown(QSize size) {
        save(folder + "/gato.png", size);
        return HistoryPictures(folder.toStdString(), HistoryPictures::Use::card).picture("gato.png", box);
    }
    static bool isRed(const QImage& image, int x, int y) { return image.pixelColor(x, y) == QColor(Qt::red); }
    static bool isClear(const QImage& image, int x, int y) { return image.pixelColor(x, y).alpha() == 0; }
};

TEST_F(CardPicturesTest, FitsAWidePictureIntoTheWidth) {
    const QImage image = shown({872, 240});

    EXPECT_EQ(image.size(), box);
    EXPECT_TRUE(isRed(image, 2, 120) && isRed(image, 433, 120));
    EXPECT_TRUE(isRed(image, 218, 62) && isRed(image, 218, 177));
    EXPECT_TRUE(isClear(image, 218, 57) && isClear(image, 218, 182));
}

TEST_F(CardPicturesTest, FitsAHighPictureIntoTheHeight) {
    const QImage image = shown({100, 480});

    EXPECT_TRUE(isRed(image, 218, 1) && isRed(image, 218, 238));
    EXPECT_TRUE(isRed(image, 195, 120) && isRed(image, 240, 120));
    EXPECT_TRUE(isClear(image, 190, 120) && isClear(image, 246, 120));
}

TEST_F(CardPicturesTest, LeavesNoSliversBesideAPictureOfAWideScreen) {
    const QImage image = shown({1920, 1080});

    EXPECT_TRUE(isRed(image, 0, 120) && isRed(image, 435, 120));
}

TEST_F(CardPicturesTest, CutsNothingOffAPictureThatLeavesMoreThanSlivers) {
    const QImage image = shown({410, 240});

    EXPECT_TRUE(isClear(image, 11, 120) && isClear(image, 424, 120));
    EXPECT_TRUE(isRed(image, 15, 120) && isRed(image, 420, 120));
}

TEST_F(CardPicturesTest, EnlargesASmallPictureToTheBox) {
    const QImage image = shown({10, 10});

    EXPECT_TRUE(isRed(image, 218, 2) && isRed(image, 100, 120) && isRed(image, 335, 120));
    EXPECT_TRUE(isClear(image, 95, 120) && isClear(image, 340, 120));
}

TEST_F(CardPicturesTest, RoundsTheCornersOfOneThatFillsTheBox) {
    const QImage image = shown(box);

    EXPECT_TRUE(isClear(image, 0, 0) && isClear(image, 435, 239) && isClear(image, 2, 2));
    EXPECT_TRUE(isRed(image, 13, 0) && isRed(image, 0, 13) && isRed(image, 218, 239));
}

/// The way of the address through the engine to the provider.
class PictureAddressTest : public HistoryPicturesTest {
protected:
    PictureAddressTest() {
        engine.addImageProvider("history",
                                new HistoryPictures(folder.toStdString(), HistoryPictures::Use::tile));
    }

    int statusOf(const QUrl& address) {
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nImage { sourceSize.width: 38; sourceSize.height: 38 }", QUrl());
        const std::unique_ptr<QObject> image(component.create());
        image->setProperty("source", address);
        EXPECT_TRUE(waitUntil([&] { return image->property("status").toInt() != loading; }));
        return image->property("status").toInt();
    }

    static constexpr int ready = 1;
    static constexpr int loading = 2;
    static constexpr int error = 3;
    QQmlEngine engine;
};

TEST_F(PictureAddressTest, FindsAPlainName) {
    save(folder + "/gato.png", {60, 40});

    EXPECT_EQ(statusOf(QUrl("image://history/gato.png")), ready);
}

TEST_F(PictureAddressTest, FindsWhateverNameARowGives) {
    HistoryOnFakes history;
    PointerTravel pointer;
    for (const char* name : {"é 100%25.png", "a?b#c.png", "%2e%2e", "c:\\d"}) {
        save(folder + "/" + name, {60, 40});
        const ClipboardEntryRow row({.app = history.app,
                                     .clock = history.fake.time,
                                     .scheduler = history.fake.time,
                                     .identifiers = history.fake.identifiers,
                                     .images = history.fake.images,
                                     .text = history.fake.text,
                                     .pointer = pointer},
                                    StoredEntry(history.addImage(name)),
                                    {.select = [] {}, .requestDelete = [](const ClipboardEntry&) {}}, false);

        EXPECT_EQ(statusOf(row.thumbnail()), ready) << name;
    }
}

TEST_F(PictureAddressTest, RefusesAWayOut) {
    save(room.filePath("x.png"), {10, 10});

    EXPECT_EQ(statusOf(QUrl("image://history/../x.png")), error);
    EXPECT_EQ(statusOf(QUrl("image://history/..%252Fx.png")), error);
    EXPECT_EQ(statusOf(QUrl("image://history/%2E%2E%2Fx.png")), error);
    EXPECT_EQ(statusOf(QUrl("image://history/")), error);
}

TEST_F(PictureAddressTest, ReportsAMissingPicture) {
    EXPECT_EQ(statusOf(QUrl("image://history/sumiu.png")), error);
}

}  // namespace
}  // namespace nettlecap
