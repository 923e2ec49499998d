#include "platform/linux/PictureBytes.h"
#include "ui/ClipboardEntryRow.h"
#include "ui/Waiting.h"
#include "ui/qml/HistoryPictures.h"
#include "ui/qml/QuickViewFactory.h"

#include <QQmlComponent>
#include <QTemporaryDir>
#include <filesystem>
#include <fstream>
#include <future>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

constexpr QSize tile(38, 38);

/// A picture that takes its time: the largest that is decoded.
class HistoryPicturesEndTest : public testing::Test {
protected:
    HistoryPicturesEndTest() {
        constexpr std::size_t side = 8192;
        const std::string ofColoursAndAlpha("\x08\6\0\0\0", 5);
        const auto bytes = picture::pngOfZeros(side, side, ofColoursAndAlpha, side * (side * 4 + 1));
        std::ofstream(folder() / name.toStdString()) << bytes;
    }

    Path folder() const { return room.path().toStdString(); }
    bool isBeingDecoded() const {
        std::error_code gone;
        for (const auto& open : std::filesystem::directory_iterator("/proc/self/fd"))
            if (std::filesystem::read_symlink(open, gone) == folder() / name.toStdString()) return true;
        return false;
    }

    QTemporaryDir room;
    QString name = "grande.png";
};

TEST_F(HistoryPicturesEndTest, GivesNothingAnyMore) {
    HistoryPictures pictures(folder(), HistoryPictures::Use::tile);

    pictures.end();

    EXPECT_TRUE(pictures.picture(name, tile).isNull());
}

TEST_F(HistoryPicturesEndTest, BreaksOffWhatIsBeingDecoded) {
    HistoryPictures pictures(folder(), HistoryPictures::Use::tile);
    auto picture = std::async(std::launch::async, [&] { return pictures.picture(name, tile); });
    ASSERT_TRUE(waitUntil([&] { return isBeingDecoded(); }));

    pictures.end();

    EXPECT_TRUE(picture.get().isNull());
}

TEST_F(HistoryPicturesEndTest, NothingIsDecodedOnceTheViewsAreGone) {
    auto views = std::make_unique<QuickViewFactory>(folder());
    QQmlComponent component(&views->engine());
    component.setData("import QtQuick\nImage { sourceSize.width: 38; sourceSize.height: 38 }", QUrl());
    std::unique_ptr<QObject> image(component.create());
    image->setProperty("source", QString("image://%1/%2").arg(ClipboardEntryRow::pictureProvider, name));
    ASSERT_TRUE(waitUntil([&] { return isBeingDecoded(); }));

    image.reset();
    views.reset();

    EXPECT_FALSE(isBeingDecoded());
}

}  // namespace
}  // namespace nettlecap
