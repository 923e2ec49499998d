#include "platform/linux/x11/X11KeyTable.h"

#include "platform/linux/x11/DesktopUser.h"

#include <QCoreApplication>
#include <QProcess>
#include <gmock/gmock.h>

namespace nettlecap::test {
namespace {

using testing::ElementsAre;
using Keys = std::vector<int>;

Keys listed(const HeldKeys& held) {
    Keys keys;
    for (std::size_t key = 0; key < held.size(); ++key)
        if (held[key]) keys.push_back(static_cast<int>(key));
    return keys;
}

/// A table of its own for every question, which has just read the keymap.
class X11KeyTableTest : public testing::Test {
protected:
    static std::unique_ptr<X11Connection> connected() {
        auto connection = X11Connection::open();
        EXPECT_TRUE(connection);
        return std::move(*connection);
    }
    static Keys keysOf(KeyCode code, std::uint32_t layout = 0) {
        const auto connection = connected();
        return listed(X11KeyTable(*connection).keysOf(code, layout));
    }
    /// One key each, as most have.
    static Keys keysOf(std::initializer_list<KeyCode> codes, std::uint32_t layout = 0) {
        const auto connection = connected();
        X11KeyTable table(*connection);
        Keys all;
        for (const KeyCode code : codes)
            for (const int key : listed(table.keysOf(code, layout))) all.push_back(key);
        return all;
    }
    static std::optional<std::uint32_t> modifiersFor(ModifierFlags flags) {
        const auto connection = connected();
        return X11KeyTable(*connection).modifiersFor(flags);
    }

