#include "app/AppDelegate.h"
#include "app/StatusBarFixture.h"

namespace nettlecap {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A launch of the program, moment by moment.
class AppDelegateTest : public AppModelFixture {
protected:
    AppDelegate::Collaborators collaborators() {
        return {.app = *model,
                .application = system.application,
                .scheduler = system.time,
                .statusItem = system.statusItem,
                .popover = system.popover,
                .content = content};
    }
    void launch() {
        delegate = std::make_unique<AppDelegate>(collaborators());
        delegate->applicationWillFinishLaunching();
        delegate->applicationDidFinishLaunching();
    }
    void raise(OpenEvent event) {
        system.application.raise(event);
        system.time.advance(0s);
    }
    void openPopover() {
        system.statusItem.click(StatusItemClick::left);
        ASSERT_TRUE(system.popover.isShown());
    }
    /// How often the history was shown.
    std::ptrdiff_t shows() const {
        return std::ranges::count(windows.happenings, std::string("history shown"));
    }

    FakeStatusBarContent content;
    std::unique_ptr<AppDelegate> delegate;
};

// The order of the start.

class AppDelegateOrderTest : public AppDelegateTest {
protected:
    /// Writes down what it is told, and whether the model has started by then.
    class WatchedApplication final : public Application {
    public:
        explicit WatchedApplication(AppDelegateOrderTest& test) : test_(test) {}

        void beep() override {}
        void setAccessory() override { test_.happen("accessory"); }
        void setIcon(std::string_view name, std::string_view fallbackSymbol) override {
            test_.happen("icon " + std::string(name) + " or " + std::string(fallbackSymbol));
        }
        void terminate() override {}
        Subscription onOpenEvent(std::function<void(OpenEvent)>) override {
            test_.happen("listens");
            return Subscription([this] { test_.happen("listens no more"); });
        }

    private:
        AppDelegateOrderTest& test_;
    };

    class WatchedStatusItem final : public StatusItem {
    public:
        explicit WatchedStatusItem(AppDelegateOrderTest& test) : test_(test) {}

        void setImage(const TemplateDrawing&) override { test_.happen("status item"); }
        void setToolTip(std::string_view) override {}
        void setMenu(Menu) override {}
        void popUpMenu() override {}
        Subscription onClick(std::function<void(StatusItemClick)>) override { return {}; }

    private:
        AppDelegateOrderTest& test_;
    };

    void happen(const std::string& what) {
        if (services.synchronizations > 0 && !std::exchange(isStarted, true))
            order.emplace_back("model started");
        order.push_back(what);
    }

