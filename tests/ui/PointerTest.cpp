#include "ui/qml/Pointer.h"
#include "ui/ContentPorts.h"
#include "ui/HistoryOnFakes.h"
#include "ui/PrintQt.h"
#include "ui/Waiting.h"
#include "ui/qml/QuickHostedView.h"
#include "ui/qml/QuickViewFactory.h"

#include <QCursor>
#include <QQuickWindow>
#include <QTest>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

/// The main view in a window, and the pointer over it.
class PointerTest : public testing::Test {
protected:
    PointerTest() { window.setGeometry(100, 50, 430, 560); }
    ~PointerTest() override {
        content.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void show() {
        auto view = std::make_unique<MenuBarContentView>(history.app, contentPorts(history.fake));
        logic = view.get();
        content.reset(static_cast<QuickHostedView*>(views.menuBarContent(std::move(view)).release()));
        content->item().setParentItem(window.contentItem());
        content->item().setSize({430, 560});
        window.show();
        ASSERT_TRUE(waitUntilExposed(window));
    }
    bool isPreviewShownAfter(Seconds time) {
        history.fake.time.advance(time);
        RowList& rows = *logic->historyRows();
        return qobject_cast<ClipboardEntryRow*>(rows.row(0))->isShowingPreview();
    }

    HistoryOnFakes history;
    QuickViewFactory views{history.app.store().imagesDirectory()};
    QQuickWindow window;
    MenuBarContentView* logic = nullptr;
    std::unique_ptr<QuickHostedView> content;
};

TEST_F(PointerTest, IsToldAsTheEventsOfTheWindowHaveIt) {
    QCursor::setPos(130, 70);

    EXPECT_EQ(Pointer().positionIn(window.contentItem()), QPointF(30, 20));
}

TEST_F(PointerTest, OpensNoPreviewOfTheRowThatAppearsUnderItUntilItMoves) {
    history.add("um", 1min);
    QCursor::setPos(100 + 200, 50 + 120);
    show();

    QTest::mouseMove(&window, {200, 120});
    EXPECT_FALSE(isPreviewShownAfter(1s));

    QTest::mouseMove(&window, {200, 400});
    QTest::mouseMove(&window, {200, 121});
    EXPECT_TRUE(isPreviewShownAfter(1s));
}

TEST_F(PointerTest, ADoubleClickReportsASingleOneFirstWhichIsNeverDelayed) {
    history.fake.keyboard.setTrusted(true);
    history.app.updatePreferences([](AppPreferences& preferences) {
        preferences.autoPaste = true;
        preferences.pasteHistoryOnDoubleClick = true;
    });
    history.add("um", 1min);
    show();

    QTest::mouseClick(&window, Qt::LeftButton, {}, {200, 120});
    EXPECT_EQ(history.fake.pasteboard.string(pasteboardType::text), "um");
    history.fake.time.advance(1s);
    EXPECT_TRUE(history.fake.keyboard.typed().empty());

    QTest::mouseDClick(&window, Qt::LeftButton, {}, {200, 120});
    history.fake.time.advance(1s);
    EXPECT_FALSE(history.fake.keyboard.typed().empty());
}

}  // namespace
}  // namespace nettlecap
