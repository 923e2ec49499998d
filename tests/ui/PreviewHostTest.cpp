#include "ui/qml/PreviewHost.h"
#include "platform/fake/FakeWindows.h"
#include "ui/ContentPorts.h"
#include "ui/HistoryOnFakes.h"
#include "ui/PrintQt.h"
#include "ui/Waiting.h"
#include "ui/qml/QuickPanel.h"
#include "ui/qml/QuickViewFactory.h"

#include <QGuiApplication>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

/// A panel with two entries and a saved message, in front of a screen that is larger.
class PreviewHostTest : public testing::Test {
protected:
    PreviewHostTest() {
        history.add(std::string(500, 'x'), 1h);
        history.add("dois", 2h);
        history.app.store().addSnippet("Oi", "Olá, tudo bem?");
        panel.setContentSize({430, 560});
        panel.setPosition(100, 120);
        setContent();
    }
    ~PreviewHostTest() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    void setContent() {
        auto content = std::make_unique<MenuBarContentView>(history.app, contentPorts(history.fake));
        view = content.get();
        panel.setContent(views.menuBarContent(std::move(content)));
        panel.makeKeyAndOrderFront();
    }
    void SetUp() override {
        ASSERT_TRUE(waitUntilExposed(panel));
        ASSERT_TRUE(waitUntil([this] { return row(1) && list(); }));
    }
    ClipboardEntryRow* row(int index) const {
        return qobject_cast<ClipboardEntryRow*>(view->historyRows()->row(static_cast<std::size_t>(index)));
    }
    QQuickItem* list() const { return find(*panel.contentItem(), "QQuickListView"); }
    static QQuickItem* find(const QQuickItem& from, const char* type) {
        for (QQuickItem* item : from.childItems()) {
            if (item->inherits(type) && item->isVisible()) return item;
            if (QQuickItem* found = find(*item, type)) return found;
        }
        return nullptr;
    }
    void select(int offset = 1) {
        view->moveCurrentSelection(offset);
        history.fake.time.advance(150ms);
    }
    void hover(ClipboardEntryRow* over) {
        over->handleRowHover(true);
        history.fake.time.advance(300ms);
    }
    static void enter(QuickPreview* preview) {
        QEnterEvent event({1, 1}, {1, 1}, {1, 1});
        QCoreApplication::sendEvent(preview, &event);
    }
    static void leave(QuickPreview* preview) {
        QEvent event(QEvent::Leave);
        QCoreApplication::sendEvent(preview, &event);
    }
    static QList<QuickPreview*> windows() {
        QList<QuickPreview*> result;
        for (QWindow* window : QGuiApplication::topLevelWindows())
            if (auto* preview = qobject_cast<QuickPreview*>(window)) result << preview;
        return result;
    }
    QuickPreview* window() const { return windows().value(0); }
    bool isShown() const { return window() && window()->isVisible(); }
    bool shows(const QString& text) const { return shows(*window()->contentItem(), text); }
    static bool shows(const QQuickItem& from, const QString& text) {
        if (from.property("text") == text) return true;
        const auto children = from.childItems();
        return std::ranges::any_of(children, [&](QQuickItem* item) { return shows(*item, text); });
    }

    HistoryOnFakes history;
    QuickViewFactory views{history.app.store().imagesDirectory()};
    FakeNativeWindows native;
    FakeScreens screens;
    QuickPanel panel{native, screens};
    MenuBarContentView* view = nullptr;
};

TEST_F(PreviewHostTest, ThereIsNoWindowUntilARowHasAPreview) {
    EXPECT_EQ(window(), nullptr);

    select();

    EXPECT_TRUE(isShown());
    EXPECT_TRUE(shows("Texto copiado"));
}

TEST_F(PreviewHostTest, TakesNoKeyboardAndNoManagerButThePointer) {
    select();

    EXPECT_EQ(window()->type(), Qt::Tool);
    for (const Qt::WindowType flag : {Qt::FramelessWindowHint, Qt::WindowStaysOnTopHint,
                                      Qt::WindowDoesNotAcceptFocus, Qt::X11BypassWindowManagerHint})
        EXPECT_TRUE(window()->flags().testFlag(flag)) << flag;
    EXPECT_FALSE(window()->flags().testFlag(Qt::WindowTransparentForInput));
}

