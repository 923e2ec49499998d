#pragma once

#include "platform/Images.h"

#include <gtest/gtest.h>

namespace nettlecap {

/// What every TextMeasure does. Instantiate it with a function that makes one.
class TextMeasureContract : public testing::TestWithParam<std::unique_ptr<TextMeasure> (*)()> {
protected:
    std::unique_ptr<TextMeasure> measure = GetParam()();
};

TEST_P(TextMeasureContract, NothingHasNoWidth) { EXPECT_EQ(measure->width(""), 0); }

TEST_P(TextMeasureContract, EveryCharacterTakesRoom) {
    EXPECT_GT(measure->width("a"), 0);
    EXPECT_GT(measure->width("ã"), 0);
    EXPECT_GT(measure->width(" "), 0);
}

TEST_P(TextMeasureContract, ALongerTextIsWider) {
    EXPECT_LT(measure->width("Nada"), measure->width("Nada encontrado"));
    EXPECT_NEAR(measure->width(std::string(100, 'n')), 100 * measure->width("n"), 50);
}

TEST_P(TextMeasureContract, AnswersTheSameEveryTime) {
    EXPECT_EQ(measure->width("Nenhuma cópia ainda"), measure->width("Nenhuma cópia ainda"));
}

TEST_P(TextMeasureContract, MeasuresWhatIsNoValidText) { EXPECT_GE(measure->width("\xC3(\xFF"), 0); }

}  // namespace nettlecap
