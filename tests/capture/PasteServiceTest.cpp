#include "capture/PasteService.h"

#include "platform/fake/FakeKeyboard.h"

#include <gmock/gmock.h>

namespace nettlecap {
namespace {

using namespace modifier;
using testing::ElementsAre;
using testing::IsEmpty;

class PasteServiceTest : public testing::Test {
protected:
    /// Of `modifiers`, with these down.
    bool areAnyPressed(ModifierFlags modifiers, ModifierFlags down) {
        keyboard.setModifiersDown(down);
        return service.areAnyPressed(modifiers);
    }

    FakeKeyboard keyboard;
    PasteService service{keyboard};
};

TEST_F(PasteServiceTest, TypesCommandV) {
    service.postPasteKeystroke();

    EXPECT_THAT(keyboard.typed(), ElementsAre(KeyEvent{.keyCode = 9, .flags = 0x100000, .isDown = true},
                                              KeyEvent{.keyCode = 9, .flags = 0x100000, .isDown = false}));
}

TEST_F(PasteServiceTest, TypesCommandVAloneWhateverTheUserHolds) {
    keyboard.setModifiersDown(shift | option | control);

    service.postPasteKeystroke();

    ASSERT_EQ(keyboard.typed().size(), 2U);
    EXPECT_EQ(keyboard.typed()[0].flags, command);
    EXPECT_EQ(keyboard.typed()[1].flags, command);
}

TEST_F(PasteServiceTest, TypesNothingByHalves) {
    keyboard.setRefusesPosts(true);
    service.postPasteKeystroke();
    EXPECT_THAT(keyboard.typed(), IsEmpty());

    keyboard.setRefusesPosts(false);
    service.postPasteKeystroke();
    EXPECT_EQ(keyboard.typed().size(), 2U);
}

TEST_F(PasteServiceTest, HandsBothHalvesOverAtOnce) {
    class CountingKeyboard final : public Keyboard {
    public:
        std::vector<std::size_t> posts;

        bool post(std::span<const KeyEvent> events) override {
            posts.push_back(events.size());
            return true;
        }
        bool isTrusted(bool) override { return true; }
        ModifierFlags modifiersDown() const override { return 0; }
    } counting;

    PasteService(counting).postPasteKeystroke();

    EXPECT_THAT(counting.posts, ElementsAre(2U));
}

TEST_F(PasteServiceTest, TypesWithoutAskingWhetherItMay) {
    keyboard.setTrusted(false);

    service.postPasteKeystroke();

    EXPECT_EQ(keyboard.typed().size(), 2U);
    EXPECT_THAT(keyboard.prompts(), IsEmpty());
}

TEST_F(PasteServiceTest, AsksWhetherItMayAsItIsTold) {
    EXPECT_TRUE(service.isTrusted(true));
    keyboard.setTrusted(false);
    EXPECT_FALSE(service.isTrusted(false));
    EXPECT_FALSE(service.isTrusted(true));

    EXPECT_THAT(keyboard.prompts(), ElementsAre(true, false, true));
}

TEST_F(PasteServiceTest, FindsEachOfTheFourModifiers) {
    for (const ModifierFlags asked : {command, option, control, shift})
        for (const ModifierFlags down : {command, option, control, shift})
            EXPECT_EQ(areAnyPressed(asked, down), asked == down) << asked << " " << down;
}

TEST_F(PasteServiceTest, OneOfSeveralIsEnough) {
    EXPECT_TRUE(areAnyPressed(command | shift, shift));
    EXPECT_TRUE(areAnyPressed(command, command | option));
    EXPECT_TRUE(areAnyPressed(all, control));
}

TEST_F(PasteServiceTest, OverlooksModifiersThatNobodyAskedFor) {
    EXPECT_FALSE(areAnyPressed(command | shift, option));
    EXPECT_FALSE(areAnyPressed(command | shift, 0));
    EXPECT_FALSE(areAnyPressed(0, all));
    EXPECT_FALSE(areAnyPressed(0, 0));
}

TEST_F(PasteServiceTest, OverlooksOtherModifiersThanTheFour) {
    constexpr ModifierFlags capsLock = 1U << 16;
    constexpr ModifierFlags function = 1U << 23;

    EXPECT_FALSE(areAnyPressed(capsLock | function, capsLock | function));
    EXPECT_FALSE(areAnyPressed(~ModifierFlags{0}, capsLock | function));
    EXPECT_TRUE(areAnyPressed(~ModifierFlags{0}, capsLock | shift));
}

TEST_F(PasteServiceTest, ReadsTheKeyboardAnewEachTime) {
    EXPECT_TRUE(areAnyPressed(command, command));
    EXPECT_FALSE(areAnyPressed(command, 0));
    EXPECT_TRUE(areAnyPressed(command, command));
}

}  // namespace
}  // namespace nettlecap
