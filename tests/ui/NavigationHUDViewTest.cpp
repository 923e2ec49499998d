#include "ui/NavigationHUDView.h"
#include "ui/PrintQt.h"

#include <QMetaProperty>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

NavigationCard imageCard(std::optional<Path> file) {
    return {.entry = {.kind = ClipboardContentKind::image},
            .imageURL = std::move(file),
            .position = 1,
            .total = 1};
}

TEST(NavigationHUDViewTest, TellsThePlaceInTheListAndWhatLettingGoDoes) {
    const NavigationHUDView view({.position = 3, .total = 12}, {}, 440);
    const NavigationHUDView late({.position = 4999, .total = 5000}, {}, 440);

    EXPECT_EQ(view.caption(), "Item 3 de 12 • solte as teclas para colar");
    EXPECT_EQ(late.caption(), "Item 4999 de 5000 • solte as teclas para colar");
}

TEST(NavigationHUDViewTest, ShowsWhatWasShapedForIt) {
    const NavigationHUDView view({.entry = {.text = "  é  "}}, {"é", true, 7}, 480);

    EXPECT_EQ(view.text(), "é");
    EXPECT_TRUE(view.usesExpandedLayout());
    EXPECT_EQ(view.visibleLineLimit(), 7);
    EXPECT_EQ(view.panelWidth(), 480);
    EXPECT_FALSE(view.isImage());
}

TEST(NavigationHUDViewTest, BreaksLinesWhereverTheTextDoes) {
    const NavigationHUDView view({}, {"a\rb\r\nc\nd\u0085e\u2028f\u2029g\vh\fi\n\rj", true, 9}, 480);

    EXPECT_EQ(view.text(), "a\nb\nc\nd\ne\nf\ng\nh\ni\n\nj");
}

TEST(NavigationHUDViewTest, IsMaskedOnlyWhereASensitiveTextIsProtected) {
    const auto isMasked = [](std::optional<SensitiveContentKind> kind, bool protects) {
        return NavigationHUDView({.entry = {.sensitiveKind = kind}, .protectSensitiveContent = protects}, {},
                                 440)
            .isMasked();
    };

    EXPECT_TRUE(isMasked(SensitiveContentKind::paymentCard, true));
    EXPECT_TRUE(isMasked(SensitiveContentKind::secret, true));
    EXPECT_FALSE(isMasked(SensitiveContentKind::secret, false));
    EXPECT_FALSE(isMasked(std::nullopt, true));
}

TEST(NavigationHUDViewTest, NamesItsPictureByTheFileAlone) {
    const auto address = [](std::optional<Path> file) {
        return NavigationHUDView(imageCard(std::move(file)), {}, 480).picture().toString(QUrl::FullyEncoded);
    };

    EXPECT_EQ(address("/dados/Nettlecap/Images/gato.png"), "image://card/gato.png");
    EXPECT_EQ(address("/dados/a?b#c.png"), "image://card/a%3Fb%23c.png");
    EXPECT_EQ(address(std::nullopt), "");
}

TEST(NavigationHUDViewTest, ATextHasNoPicture) {
    EXPECT_EQ(NavigationHUDView({.imageURL = "/dados/gato.png"}, {}, 440).picture(), QUrl());
}

TEST(NavigationHUDViewTest, NeverChanges) {
    const QMetaObject& meta = NavigationHUDView::staticMetaObject;
    ASSERT_GT(meta.propertyCount(), meta.propertyOffset());

    for (int index = meta.propertyOffset(); index < meta.propertyCount(); ++index)
        EXPECT_TRUE(meta.property(index).isConstant()) << meta.property(index).name();
}

}  // namespace
}  // namespace nettlecap
