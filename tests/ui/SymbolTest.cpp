#include "ui/qml/Symbol.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

QImage drawn(const QString& name, const QColor& color) {
    Symbol symbol;
    symbol.setSize({48, 48});
    symbol.setName(name);
    symbol.setColor(color);
    QImage image(48, 48, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    symbol.paint(&painter);
    return image;
}

class SymbolTest : public testing::TestWithParam<const char*> {};

TEST_P(SymbolTest, IsDrawnInItsColourAndNoOther) {
    const QImage image = drawn(GetParam(), QColor(200, 30, 60));

    int opaque = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() < 255) continue;
            ++opaque;
            ASSERT_EQ(pixel, QColor(200, 30, 60));
        }
    }
    EXPECT_GT(opaque, 60);
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
}

INSTANTIATE_TEST_SUITE_P(All, SymbolTest,
                         testing::Values("arrow.triangle.2.circlepath", "checkmark", "checkmark.circle.fill",
                                         "chevron.down", "chevron.up", "chevron.up.chevron.down", "clipboard",
                                         "clock", "doc.text", "exclamationmark.triangle.fill", "gearshape",
                                         "lock.fill", "magnifyingglass", "pause.circle", "pencil", "photo",
                                         "plus", "record.circle", "star", "star.fill", "text.badge.plus",
                                         "text.quote", "trash", "xmark"));

}  // namespace
}  // namespace nettlecap
