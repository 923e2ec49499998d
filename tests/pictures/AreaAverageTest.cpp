#include "pictures/AreaAverage.h"

#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <random>

namespace nettlecap {
namespace {

using Samples = std::vector<std::uint8_t>;

Samples averaged(const Samples& picture, AreaAverage::Task task) {
    AreaAverage average(task);
    const std::size_t rowSize = task.from.width * task.channels;
    for (std::size_t at = 0; at < picture.size(); at += rowSize)
        average.add(std::span(picture).subspan(at, rowSize));
    return average.result();
}

/// How much of the interval lies within that row or column of the picture.
double shared(double start, double end, std::uint32_t place) {
    return std::max(0.0, std::min<double>(end, place + 1) - std::max<double>(start, place));
}

/// As the definition has it, for each pixel from all of the picture.
std::vector<double> averagedPlainly(const Samples& picture, AreaAverage::Task task) {
    const double across = static_cast<double>(task.from.width) / task.to.width;
    const double down = static_cast<double>(task.from.height) / task.to.height;
    std::vector<double> result;
    for (std::uint32_t line = 0; line < task.to.height; ++line)
        for (std::size_t at = 0; at < task.to.width * task.channels; ++at) {
            const auto column = static_cast<double>(at / task.channels);
            double sum = 0;
            for (std::uint32_t y = 0; y < task.from.height; ++y)
                for (std::uint32_t x = 0; x < task.from.width; ++x)
                    sum += shared(line * down, (line + 1) * down, y) *
                           shared(column * across, (column + 1) * across, x) *
                           picture[(y * task.from.width + x) * task.channels + at % task.channels];
            result.push_back(sum / (across * down));
        }
    return result;
}

MATCHER(IsRounded, "") { return std::abs(std::get<0>(arg) - std::get<1>(arg)) < 0.5 + 1e-9; }

TEST(AreaAverageTest, CountsWhatIsCoveredInPart) {
    const AreaAverage::Task task{.from = {.width = 3, .height = 1}, .to = {.width = 2, .height = 1}};

    EXPECT_EQ(averaged({0, 90, 255}, task), (Samples{30, 200}));
}

TEST(AreaAverageTest, CountsRowsAsItCountsColumns) {
    const AreaAverage::Task task{.from = {.width = 1, .height = 3}, .to = {.width = 1, .height = 2}};

    EXPECT_EQ(averaged({0, 90, 255}, task), (Samples{30, 200}));
}

TEST(AreaAverageTest, KeepsChannelsApart) {
    const AreaAverage::Task task{
        .from = {.width = 2, .height = 2}, .to = {.width = 1, .height = 1}, .channels = 2};

    EXPECT_EQ(averaged({0, 255, 10, 255, 20, 255, 30, 255}, task), (Samples{15, 255}));
}

TEST(AreaAverageTest, LeavesAPictureOfTheRightSizeAsItIs) {
    const AreaAverage::Task task{.from = {.width = 2, .height = 2}, .to = {.width = 2, .height = 2}};

    EXPECT_EQ(averaged({1, 2, 3, 4}, task), (Samples{1, 2, 3, 4}));
}

TEST(AreaAverageTest, IsWhatTheDefinitionSays) {
    std::mt19937 random(1);
    for (const PictureSize from : {PictureSize{13, 11}, PictureSize{40, 3}, PictureSize{7, 31}})
        for (const PictureSize to : {PictureSize{1, 1}, PictureSize{5, 3}, PictureSize{7, 2}})
            for (const std::size_t channels : {1U, 2U, 3U, 4U}) {
                const AreaAverage::Task task{.from = from, .to = to, .channels = channels};
                Samples picture(from.pixels() * channels);
                std::generate(picture.begin(), picture.end(),
                              [&] { return static_cast<std::uint8_t>(random()); });

                const auto plainly = averagedPlainly(picture, task);
                EXPECT_THAT(averaged(picture, task), testing::Pointwise(IsRounded(), plainly));
            }
}

TEST(AreaAverageTest, StaysWhiteWhereAllIsWhite) {
    for (const PictureSize from : {PictureSize{1'000'000, 1}, PictureSize{1, 1'000'000}}) {
        const PictureSize to{.width = std::min(from.width, 436U), .height = std::min(from.height, 240U)};

        const Samples result = averaged(Samples(from.pixels(), 255), {.from = from, .to = to, .channels = 1});

        EXPECT_EQ(result, Samples(to.pixels(), 255));
    }
}

}  // namespace
}  // namespace nettlecap
