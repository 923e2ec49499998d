#include "platform/linux/x11/X11Screens.h"
#include "platform/linux/x11/X11Session.h"
#include "platform/linux/x11/X11Windows.h"
#include "ui/ContentPorts.h"
#include "ui/HistoryOnFakes.h"
#include "ui/SearchPanelController.h"
#include "ui/qml/QuickPanel.h"
#include "ui/qml/QuickPanels.h"
#include "ui/qml/QuickViewFactory.h"

#include <QGuiApplication>
#include <QProcess>
#include <QScreen>

namespace nettlecap::test {
namespace {

using namespace std::chrono_literals;

constexpr xcb_keycode_t escape = 9;

/// The panel and its previews on a desktop of 1280 x 800 among other programs.
class QuickPanelDesktopTest : public X11SessionTest {
protected:
    QuickPanelDesktopTest() {
        history.add(std::string(500, 'x'), 1h);
        history.add("dois", 2h);
        user.moveTo(300, 780);
    }
    ~QuickPanelDesktopTest() override {
        if (QGuiApplication::screens().size() > 1) {
            run({"--delmonitor", "B"});
            run({"--delmonitor", "A"});
            EXPECT_TRUE(waitFor([] { return QGuiApplication::screens().size() == 1; }));
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static void SetUpTestSuite() { QQuickWindow::setGraphicsApi(QSGRendererInterface::Software); }

    static void run(const QStringList& arguments) { EXPECT_EQ(QProcess::execute("xrandr", arguments), 0); }
    void splitMonitors() {
        run({"--setmonitor", "A", "560/160x800/200+0+0", "screen"});
        run({"--setmonitor", "B", "720/160x700/100+560+0", "none"});
        ASSERT_TRUE(waitFor([] { return QGuiApplication::screens().size() == 2; }));
    }
    void show(ContentKind content = ContentKind::history) {
        // Hidden, it is active until it has heard that it lost the keyboard.
        ASSERT_TRUE(waitFor([] { return !panel() || panel()->isVisible() || !panel()->isActive(); }));
        controller.show(content, history.app);
        ASSERT_TRUE(waitFor([this] { return panel() && panel()->isExposed() && hasKeyboard(); }));
        user.waitForManager();
    }
    /// The preview of the row that the keyboard selects next.
    void showPreview() {
        view()->moveCurrentSelection(1);
        history.fake.time.advance(150ms);
        ASSERT_TRUE(waitFor([] { return preview() && preview()->isExposed(); }));
    }
    template <class Window>
    static Window* find() {
        for (QWindow* window : QGuiApplication::topLevelWindows())
            if (auto* found = qobject_cast<Window*>(window)) return found;
        return nullptr;
    }
    static QuickPanel* panel() { return find<QuickPanel>(); }
    static QuickPreview* preview() { return find<QuickPreview>(); }
    static MenuBarContentView* view() {
        const auto* content = panel()->contentItem()->childItems().constFirst();
        return content->property("view").value<MenuBarContentView*>();
    }
    bool hasKeyboard() const { return panel()->isActive() && user.active() == panel()->winId(); }
    bool isPreviewShown() const { return preview() && preview()->isVisible(); }
    void moveInto(const QRect& place) {
        user.moveTo(static_cast<std::int16_t>(place.center().x()),
                    static_cast<std::int16_t>(place.center().y()));
    }

    X11Windows windows{*session.connection, *session.inquiry};
    X11Screens screens{*session.inquiry};
    HistoryOnFakes history;
    QuickViewFactory views{history.app.store().imagesDirectory()};
    QuickPanels panels{windows, screens};
    SearchPanelController controller{
        {.ports = contentPorts(history.fake), .panels = panels, .screens = screens, .views = views}, [] {}};
};

TEST_F(QuickPanelDesktopTest, OpensInTheMiddleOfTheScreenUnderThePointer) {
    splitMonitors();
    for (const auto& [pointer, middle] :
         {std::pair(900, QPoint(920, 350)), std::pair(100, QPoint(280, 400))}) {
        user.moveTo(static_cast<std::int16_t>(pointer), 5);
        show();
        EXPECT_TRUE(waitFor([at = middle] {
            return (panel()->geometry().center() - at).manhattanLength() <= 2;
        })) << panel()->x()
            << ' ' << panel()->y();
        controller.hide();
    }
}

TEST_F(QuickPanelDesktopTest, TheSettingsKeepThePlaceAndTheKeyboard) {
    show();
    panel()->setPosition(60, 90);
    ASSERT_TRUE(waitFor([] { return panel()->position() == QPoint(60, 90); }));
    user.waitForManager();

    show(ContentKind::settings);

    EXPECT_EQ(panel()->position(), QPoint(60, 90));
    EXPECT_EQ(panel()->title(), "Ajustes do Nettlecap");
    EXPECT_TRUE(hasKeyboard());
}

TEST_F(QuickPanelDesktopTest, EscapeHidesEitherContentAndTheNextOneStartsAfresh) {
    for (const ContentKind content : {ContentKind::history, ContentKind::settings}) {
        show(content);
        if (content == ContentKind::history) view()->searchField()->setProperty("text", "dois");

        user.type({escape});

        EXPECT_TRUE(waitFor([] { return !panel()->isVisible(); }));
        history.fake.time.advance(0s);
    }
    show();
    EXPECT_EQ(view()->searchField()->property("text"), "");
    EXPECT_TRUE(view()->isHistory());
}

TEST_F(QuickPanelDesktopTest, IsOnEveryDesktopAtEachShow) {
    for (int time = 0; time < 2; ++time) {
        show();
        const auto question =
            session.inquiry->askProperty(static_cast<xcb_window_t>(panel()->winId()), "_NET_WM_DESKTOP");
        EXPECT_EQ(session.inquiry->propertyNumber(question), 0xFFFFFFFF);
        controller.hide();
        ASSERT_TRUE(waitFor([this] { return user.isDesktopEmpty(); }));
        user.waitForManager();
    }
}

TEST_F(QuickPanelDesktopTest, TheButtonOfTheSettingsLeadsBackToTheHistory) {
    show(ContentKind::settings);
    const QPoint corner = panel()->position();

    // At the leading edge of the header.
    user.moveTo(static_cast<std::int16_t>(corner.x() + 24), static_cast<std::int16_t>(corner.y() + 17));
    user.click(1);

    EXPECT_TRUE(waitFor([] { return panel()->title() == "Nettlecap"; }));
    EXPECT_NE(view(), nullptr);
    EXPECT_EQ(panel()->position(), corner);
}

TEST_F(QuickPanelDesktopTest, APreviewIsBesideThePanelAndInsideTheScreen) {
    show();
    panel()->setPosition(60, 90);
    user.waitForManager();
    showPreview();
    EXPECT_TRUE(waitFor([] { return preview()->x() == panel()->frameGeometry().right() + 1; }));
    EXPECT_TRUE(QRect(0, 0, 1280, 800).contains(preview()->geometry()));

    panel()->setPosition(800, 90);
    EXPECT_TRUE(waitFor([] { return preview()->geometry().right() + 1 == panel()->frameGeometry().left(); }));
    EXPECT_TRUE(QRect(0, 0, 1280, 800).contains(preview()->geometry()));
}

TEST_F(QuickPanelDesktopTest, APreviewStaysOnThePanelsScreen) {
    splitMonitors();
    user.moveTo(100, 5);
    show();
    showPreview();

    EXPECT_TRUE(QRect(0, 0, 560, 800).contains(preview()->geometry()))
        << preview()->x() << ' ' << preview()->width();
}

TEST_F(QuickPanelDesktopTest, APreviewNeverHasTheKeyboard) {
    show();
    showPreview();
    user.waitForManager();
    EXPECT_TRUE(hasKeyboard());

    moveInto(preview()->geometry());
    user.click(1);
    user.waitForManager();
    EXPECT_TRUE(hasKeyboard());

    user.type({escape});
    EXPECT_TRUE(waitFor([this] { return !panel()->isVisible() && !isPreviewShown(); }));
}

TEST_F(QuickPanelDesktopTest, ThePointerTravelsFromTheRowIntoThePreviewAndOut) {
    show();
    auto* const row = qobject_cast<ClipboardEntryRow*>(view()->historyRows()->row(1));
    row->handleRowHover(true);
    history.fake.time.advance(300ms);
    ASSERT_TRUE(waitFor([] { return preview() && preview()->isExposed(); }));

    bool isOver = false;
    QObject::connect(preview(), &QuickPreview::hoverChanged, [&](bool inside) { isOver = inside; });

    row->handleRowHover(false);
    moveInto(preview()->geometry());
    ASSERT_TRUE(waitFor([&] { return isOver; }));
    history.fake.time.advance(10s);
    EXPECT_TRUE(isPreviewShown());

    user.moveTo(300, 780);
    ASSERT_TRUE(waitFor([&] { return !isOver; }));
    history.fake.time.advance(200ms);
    EXPECT_FALSE(isPreviewShown());
}

TEST_F(QuickPanelDesktopTest, APreviewIsAboveThePanelAfterAClickOnIt) {
    splitMonitors();  // where it has to cover the panel
    user.moveTo(100, 5);
    show();
    showPreview();
    ASSERT_TRUE(panel()->geometry().intersects(preview()->geometry()));

    const QPoint corner = panel()->frameGeometry().topLeft();
    user.moveTo(static_cast<std::int16_t>(corner.x() + 200), static_cast<std::int16_t>(corner.y() + 5));
    user.click(1);
    user.waitForManager();

    const auto question = xcb_query_tree(user.xcb(), static_cast<xcb_window_t>(session.inquiry->root()));
    std::unique_ptr<xcb_query_tree_reply_t, void (*)(void*)> tree(
        xcb_query_tree_reply(user.xcb(), question, nullptr), std::free);
    const xcb_window_t* const windowsUpwards = xcb_query_tree_children(tree.get());
    EXPECT_EQ(windowsUpwards[xcb_query_tree_children_length(tree.get()) - 1], preview()->winId());
}

TEST_F(QuickPanelDesktopTest, WithACompositorAPreviewHasSoftCornersAndWithoutOneNone) {
    show();
    showPreview();
    EXPECT_FALSE(preview()->mask().contains(QPoint(3, 3)));

    QProcess compositor;
    compositor.start("picom", {"--backend", "xrender", "--config", "/dev/null"});
    ASSERT_TRUE(waitFor([this] { return windows.isComposited(); }));
    showPreview();
    EXPECT_TRUE(preview()->mask().isEmpty());
    EXPECT_TRUE(hasKeyboard());

    compositor.terminate();
    EXPECT_TRUE(waitFor([&] { return compositor.state() == QProcess::NotRunning; }));
}

}  // namespace
}  // namespace nettlecap::test
