#include "platform/linux/TemplateIcon.h"
#include "platform/linux/QtApplication.h"

#include <QImage>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

/// A square in the upper half at the left, and a line across the lower half.
const TemplateDrawing drawing{
    .size = {18, 18},
    .rectangles = {{.frame = {.origin = {4, 11}, .size = {4, 4}}, .radius = 0, .lineWidth = 0}},
    .strokes = {{.points = {{4, 4}, {14, 4}}, .lineWidth = 2}}};

QImage picture(const TemplateDrawing& of, int side) { return templateIcon(of).pixmap(side, side).toImage(); }

bool isLight(QColor colour) { return colour.alpha() == 255 && colour.lightness() > 220; }
bool isDark(QColor colour) { return colour.alpha() > 150 && colour.lightness() < 60; }

TEST(TemplateIconTest, HasThePicturesThatPanelsAskFor) {
    QList<QSize> expected;
    for (const int side : {16, 18, 20, 22, 24, 28, 32, 36, 40, 44, 48}) expected << QSize(side, side);

    EXPECT_EQ(templateIcon(drawing).availableSizes(), expected);
}

TEST(TemplateIconTest, ItsOriginIsTheBottomLeft) {
    for (const int side : {18, 36}) {
        const int scale = side / 18;
        const QImage image = picture(drawing, side);
        EXPECT_TRUE(isLight(image.pixelColor(6 * scale, 5 * scale))) << side;
        EXPECT_TRUE(isLight(image.pixelColor(9 * scale, 14 * scale))) << side;
        EXPECT_EQ(image.pixelColor(14 * scale, 5 * scale).alpha(), 0) << side;
    }
}

TEST(TemplateIconTest, FillsWhateverSizeAPanelHas) {
    for (int side = 16; side <= 48; ++side) {
        const QImage image = picture(drawing, side);
        EXPECT_EQ(image.size(), QSize(side, side));
        EXPECT_TRUE(isLight(image.pixelColor(side * 6 / 18, side * 5 / 18))) << side;
        EXPECT_TRUE(isLight(image.pixelColor(side * 9 / 18, side * 14 / 18))) << side;
        EXPECT_EQ(image.pixelColor(side * 14 / 18, side * 5 / 18).alpha(), 0) << side;
    }
}

TEST(TemplateIconTest, LightShapesHaveADarkOutline) {
    const QImage image = picture(drawing, 36);

    for (const QPoint beside : {QPoint(7, 10), QPoint(16, 10), QPoint(12, 5), QPoint(12, 15)})
        EXPECT_TRUE(isDark(image.pixelColor(beside))) << beside.x() << ' ' << beside.y();
    EXPECT_EQ(image.pixelColor(20, 10).alpha(), 0);
}

TEST(TemplateIconTest, WhatIsDrawnAsALineIsHollowAndDarkWithin) {
    const QImage image =
        picture({.size = {18, 18},
                 .rectangles = {{.frame = {.origin = {3, 3}, .size = {12, 12}}, .radius = 2, .lineWidth = 2}},
                 .strokes = {}},
                36);

    EXPECT_TRUE(isDark(image.pixelColor(18, 18)));
    EXPECT_TRUE(isLight(image.pixelColor(6, 18)));
}

}  // namespace
}  // namespace nettlecap
