#include "ui/StatusItemMenu.h"
#include "ui/PrintQt.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

/// A menu of three groups; what was chosen in it, or "left".
class StatusItemMenuTest : public testing::Test {
protected:
    void press(int key, Qt::KeyboardModifiers modifiers = {}) { view.handleKey(key, modifiers); }

    Menu menu{.title = "Nettlecap",
              .items = {{.title = "Buscar", .isEnabled = false},
                        {},
                        {.title = "Settings", .keyEquivalent = ","},
                        {},
                        {.title = "Quit", .keyEquivalent = "q"}},
              .willOpen = {},
              .didClose = {}};
    std::string closed;
    StatusItemMenu view{menu, [this](std::optional<std::size_t> chosen) {
                            closed += chosen ? std::to_string(*chosen) : "left";
                        }};
};

TEST_F(StatusItemMenuTest, ShowsItsLinesWithTheirKeys) {
    const QVariantList lines = view.lines();

    EXPECT_EQ(view.title(), "Nettlecap");
    ASSERT_EQ(lines.size(), 5);
    EXPECT_EQ(lines[0].value<StatusItemMenuLine>(),
              (StatusItemMenuLine{.label = "Buscar", .isEnabled = false}));
    EXPECT_EQ(lines[1].value<StatusItemMenuLine>(), (StatusItemMenuLine{.isDivider = true}));
    EXPECT_EQ(lines[2].value<StatusItemMenuLine>(),
              (StatusItemMenuLine{.label = "Settings", .keys = "Ctrl+,"}));
    EXPECT_EQ(lines[4].value<StatusItemMenuLine>(), (StatusItemMenuLine{.label = "Quit", .keys = "Ctrl+Q"}));
}

TEST_F(StatusItemMenuTest, TheKeyboardWalksThroughWhatCanBeChosen) {
    EXPECT_EQ(view.current(), -1);
    for (const auto& [key, line] : {std::pair(Qt::Key_Down, 2),
                                    {Qt::Key_Down, 4},
                                    {Qt::Key_Down, 2},
                                    {Qt::Key_Up, 4},
                                    {Qt::Key_Up, 2},
                                    {Qt::Key_Tab, 4},
                                    {Qt::Key_Backtab, 2},
                                    {Qt::Key_End, 4},
                                    {Qt::Key_Home, 2}}) {
        press(key);
        EXPECT_EQ(view.current(), line) << key;
    }
}

TEST_F(StatusItemMenuTest, TheFirstStepUpGoesToTheLastLine) {
    press(Qt::Key_Up);

    EXPECT_EQ(view.current(), 4);
}

TEST_F(StatusItemMenuTest, WhereNothingCanBeChosenTheKeyboardGoesNowhere) {
    for (MenuItem& item : menu.items) item.isEnabled = false;
    StatusItemMenu locked(menu, nullptr);

    for (const auto key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Home, Qt::Key_Return}) locked.handleKey(key, {});

    EXPECT_EQ(locked.current(), -1);
}

TEST_F(StatusItemMenuTest, ReturnEnterAndSpaceChooseTheCurrentLine) {
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        std::optional<std::size_t> chosen;
        StatusItemMenu open(menu, [&](std::optional<std::size_t> line) { chosen = line; });
        open.handleKey(key, {});
        EXPECT_EQ(chosen, std::nullopt);

        open.handleKey(Qt::Key_Up, {});
        open.handleKey(key, key == Qt::Key_Enter ? Qt::KeypadModifier : Qt::NoModifier);

        EXPECT_EQ(chosen, 4U) << key;
    }
}

TEST_F(StatusItemMenuTest, EscapeLeavesIt) {
    press(Qt::Key_Down);
    press(Qt::Key_Escape);

    EXPECT_EQ(closed, "left");
}

TEST_F(StatusItemMenuTest, ControlAndALinesKeyChooseIt) {
    press(Qt::Key_Comma, Qt::ControlModifier);

    EXPECT_EQ(closed, "2");
}

TEST_F(StatusItemMenuTest, OtherModifiersChooseNothing) {
    press(Qt::Key_Q);
    press(Qt::Key_Q, Qt::ControlModifier | Qt::ShiftModifier);
    press(Qt::Key_Q, Qt::AltModifier);
    press(Qt::Key_W, Qt::ControlModifier);
    press(Qt::Key_Control, Qt::ControlModifier);
    press(0, Qt::ControlModifier);
    EXPECT_EQ(closed, "");

    press(Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(closed, "4");
}

TEST_F(StatusItemMenuTest, ThePointerMakesALineTheCurrentOneWhereItCanBeChosen) {
    view.pointAt(2);
    EXPECT_EQ(view.current(), 2);

    for (const int line : {0, 1, -1, 5}) {
        view.pointAt(2);
        view.pointAt(line);
        EXPECT_EQ(view.current(), -1) << line;
    }
}

TEST_F(StatusItemMenuTest, NothingElseCanBeChosen) {
    for (const int line : {0, 1, 3, -1, 5}) view.choose(line);
    EXPECT_EQ(closed, "");

    view.choose(4);
    EXPECT_EQ(closed, "4");
}

TEST_F(StatusItemMenuTest, AsksToBeClosedOnce) {
    view.choose(2);
    view.choose(4);
    view.leave();

    EXPECT_EQ(closed, "2");
}

TEST_F(StatusItemMenuTest, TellsWhereTheCurrentLineIsAnotherOne) {
    int changes = 0;
    QObject::connect(&view, &StatusItemMenu::currentChanged, [&] { ++changes; });

    view.pointAt(2);
    view.pointAt(2);
    press(Qt::Key_Home);
    EXPECT_EQ(changes, 1);

    press(Qt::Key_End);
    EXPECT_EQ(changes, 2);
}

}  // namespace
}  // namespace nettlecap
