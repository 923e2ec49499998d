#include "ui/SearchPanelController.h"
#include "platform/fake/FakeWindows.h"
#include "ui/ContentPorts.h"
#include "ui/HistoryOnFakes.h"
#include "ui/PrintQt.h"
#include "ui/Waiting.h"
#include "ui/qml/QuickPanel.h"
#include "ui/qml/QuickPanels.h"
#include "ui/qml/QuickViewFactory.h"

#include <QGuiApplication>
#include <QPointer>
#include <QTest>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

class SearchPanelControllerTest : public testing::Test {
protected:
    ~SearchPanelControllerTest() override {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void show() {
        controller.show(ContentKind::history, history.app);
        ASSERT_TRUE(waitUntilActive(*window()));
    }
    QuickPanel* window() const {
        for (QWindow* candidate : QGuiApplication::topLevelWindows())
            if (auto* panel = qobject_cast<QuickPanel*>(candidate)) return panel;
        return nullptr;
    }
    bool hasContent() const { return !window()->contentItem()->childItems().isEmpty(); }

    HistoryOnFakes history;
    QuickViewFactory views{history.app.store().imagesDirectory()};
    int hidings = 0;
    FakeNativeWindows native;
    FakeScreens screens;
    QuickPanels panels{native, screens};
    SearchPanelController controller{
        {.ports = contentPorts(history.fake), .panels = panels, .screens = screens, .views = views},
        [this] { ++hidings; }};
};

TEST_F(SearchPanelControllerTest, ShowsAWindowOfFixedSizeNamedAfterTheProgram) {
    show();

    EXPECT_TRUE(window()->isVisible());
    EXPECT_EQ(window()->title(), "Nettlecap");
    EXPECT_EQ(window()->minimumSize(), QSize(430, 560));
    EXPECT_EQ(window()->maximumSize(), QSize(430, 560));
}

TEST_F(SearchPanelControllerTest, EscapeHidesThePanelAndDropsItsContentAfterwards) {
    show();

    QTest::keyClick(window(), Qt::Key_Escape);
    EXPECT_FALSE(window()->isVisible());
    EXPECT_TRUE(hasContent());

    history.fake.time.advance(0s);
    EXPECT_FALSE(hasContent());
    EXPECT_EQ(hidings, 1);
}

TEST_F(SearchPanelControllerTest, HiddenItKeepsNoPictureOfItsContentAndIsAsLargeAsBeforeAtTheNextShow) {
    show();

    controller.hide();
    history.fake.time.advance(0s);
    EXPECT_EQ(window()->size(), QSize(1, 1));

    show();
    EXPECT_EQ(window()->size(), QSize(430, 560));
    EXPECT_EQ(window()->minimumSize(), QSize(430, 560));
}

TEST_F(SearchPanelControllerTest, ItsContentIsOfTheSameTypesAtEachShow) {
    const auto typeOfContent = [this] {
        return std::string(window()->contentItem()->childItems().constFirst()->metaObject()->className());
    };
    show();
    const std::string before = typeOfContent();

    controller.hide();
    history.fake.time.advance(0s);
    show();

    EXPECT_EQ(typeOfContent(), before);
}

TEST_F(SearchPanelControllerTest, ClosingHidesAndTheNextShowStartsAfresh) {
    history.add("um");
    show();
    QTest::keyClick(window(), Qt::Key_Down);
    QuickPanel* const panel = window();

    panel->close();
    history.fake.time.advance(0s);
    EXPECT_FALSE(panel->isVisible());

    show();
    EXPECT_EQ(window(), panel);
    const auto* content = panel->contentItem()->childItems().constFirst();
    EXPECT_EQ(content->property("view").value<MenuBarContentView*>()->selectedHistoryRow(), -1);
}

TEST_F(SearchPanelControllerTest, ShowingAShownPanelStartsAfreshWhereItIs) {
    show();
    const QPointer<QQuickItem> before = window()->contentItem()->childItems().constFirst();
    window()->setPosition(17, 23);

    show();

    EXPECT_NE(window()->contentItem()->childItems().constFirst(), before);
    EXPECT_EQ(window()->contentItem()->childItems().size(), 1);
    EXPECT_EQ(window()->position(), QPoint(17, 23));
}

TEST_F(SearchPanelControllerTest, ReplacedContentLivesUntilTheNextTurn) {
    show();
    const QPointer<QQuickItem> before = window()->contentItem()->childItems().constFirst();
    // As a button of the content does.
    QMetaObject::invokeMethod(before.data(), [this] { controller.show(ContentKind::history, history.app); });

    EXPECT_FALSE(before.isNull());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(before.isNull());
}

TEST_F(SearchPanelControllerTest, AsksForTheKeyboardAtEveryShow) {
    show();
    controller.hide();
    show();

    const std::uint64_t id = window()->winId();
    EXPECT_EQ(native.prepared(), (std::vector{id, id}));
    EXPECT_EQ(native.brought(), (std::vector{id, id}));
}

TEST_F(SearchPanelControllerTest, HidingHidesAndIsNothingBeforeTheFirstShow) {
    controller.hide();
    EXPECT_EQ(window(), nullptr);

    show();
    controller.hide();
    EXPECT_FALSE(window()->isVisible());
    history.fake.time.advance(0s);
    EXPECT_FALSE(hasContent());
}

TEST_F(SearchPanelControllerTest, ShownAgainAtOnceItKeepsTheNewContent) {
    show();
    QTest::keyClick(window(), Qt::Key_Escape);

    show();
    history.fake.time.advance(0s);

    EXPECT_TRUE(window()->isVisible());
    EXPECT_TRUE(hasContent());
    EXPECT_EQ(hidings, 0);
}

TEST_F(SearchPanelControllerTest, AHiddenPanelHasNoTimer) {
    const std::size_t before = history.fake.time.waitingTasks();
    show();
    EXPECT_EQ(history.fake.time.waitingTasks(), before + 1);

    QTest::keyClick(window(), Qt::Key_Escape);
    history.fake.time.advance(60s);

    EXPECT_EQ(history.fake.time.waitingTasks(), before);
}

TEST_F(SearchPanelControllerTest, ArrowsAndReturnReachTheHistory) {
    history.add("um", 1h);
    history.add("dois", 2h);
    show();

    QTest::keyClick(window(), Qt::Key_Down);
    QTest::keyClick(window(), Qt::Key_Down);
    QTest::keyClick(window(), Qt::Key_Return);

    EXPECT_EQ(history.fake.pasteboard.string(pasteboardType::text), "dois");
    EXPECT_TRUE(window()->isVisible());
}

}  // namespace
}  // namespace nettlecap