TEST_F(PreviewHostTest, ShowsTheKindThatTheRowHas) {
    select();
    select();
    EXPECT_TRUE(shows("Copiado"));
    EXPECT_TRUE(shows("há 2 horas"));

    view->showSection(1);
    ASSERT_TRUE(waitUntil([this] { return list() && list()->property("count") == 1; }));
    select();
    EXPECT_TRUE(waitUntil([this] { return isShown() && shows("Mensagem salva"); }));
}

TEST_F(PreviewHostTest, StandsBesideThePanelAndFollowsIt) {
    select();
    EXPECT_EQ(window()->x(), panel.frameGeometry().right() + 1);
    const int before = window()->y();

    panel.setPosition(40, 90);

    EXPECT_TRUE(waitUntil([this] { return window()->x() == panel.frameGeometry().right() + 1; }));
    EXPECT_TRUE(waitUntil([&] { return window()->y() == before - 30; }));
}

TEST_F(PreviewHostTest, FollowsItsRowWhenTheListScrolls) {
    select();
    const int before = window()->y();

    list()->setProperty("contentY", list()->property("contentY").toDouble() + 20);

    EXPECT_TRUE(waitUntil([&] { return window()->y() == before - 20; }));
}

TEST_F(PreviewHostTest, HidesAtOnceWhenItsRowHasNone) {
    select();

    view->moveCurrentSelection(1);

    EXPECT_FALSE(isShown());
}

TEST_F(PreviewHostTest, ThereIsOneAtATimeAndTheOtherRowIsToldThatItsPreviewIsGone) {
    select();
    QuickPreview* const before = window();

    hover(row(1));

    EXPECT_EQ(windows(), QList<QuickPreview*>{before});
    EXPECT_TRUE(shows("Copiado"));
    EXPECT_FALSE(row(0)->isShowingPreview());
    EXPECT_TRUE(row(1)->isShowingPreview());
}

TEST_F(PreviewHostTest, StaysWhileThePointerIsOverIt) {
    hover(row(0));
    row(0)->handleRowHover(false);
    history.fake.time.advance(190ms);
    enter(window());
    history.fake.time.advance(10s);
    EXPECT_TRUE(isShown());

    leave(window());
    history.fake.time.advance(190ms);
    EXPECT_TRUE(isShown());
    history.fake.time.advance(10ms);
    EXPECT_FALSE(isShown());
}

TEST_F(PreviewHostTest, StaysAwayWhileSomethingLiesOverTheRows) {
    select();

    view->createSnippet();
    EXPECT_FALSE(isShown());
    EXPECT_TRUE(row(0)->isShowingPreview());

    view->snippetEditor()->cancel();
    EXPECT_TRUE(isShown());
}

TEST_F(PreviewHostTest, CoveredItNoLongerHasThePointer) {
    hover(row(0));
    row(0)->handleRowHover(false);
    enter(window());

    view->createSnippet();
    history.fake.time.advance(200ms);

    EXPECT_FALSE(row(0)->isShowingPreview());
}

TEST_F(PreviewHostTest, HiddenByTheWindowSystemItIsNoLongerItsRows) {
    select();

    window()->hide();

    EXPECT_FALSE(row(0)->isShowingPreview());
}

TEST_F(PreviewHostTest, HidesAtOnceWithThePanel) {
    select();

    panel.orderOut();

    EXPECT_FALSE(isShown());
    EXPECT_FALSE(row(0)->isShowingPreview());
}

TEST_F(PreviewHostTest, NothingStaysOfItWhenThePanelDropsItsContent) {
    select();
    panel.orderOut();

    panel.dropContent();

    EXPECT_EQ(window(), nullptr);
}

TEST_F(PreviewHostTest, HidesWhenThePanelShowsSomethingElse) {
    select();

    setContent();

    EXPECT_FALSE(isShown());
}

TEST_F(PreviewHostTest, ADeletedRowTakesItsPreviewAlong) {
    select();

    history.app.store().clearNonFavorites();

    EXPECT_TRUE(waitUntil([this] { return !isShown(); }));
}

TEST_F(PreviewHostTest, IsCutAroundItsOutlineOnlyWhereNothingIsTranslucent) {
    native.setComposited(false);
    select();
    EXPECT_FALSE(window()->mask().contains(QPoint(3, 3)));
    EXPECT_TRUE(window()->mask().contains(QPoint(20, 20)));
    EXPECT_EQ(window()->mask().boundingRect(), QRect({}, window()->size()).adjusted(3, 3, -3, -3));

    native.setComposited(true);
    select();
    EXPECT_TRUE(window()->mask().isEmpty());
}

}  // namespace
}  // namespace nettlecap
