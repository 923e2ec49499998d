#pragma once

#include "platform/Identifiers.h"

#include <gtest/gtest.h>
#include <set>

namespace nettlecap {

/// What every Identifiers does. Instantiate it with a function that makes one.
class IdentifiersContract : public testing::TestWithParam<std::unique_ptr<Identifiers> (*)()> {
protected:
    std::unique_ptr<Identifiers> identifiers = GetParam()();
};

TEST_P(IdentifiersContract, NeverGivesOneTwice) {
    std::set<Uuid> seen;
    for (int i = 0; i < 10'000; ++i) seen.insert(identifiers->next());

    EXPECT_EQ(seen.size(), 10'000U);
}

TEST_P(IdentifiersContract, GivesVersion4OfRfc4122) {
    for (int i = 0; i < 1'000; ++i) {
        const std::string text = identifiers->next().text();

        ASSERT_EQ(text[14], '4') << text;
        ASSERT_NE(std::string_view("89AB").find(text[19]), std::string_view::npos) << text;
    }
}

}  // namespace nettlecap
