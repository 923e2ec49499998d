#include "model/RelativeDate.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

constexpr double minute = 60;
constexpr double hour = 60 * minute;
constexpr double day = 24 * hour;

std::string ago(double seconds) {
    const Date now{800'000'000};
    return relativeDate({now.secondsSince2001 - seconds}, now);
}

TEST(RelativeDateTest, CallsLessThanASecondNow) {
    EXPECT_EQ(ago(0), "agora");
    EXPECT_EQ(ago(0.999), "agora");
    EXPECT_EQ(ago(-0.5), "agora");
}

TEST(RelativeDateTest, CountsTheLargestWholeUnit) {
    EXPECT_EQ(ago(1), "há 1 segundo");
    EXPECT_EQ(ago(59.9), "há 59 segundos");
    EXPECT_EQ(ago(minute), "há 1 minuto");
    EXPECT_EQ(ago(5 * minute), "há 5 minutos");
    EXPECT_EQ(ago(hour - 1), "há 59 minutos");
    EXPECT_EQ(ago(hour), "há 1 hora");
    EXPECT_EQ(ago(day - 1), "há 23 horas");
    EXPECT_EQ(ago(day), "há 1 dia");
    EXPECT_EQ(ago(6 * day), "há 6 dias");
    EXPECT_EQ(ago(7 * day), "há 1 semana");
    EXPECT_EQ(ago(30 * day), "há 4 semanas");
    EXPECT_EQ(ago(31 * day), "há 1 mês");
    EXPECT_EQ(ago(62 * day), "há 2 meses");
    EXPECT_EQ(ago(366 * day), "há 1 ano");
    EXPECT_EQ(ago(800 * day), "há 2 anos");
}

TEST(RelativeDateTest, GroupsThousands) {
    EXPECT_EQ(ago(999 * 366 * day), "há 1.001 anos");
    EXPECT_EQ(ago(1e15), "há 31.688.738 anos");
}

TEST(RelativeDateTest, HasWordsForTheDateOfADamagedFile) {
    EXPECT_EQ(ago(1e300), "há 1.000.000.000.000.000.000 anos");
}

TEST(RelativeDateTest, KnowsDatesToComeFromAClockSetBack) {
    EXPECT_EQ(ago(-5 * minute), "em 5 minutos");
    EXPECT_EQ(ago(-day), "em 1 dia");
}

}  // namespace
}  // namespace nettlecap