    bool isStarted = false;
    std::vector<std::string> order;
    WatchedApplication application{*this};
    WatchedStatusItem statusItem{*this};
};

TEST_F(AppDelegateOrderTest, StartsTheModelAsAnAccessoryWithItsIconAndBeforeTheStatusItem) {
    AppDelegate::Collaborators with{.app = *model,
                                    .application = application,
                                    .scheduler = system.time,
                                    .statusItem = statusItem,
                                    .popover = system.popover,
                                    .content = content};
    AppDelegate watched(with);

    watched.applicationWillFinishLaunching();
    EXPECT_THAT(order, ElementsAre("listens"));

    watched.applicationDidFinishLaunching();
    EXPECT_THAT(order, ElementsAre("listens", "accessory", "icon Nettlecap or clipboard.fill",
                                   "model started", "status item"));

    order.clear();
    watched.applicationWillTerminate();
    EXPECT_THAT(order, ElementsAre("listens no more"));
}

TEST_F(AppDelegateTest, DoesNothingBeforeTheLaunch) {
    delegate = std::make_unique<AppDelegate>(collaborators());
    delegate->applicationWillFinishLaunching();
    wait();

    EXPECT_FALSE(system.application.isAccessory());
    EXPECT_EQ(services.synchronizations, 0);
    EXPECT_THAT(windows.happenings, IsEmpty());
}

TEST_F(AppDelegateTest, IsAnAccessoryWithTheProgramsIcon) {
    launch();

    EXPECT_TRUE(system.application.isAccessory());
    EXPECT_EQ(system.application.icon(),
              (FakeApplication::Icon{.name = "Nettlecap", .fallbackSymbol = "clipboard.fill"}));
}

TEST_F(AppDelegateTest, IsThereForTheUsersClicksAndShortcuts) {
    launch();

    openPopover();
    EXPECT_TRUE(system.hotKeys.hasHandler());
    EXPECT_EQ(system.statusItem.toolTip(), "Nettlecap");
}

// The history at the launch.

TEST_F(AppDelegateTest, ShowsTheHistoryAfterThreeQuartersOfASecondWhereNobodyAsksForIt) {
    launch();

    system.time.advance(0.749s);
    EXPECT_EQ(shows(), 0);

    system.time.advance(0.001s);
    EXPECT_EQ(shows(), 1);
    EXPECT_EQ(windows.panel, ContentKind::history);
}

TEST_F(AppDelegateTest, ClosesThePopoverBeforeItShowsTheHistoryByItself) {
    launch();
    openPopover();

    wait();

    EXPECT_FALSE(system.popover.isShown());
    EXPECT_THAT(windows.happenings, ElementsAre("popover closed", "history shown"));
}

TEST_F(AppDelegateTest, ShowsTheHistoryWhenItIsOpenedAndNotASecondTime) {
    launch();

    raise(OpenEvent::open);
    EXPECT_EQ(shows(), 1);

    wait();
    EXPECT_EQ(shows(), 1);
}

TEST_F(AppDelegateTest, HearsOfBeingOpenedBeforeItHasLaunched) {
    delegate = std::make_unique<AppDelegate>(collaborators());
    delegate->applicationWillFinishLaunching();
    system.application.raise(OpenEvent::open);
    delegate->applicationDidFinishLaunching();

    wait();

    EXPECT_EQ(shows(), 1);
}

TEST_F(AppDelegateTest, BeingReopenedIsNoReasonNotToShowTheHistoryAtTheLaunch) {
    launch();

    raise(OpenEvent::reopen);
    EXPECT_EQ(shows(), 1);
    wait();
    EXPECT_EQ(shows(), 2);
}

TEST_F(AppDelegateTest, BeingReopenedAfterwardsDoesNotUndoThatItWasOpened) {
    launch();

    raise(OpenEvent::open);
    raise(OpenEvent::reopen);
    wait();

    EXPECT_EQ(shows(), 2);
}

TEST_F(AppDelegateTest, ShowsNoHistoryByItselfOnceItIsGone) {
    launch();

    delegate.reset();
    wait();

    EXPECT_EQ(shows(), 0);
}

// Being opened and reopened.

TEST_F(AppDelegateTest, ClosesThePopoverAndShowsTheHistoryAtEachEventSoonAfterIt) {
    launch();
    wait();
    for (const OpenEvent event : {OpenEvent::open, OpenEvent::reopen, OpenEvent::open}) {
        windows.happenings.clear();
        openPopover();

        system.application.raise(event);
        EXPECT_TRUE(system.popover.isShown());
        EXPECT_THAT(windows.happenings, IsEmpty());

        system.time.advance(0s);
        EXPECT_FALSE(system.popover.isShown());
        EXPECT_THAT(windows.happenings, ElementsAre("popover closed", "history shown"));
    }
}

TEST_F(AppDelegateTest, ShowsTheHistoryInPlaceOfTheSettings) {
    launch();
    wait();
    model->openSettings();

    raise(OpenEvent::reopen);

    EXPECT_EQ(windows.panel, ContentKind::history);
}

TEST_F(AppDelegateTest, ShowsTheHistoryAtOnceWhenTheSystemWantsAWindow) {
    launch();
    openPopover();

    delegate->applicationShouldHandleReopen();

    EXPECT_FALSE(system.popover.isShown());
    EXPECT_THAT(windows.happenings, ElementsAre("popover closed", "history shown"));
}

// The end.

TEST_F(AppDelegateTest, HearsOfNothingOnceItTerminates) {
    launch();
    wait();

    delegate->applicationWillTerminate();
    raise(OpenEvent::open);
    raise(OpenEvent::reopen);

    EXPECT_EQ(shows(), 1);
}

TEST_F(AppDelegateTest, SavesOnItsWayOutWhatCouldNotBeSavedBefore) {
    launch();
    system.files.fail(FileOperation::write, "No space left on device");
    copyOutside("um");
    system.files.stopFailing(FileOperation::write);

    delegate->applicationWillTerminate();

    EXPECT_NE(system.files.contents(folder / "history.json").value_or("").find("um"), std::string::npos);
}

TEST_F(AppDelegateTest, ShowsNothingForAnEventThatItDidNotOutlive) {
    launch();
    wait();

    system.application.raise(OpenEvent::reopen);
    delegate.reset();
    system.time.advance(0s);

    EXPECT_EQ(shows(), 1);
}

}  // namespace
}  // namespace nettlecap
