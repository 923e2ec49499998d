#include "ui/KeyboardSearchField.h"
#include "ui/PrintQt.h"

#include <QSignalSpy>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using Command = KeyboardSearchField::Command;

class KeyboardSearchFieldTest : public testing::Test {
protected:
    bool act(const char* name) {
        log += name;
        return answer;
    }
    bool press(int key, int modifiers = Qt::NoModifier) { return field.handleKey(key, modifiers, false); }

    std::string log;
    bool answer = true;
    KeyboardSearchField field{{.moveDown = [this] { return act("down "); },
                               .moveUp = [this] { return act("up "); },
                               .moveLeft = [this] { act("left "); },
                               .moveRight = [this] { act("right "); },
                               .submit = [this] { return act("submit "); },
                               .deleteSelected = [this] { return act("delete "); }}};
};

TEST_F(KeyboardSearchFieldTest, HandsTheArrowsToTheList) {
    EXPECT_TRUE(press(Qt::Key_Down));
    EXPECT_TRUE(press(Qt::Key_Up));
    EXPECT_TRUE(press(Qt::Key_Left));
    EXPECT_TRUE(press(Qt::Key_Right));

    EXPECT_EQ(log, "down up left right ");
}

TEST_F(KeyboardSearchFieldTest, HandsBothReturnKeysToTheList) {
    EXPECT_TRUE(press(Qt::Key_Return));
    EXPECT_TRUE(press(Qt::Key_Enter, Qt::KeypadModifier));
    EXPECT_TRUE(press(Qt::Key_Return, Qt::ShiftModifier));
    EXPECT_TRUE(press(Qt::Key_Return, Qt::AltModifier));

    EXPECT_EQ(log, "submit submit submit submit ");
}

TEST_F(KeyboardSearchFieldTest, HandsBothDeletingKeysToTheList) {
    EXPECT_TRUE(press(Qt::Key_Backspace));
    EXPECT_TRUE(press(Qt::Key_Backspace, Qt::ShiftModifier));
    EXPECT_TRUE(press(Qt::Key_Delete));
    EXPECT_TRUE(press(Qt::Key_Delete, Qt::KeypadModifier));

    EXPECT_EQ(log, "delete delete delete delete ");
}

TEST_F(KeyboardSearchFieldTest, ActsItselfOnWhatTheListDoesNotHandle) {
    answer = false;

    for (const int key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Delete})
        EXPECT_FALSE(press(key)) << key;

    EXPECT_EQ(log, "down up submit delete delete ");
}

TEST_F(KeyboardSearchFieldTest, NeverMovesItsCaretWithPlainArrows) {
    answer = false;

    EXPECT_TRUE(press(Qt::Key_Left));
    EXPECT_TRUE(press(Qt::Key_Right));
}

TEST_F(KeyboardSearchFieldTest, KeepsEveryOtherKey) {
    for (const int key : {Qt::Key_Escape, Qt::Key_Tab, Qt::Key_Home, Qt::Key_End, Qt::Key_PageDown,
                          Qt::Key_PageUp, Qt::Key_A, Qt::Key_Space})
        EXPECT_FALSE(press(key)) << key;

    EXPECT_EQ(log, "");
}

TEST_F(KeyboardSearchFieldTest, KeepsKeysThatMeanSomethingElseWithAModifier) {
    EXPECT_FALSE(press(Qt::Key_Left, Qt::ShiftModifier));
    EXPECT_FALSE(press(Qt::Key_Right, Qt::ControlModifier));
    EXPECT_FALSE(press(Qt::Key_Up, Qt::ShiftModifier));
    EXPECT_FALSE(press(Qt::Key_Backspace, Qt::ControlModifier));
    EXPECT_FALSE(press(Qt::Key_Delete, Qt::ShiftModifier));
    EXPECT_FALSE(press(Qt::Key_Return, Qt::ControlModifier));

    EXPECT_EQ(log, "");
}

TEST_F(KeyboardSearchFieldTest, KeepsEveryKeyWhileAnInputMethodComposes) {
    for (const int key : {Qt::Key_Down, Qt::Key_Up, Qt::Key_Left, Qt::Key_Right, Qt::Key_Return,
                          Qt::Key_Backspace, Qt::Key_Delete})
        EXPECT_FALSE(field.handleKey(key, Qt::NoModifier, true)) << key;

    EXPECT_EQ(log, "");
}

TEST_F(KeyboardSearchFieldTest, KnowsBothNamesOfANewLine) {
    EXPECT_EQ(KeyboardSearchField::commandOf(Qt::Key_Return, Qt::NoModifier), Command::insertNewline);
    EXPECT_EQ(KeyboardSearchField::commandOf(Qt::Key_Return, Qt::AltModifier),
              Command::insertNewlineIgnoringFieldEditor);
}

TEST_F(KeyboardSearchFieldTest, TellsOfItsTextOnlyWhenItDiffers) {
    const QSignalSpy changes(&field, &KeyboardSearchField::textChanged);

    field.setText("ca");
    field.setText("ca");
    field.setText("");

    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(field.text(), "");
}

}  // namespace
}  // namespace nettlecap
