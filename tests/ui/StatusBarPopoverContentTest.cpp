#include "ui/StatusBarPopoverContent.h"
#include "app/StatusBarController.h"
#include "ui/ContentPorts.h"
#include "ui/FakeViews.h"
#include "ui/HistoryOnFakes.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

/// A status item whose popover shows the history "um", "dois" and one saved message.
class StatusBarPopoverContentTest : public testing::Test {
protected:
    StatusBarPopoverContentTest() {
        history.add("um", 1h);
        history.add("dois", 2h);
        history.app.store().addSnippet("Saudação", "Olá");
    }

    static MenuBarContentView::Ports ports(FakePlatform& fake) {
        MenuBarContentView::Ports ports = contentPorts(fake);
        ports.quit = [&fake] { fake.application.terminate(); };
        return ports;
    }
    void click() { history.fake.statusItem.click(StatusItemClick::left); }
    bool isShown() const { return history.fake.popover.isShown(); }
    MenuBarContentView& view() const {
        return *dynamic_cast<HistoryContent&>(*history.fake.popover.content()).view;
    }
    bool press(int key) const { return view().searchField()->handleKey(key, Qt::NoModifier, false); }

    HistoryOnFakes history;
    FakeViews views;
    StatusBarPopoverContent content{ports(history.fake), views};
    StatusBarController controller{{.app = history.app,
                                    .application = history.fake.application,
                                    .statusItem = history.fake.statusItem,
                                    .popover = history.fake.popover,
                                    .content = content}};
};

TEST_F(StatusBarPopoverContentTest, IsTheMainViewOfTheModel) {
    click();

    EXPECT_TRUE(view().isHistory());
    EXPECT_EQ(view().filteredEntries().size(), 2U);
}

TEST_F(StatusBarPopoverContentTest, KeepsTheQueryTheSectionAndTheSelectionWhileItIsClosed) {
    click();
    press(Qt::Key_Down);
    press(Qt::Key_Down);
    view().searchField()->setText("o");
    view().showSection(1);
    const MenuBarContentView* const before = &view();

    click();
    click();

    EXPECT_EQ(&view(), before);
    EXPECT_EQ(view().searchField()->text(), "o");
    EXPECT_FALSE(view().isHistory());
    EXPECT_EQ(view().selectedHistoryEntryID(), (*history.app.store().entries())[1]->id);
}

TEST_F(StatusBarPopoverContentTest, ShowsWhatWasCopiedWhileItWasClosed) {
    click();
    click();

    history.add("três");
    click();

    EXPECT_EQ(view().filteredEntries().size(), 3U);
}

TEST_F(StatusBarPopoverContentTest, PastingClosesIt) {
    click();

    EXPECT_TRUE(press(Qt::Key_Return));

    EXPECT_FALSE(isShown());
    EXPECT_EQ(history.fake.pasteboard.string(pasteboardType::text), "um");
    history.fake.time.advance(1s);
    EXPECT_FALSE(history.fake.keyboard.typed().empty());
}

TEST_F(StatusBarPopoverContentTest, TheSettingsOpenInItsPlace) {
    click();

    view().openSettings();

    EXPECT_FALSE(isShown());
    EXPECT_EQ(history.windows.panel, ContentKind::settings);
}

TEST_F(StatusBarPopoverContentTest, EndsTheProgram) {
    click();

    view().quit();

    EXPECT_EQ(history.fake.application.terminations(), 1);
}

}  // namespace
}  // namespace nettlecap
