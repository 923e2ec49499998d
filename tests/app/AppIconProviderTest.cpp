#include "app/AppIconProvider.h"

#include <gmock/gmock.h>

namespace nettlecap {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

using RoundedRectangle = TemplateDrawing::RoundedRectangle;

/// The parts of the drawing that a stroke draws, each once, whichever way it goes.
std::vector<std::pair<Point, Point>> lines(const TemplateDrawing::Stroke& stroke) {
    std::vector<std::pair<Point, Point>> result;
    for (std::size_t i = 1; i < stroke.points.size(); ++i)
        result.emplace_back(stroke.points[i - 1], stroke.points[i]);
    return result;
}

std::pair<Point, Point> line(double fromX, double fromY, double toX, double toY) {
    return {{fromX, fromY}, {toX, toY}};
}

TEST(AppIconProviderTest, NamesTheInstalledIconAndTheSymbolInItsPlace) {
    EXPECT_EQ(AppIconProvider::image.name, "Nettlecap");
    EXPECT_EQ(AppIconProvider::image.fallbackSymbol, "clipboard.fill");
}

TEST(AppIconProviderTest, DrawsTheBoardAndTheClip) {
    const TemplateDrawing& drawing = AppIconProvider::menuBarImage();

    EXPECT_EQ(drawing.size, (Size{18, 18}));
    EXPECT_THAT(drawing.rectangles,
                ElementsAre(RoundedRectangle{.frame = {{3, 1.5}, {12, 13}}, .radius = 2, .lineWidth = 1.5},
                            RoundedRectangle{.frame = {{6, 13}, {6, 3.5}}, .radius = 1.4, .lineWidth = 0}));
}

TEST(AppIconProviderTest, DrawsAnArrowToTheLeftAboveOneToTheRight) {
    const auto& strokes = AppIconProvider::menuBarImage().strokes;

    ASSERT_THAT(strokes, SizeIs(4));
    EXPECT_THAT(lines(strokes[0]), ElementsAre(line(12.5, 10, 6.4, 10)));
    EXPECT_THAT(lines(strokes[1]), ElementsAre(line(8.1, 11.7, 6.4, 10), line(6.4, 10, 8.1, 8.3)));
    EXPECT_THAT(lines(strokes[2]), ElementsAre(line(5.5, 6, 11.6, 6)));
    EXPECT_THAT(lines(strokes[3]), ElementsAre(line(9.9, 7.7, 11.6, 6), line(11.6, 6, 9.9, 4.3)));
    for (const auto& stroke : strokes) EXPECT_EQ(stroke.lineWidth, 1.25);
}

TEST(AppIconProviderTest, MakesTheDrawingOnce) {
    EXPECT_EQ(&AppIconProvider::menuBarImage(), &AppIconProvider::menuBarImage());
}

}  // namespace
}  // namespace nettlecap