    static constexpr std::initializer_list<KeyCode> digits{18, 19, 20, 21, 23, 22, 26, 28, 25, 29};
    static constexpr std::initializer_list<KeyCode> letters{0,  11, 8,  2,  14, 3, 5,  4,  34, 38, 40, 37, 46,
                                                            45, 31, 35, 12, 15, 1, 17, 32, 9,  13, 7,  16, 6};
    DesktopUser user;
};

TEST_F(X11KeyTableTest, FindsEveryKeyOfTheUsKeyboard) {
    EXPECT_THAT(keysOf(digits), ElementsAre(10, 11, 12, 13, 14, 15, 16, 17, 18, 19));
    EXPECT_THAT(keysOf(letters), ElementsAre(38, 56, 54, 40, 26, 41, 42, 43, 31, 44, 45, 46, 58, 57, 32, 33,
                                             24, 27, 39, 28, 30, 55, 25, 53, 29, 52));
    EXPECT_THAT(keysOf({123, 124, 125, 126}), ElementsAre(113, 114, 116, 111));
}

TEST_F(X11KeyTableTest, KnowsNoOtherCodes) {
    EXPECT_THAT(keysOf({10, 24, 36, 49, 53, 83, 122, 127, 255, 100'000}), ElementsAre());
}

TEST_F(X11KeyTableTest, FindsTheDigitsOfAzertyOnShift) {
    user.setLayout("fr");

    EXPECT_THAT(keysOf(digits), ElementsAre(10, 11, 12, 13, 14, 15, 16, 17, 18, 19));
    EXPECT_THAT(keysOf({0, 12, 6, 13, 46}), ElementsAre(24, 38, 25, 52, 47)) << "a, q, z, w, m";
}

TEST_F(X11KeyTableTest, PrefersADigitWithoutShift) {
    user.setLayout("us");
    // The last key of the row gets an 8 on Shift, as digits have it in French.
    ASSERT_EQ(QProcess::execute("xmodmap", {"-e", "keycode 21 = equal 8"}), 0);

    EXPECT_THAT(keysOf(28), ElementsAre(17));
}

TEST_F(X11KeyTableTest, FindsALabelOnSeveralKeys) {
    user.setLayout("us");
    ASSERT_EQ(QProcess::execute("xmodmap", {"-e", "keycode 94 = a A"}), 0);

    EXPECT_THAT(keysOf(0), ElementsAre(38, 94));
}

TEST_F(X11KeyTableTest, FindsTheLettersOfDvorak) {
    user.setLayout("dvorak");

    EXPECT_THAT(keysOf({0, 1, 7, 8, 9, 3}), ElementsAre(38, 47, 56, 31, 60, 29)) << "a, s, x, c, v, f";
    EXPECT_THAT(keysOf(digits), ElementsAre(10, 11, 12, 13, 14, 15, 16, 17, 18, 19));
}

TEST_F(X11KeyTableTest, FindsTheLettersOfQwertz) {
    user.setLayout("de");

    EXPECT_THAT(keysOf({6, 16}), ElementsAre(29, 52)) << "z, y";
}

TEST_F(X11KeyTableTest, TakesTheAnsiPositionsWhereThereAreNoSuchLetters) {
    for (const char* layout : {"gr", "ru", "ara"}) {
        user.setLayout(layout);

        EXPECT_THAT(keysOf({0, 3, 9, 7}), ElementsAre(38, 41, 55, 53)) << layout;
        EXPECT_THAT(keysOf(digits), ElementsAre(10, 11, 12, 13, 14, 15, 16, 17, 18, 19)) << layout;
        EXPECT_THAT(keysOf({123, 126}), ElementsAre(113, 111)) << layout;
    }
}

TEST_F(X11KeyTableTest, KnowsEachOfTheLayoutsThatAreLoaded) {
    user.setLayout("dvorak,ru");

    EXPECT_THAT(keysOf({7, 8}, 0), ElementsAre(56, 31));
    EXPECT_THAT(keysOf({7, 8}, 1), ElementsAre(53, 54));
}

TEST_F(X11KeyTableTest, AsksForTheLayoutInUse) {
    const auto connection = connected();
    X11KeyTable table(*connection);
    user.setLayout("us,ru", 1);
    EXPECT_EQ(table.layoutInUse(), 1U);

    user.lockLayout(0);
    EXPECT_EQ(table.layoutInUse(), 0U);
}

TEST_F(X11KeyTableTest, KnowsTheModifiersOfThePorts) {
    EXPECT_EQ(modifiersFor(0), 0U);
    EXPECT_EQ(modifiersFor(modifier::shift), 0x01U);
    EXPECT_EQ(modifiersFor(modifier::control), 0x04U);
    EXPECT_EQ(modifiersFor(modifier::option), 0x08U);
    EXPECT_EQ(modifiersFor(modifier::command), 0x40U);
    EXPECT_EQ(modifiersFor(modifier::all), 0x4DU);
    EXPECT_EQ(modifiersFor(modifier::command | 1U << 16 | 1U << 23), 0x40U) << "other flags say nothing";
}

TEST_F(X11KeyTableTest, KnowsTheFlagsOfModifiers) {
    const auto connection = connected();
    X11KeyTable table(*connection);

    EXPECT_EQ(table.flagsOf(0x4D), modifier::all);
    EXPECT_EQ(table.flagsOf(0x40), modifier::command);
    EXPECT_EQ(table.flagsOf(0x12), 0U) << "Caps Lock and Num Lock";
}

TEST_F(X11KeyTableTest, FollowsAModifierMapThatMovesThem) {
    user.setLayout("us");
    ASSERT_EQ(QProcess::execute("xmodmap",
                                {"-e", "clear mod4", "-e", "clear mod3", "-e", "add mod3 = Super_L Super_R"}),
              0);
    EXPECT_EQ(modifiersFor(modifier::command), 0x20U);

    ASSERT_EQ(QProcess::execute("xmodmap", {"-e", "clear mod3"}), 0);
    EXPECT_EQ(modifiersFor(modifier::command), std::nullopt);
    EXPECT_EQ(modifiersFor(modifier::command | modifier::shift), std::nullopt);
    EXPECT_EQ(modifiersFor(modifier::shift), 0x01U);
}

TEST_F(X11KeyTableTest, KnowsWhichModifiersOnlyLock) {
    const auto connection = connected();
    X11KeyTable table(*connection);
    EXPECT_EQ(table.lockModifiers(), 0x12U);

    user.setLayout("us");
    ASSERT_EQ(QProcess::execute("xmodmap", {"-e", "add mod3 = Scroll_Lock"}), 0);
    EXPECT_TRUE(waitFor([&] { return table.lockModifiers() == 0x32; }));
}

TEST_F(X11KeyTableTest, ListsTheKeysOfModifiers) {
    const auto connection = connected();
    X11KeyTable table(*connection);

    EXPECT_THAT(listed(table.keysOfModifiers(0x05)), ElementsAre(37, 50, 62, 105));
    EXPECT_THAT(listed(table.keysOfModifiers(0)), ElementsAre());
}

TEST_F(X11KeyTableTest, TellsOfEveryChangeOfTheKeyboard) {
    const auto connection = connected();
    X11KeyTable table(*connection);
    int changes = 0;
    const auto listening = table.onChange([&] { ++changes; });
    const auto changed = [&] { return waitFor([&] { return std::exchange(changes, 0) > 0; }); };

    user.setLayout("us,fr");
    EXPECT_TRUE(waitFor([&] { return changes > 0 && table.keysOf(0, 1)[24]; })) << "the keymap";
    while (std::exchange(changes, 0) > 0) QCoreApplication::processEvents();
    user.lockLayout(1);
    EXPECT_TRUE(changed()) << "the layout in use";
    ASSERT_EQ(QProcess::execute("xmodmap", {"-e", "clear mod4"}), 0);
    EXPECT_TRUE(changed()) << "the modifier map";
    EXPECT_TRUE(waitFor([&] { return !table.modifiersFor(modifier::command); }));
}

}  // namespace
}  // namespace nettlecap::test
