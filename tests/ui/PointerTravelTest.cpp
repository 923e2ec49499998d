#include "ui/PointerTravel.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

TEST(PointerTravelTest, APointerNeverSeenBeforeComesFromElsewhere) {
    PointerTravel pointer;

    EXPECT_TRUE(pointer.movesTo({10, 20}));
}

TEST(PointerTravelTest, APointerThatRestedThereHasNotMoved) {
    PointerTravel pointer;
    pointer.restsAt({10, 20});

    EXPECT_FALSE(pointer.movesTo({10, 20}));
    EXPECT_TRUE(pointer.movesTo({10, 21}));
}

TEST(PointerTravelTest, RemembersEachPlace) {
    PointerTravel pointer;
    pointer.movesTo({10, 20});
    pointer.movesTo({30, 20});

    EXPECT_FALSE(pointer.movesTo({30, 20}));
    EXPECT_TRUE(pointer.movesTo({10, 20}));
}

TEST(PointerTravelTest, WhatLeftAndCameBackToTheSamePlaceHasMoved) {
    PointerTravel pointer;
    pointer.movesTo({10, 20});

    pointer.leaves();

    EXPECT_TRUE(pointer.movesTo({10, 20}));
}

}  // namespace
}  // namespace nettlecap
