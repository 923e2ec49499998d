#include "ui/SearchWarmUp.h"
#include "platform/fake/FakeTime.h"

#include <gtest/gtest.h>

namespace nettlecap {
namespace {

using namespace std::chrono_literals;

class SearchWarmUpTest : public testing::Test {
protected:
    static StoredEntries entries(std::size_t count, std::size_t size = 1) {
        return StoredEntries(count, StoredEntry({.text = std::string(size, 'a')}));
    }

    FakeTime time;
    std::size_t folded = 0;
    SearchWarmUp warmUp{time, [this](const StoredEntry&) { ++folded; }};
};

TEST_F(SearchWarmUpTest, FoldsEveryEntryAfterAWhile) {
    warmUp.start(entries(250));

    time.advance(0.249s);
    EXPECT_EQ(folded, 0U);

    time.advance(0.001s);
    EXPECT_EQ(folded, 250U);
}

TEST_F(SearchWarmUpTest, LetsOthersRunBetweenSlices) {
    std::vector<std::size_t> seen;
    warmUp.start(entries(250));
    time.after(0.25s, [&] {
        seen.push_back(folded);
        time.post([&] { seen.push_back(folded); });
    });

    time.advance(0.25s);

    EXPECT_EQ(seen, (std::vector<std::size_t>{100, 200}));
}

TEST_F(SearchWarmUpTest, FoldsTheFirstEntriesFirst) {
    std::string order;
    SearchWarmUp ordered(time, [&](const StoredEntry& entry) { order += *entry->text; });

    ordered.start({StoredEntry({.text = "a"}), StoredEntry({.text = "b"}), StoredEntry({.text = "c"})});
    time.advance(0.25s);

    EXPECT_EQ(order, "abc");
}

TEST_F(SearchWarmUpTest, LeavesHugeTextsAlone) {
    warmUp.start(entries(1, SearchWarmUp::hugeText - 1));
    time.advance(0.25s);
    EXPECT_EQ(folded, 1U);

    warmUp.start(entries(1, SearchWarmUp::hugeText));
    time.advance(0.25s);
    EXPECT_EQ(folded, 1U);
}

TEST_F(SearchWarmUpTest, AnEmptyHistoryWakesNobody) {
    warmUp.start({});

    EXPECT_EQ(time.waitingTasks(), 0U);
}

TEST_F(SearchWarmUpTest, StopsInTheMiddle) {
    warmUp.start(entries(250));
    time.after(0.25s, [this] { warmUp.stop(); });

    time.advance(1s);

    EXPECT_EQ(folded, 100U);
}

TEST_F(SearchWarmUpTest, StartsAfreshWithOtherEntries) {
    warmUp.start(entries(10));
    time.advance(0.2s);
    warmUp.start(entries(3));

    time.advance(0.249s);
    EXPECT_EQ(folded, 0U);

    time.advance(1s);
    EXPECT_EQ(folded, 3U);
}

}  // namespace
}  // namespace nettlecap
