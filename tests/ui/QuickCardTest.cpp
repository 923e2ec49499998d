#include "ui/qml/QuickCard.h"
#include "platform/fake/FakeWindows.h"
#include "ui/PrintQt.h"
#include "ui/Waiting.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QPointer>
#include <QSGNode>
#include <QScreen>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

/// An item that knows whether it is drawn.
class DrawnItem final : public QQuickItem {
public:
    explicit DrawnItem(int& drawings) : drawings_(drawings) { setFlag(ItemHasContents); }

private:
    struct Drawing final : QSGNode {
        explicit Drawing(int& drawings) : count(drawings) { ++count; }
        ~Drawing() override { --count; }

        int& count;
    };

    QSGNode* updatePaintNode(QSGNode* drawn, UpdatePaintNodeData*) override {
        return drawn ? drawn : new Drawing(drawings_);
    }

    int& drawings_;
};

class QuickCardTest : public testing::Test {
protected:
    ~QuickCardTest() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    /// What it shows, as long as that lives.
    QPointer<QQuickItem> show() {
        auto item = std::make_unique<QQuickItem>();
        QPointer<QQuickItem> result(item.get());
        card.setContent(std::make_unique<QuickHostedView>(std::move(item), nullptr));
        card.setContentSize({440, 100});
        card.orderFrontRegardless();
        return result;
    }
    QRect frame() const { return card.window().geometry(); }

    FakeNativeWindows native;
    QuickCard card{native};
    int screenHeight = QGuiApplication::primaryScreen()->geometry().height();
};

TEST_F(QuickCardTest, TakesNeitherFocusNorClicksNorAManager) {
    for (const Qt::WindowType flag :
         {Qt::FramelessWindowHint, Qt::WindowStaysOnTopHint, Qt::WindowTransparentForInput,
          Qt::WindowDoesNotAcceptFocus, Qt::X11BypassWindowManagerHint})
        EXPECT_TRUE(card.window().flags().testFlag(flag)) << flag;
    EXPECT_EQ(card.window().type(), Qt::Tool);
    EXPECT_EQ(card.window().color().alpha(), 0);
    EXPECT_FALSE(card.isVisible());
}

TEST_F(QuickCardTest, StandsWithItsBottomLeftCornerWhereItIsPut) {
    show();
    card.setOrigin({100, 110});
    EXPECT_EQ(frame(), QRect(100, screenHeight - 110 - 100, 440, 100));

    card.setContentSize({480, 330});
    EXPECT_EQ(frame(), QRect(100, screenHeight - 110 - 330, 480, 330));
}

TEST_F(QuickCardTest, FitsItsContent) {
    const auto item = show();
    EXPECT_EQ(item->size(), QSizeF(440, 100));

    card.setContentSize({480, 330});
    EXPECT_EQ(item->size(), QSizeF(480, 330));
}

TEST_F(QuickCardTest, HalfAPointMakesItAPointHigher) {
    show();
    card.setContentSize({440, 99.5});

    EXPECT_EQ(frame().size(), QSize(440, 100));
}

TEST_F(QuickCardTest, HidesAndKeepsItsContent) {
    const auto item = show();
    EXPECT_TRUE(card.isVisible());

    card.orderOut();

    EXPECT_FALSE(card.isVisible());
    EXPECT_FALSE(item.isNull());
}

TEST_F(QuickCardTest, DropsItsContentWithWhatWasDrawnOfIt) {
    int drawings = 0;
    show();
    card.setContent(std::make_unique<QuickHostedView>(std::make_unique<DrawnItem>(drawings), nullptr));
    ASSERT_TRUE(waitUntil([&] { return drawings == 1; }));

    card.orderOut();
    card.dropContent();

    EXPECT_EQ(drawings, 0);
    EXPECT_TRUE(card.window().contentItem()->childItems().isEmpty());
    EXPECT_EQ(frame().size(), QSize(1, 1));
}

TEST_F(QuickCardTest, IsAsLargeAsBeforeWhenItHasContentAgain) {
    show();
    card.orderOut();
    card.dropContent();

    const auto item = show();

    EXPECT_EQ(frame().size(), QSize(440, 100));
    EXPECT_EQ(item->size(), QSizeF(440, 100));
}

TEST_F(QuickCardTest, ReplacedContentIsOutOfSightAtOnceAndGoesWithTheNextTurn) {
    const auto before = show();
    const auto after = show();

    ASSERT_FALSE(before.isNull());
    EXPECT_EQ(before->window(), nullptr);
    EXPECT_EQ(card.window().contentItem()->childItems(), QList<QQuickItem*>{after});

    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(before.isNull());
    EXPECT_FALSE(after.isNull());
}

TEST_F(QuickCardTest, IsCutAroundItsOutlineOnlyWhereNothingIsTranslucent) {
    native.setComposited(false);
    const auto item = show();
    const QRegion seen = card.window().mask();
    EXPECT_EQ(seen.boundingRect(), QRect(3, 3, 434, 94));
    EXPECT_FALSE(seen.contains(QPoint(4, 4)));
    EXPECT_TRUE(seen.contains(QPoint(10, 10)));
    EXPECT_EQ(item->property("isComposited"), false);

    native.setComposited(true);
    const auto next = show();
    EXPECT_TRUE(card.window().mask().isEmpty());
    EXPECT_EQ(next->property("isComposited"), true);
}

}  // namespace
}  // namespace nettlecap
