#include "ui/RowList.h"

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QPointer>
#include <gtest/gtest.h>
#include <random>

namespace nettlecap {
namespace {

struct NamedRow : QObject {
    explicit NamedRow(const RowKey& rowKey) : key(rowKey) {}
    RowKey key;
};

std::vector<Uuid> ids(const std::vector<std::uint64_t>& numbers) {
    std::vector<Uuid> result;
    for (const std::uint64_t number : numbers) result.push_back({.high = 0, .low = number});
    return result;
}

std::vector<Uuid> upTo(std::uint64_t count) {
    std::vector<std::uint64_t> numbers(count);
    std::iota(numbers.begin(), numbers.end(), 1);
    return ids(numbers);
}

class RowListTest : public testing::Test {
protected:
    RowListTest() {
        QObject::connect(&list, &RowList::rowsInserted, [this] { log += "insert "; });
        QObject::connect(&list, &RowList::rowsRemoved, [this] { log += "remove "; });
        QObject::connect(&list, &RowList::rowsMoved, [this] { log += "move "; });
        QObject::connect(&list, &RowList::modelReset, [this] { log += "reset "; });
    }
    ~RowListTest() override { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    NamedRow* row(int index) {
        return static_cast<NamedRow*>(list.data(list.index(index), Qt::UserRole).value<QObject*>());
    }
    std::vector<Uuid> shownIds() {
        std::vector<Uuid> result;
        for (int index = 0; index < list.rowCount(); ++index) result.push_back(row(index)->key.id);
        return result;
    }

    int made = 0;
    RowList list{[this](const RowKey& key) {
        ++made;
        return std::make_unique<NamedRow>(key);
    }};
    std::string log;
};

TEST_F(RowListTest, MakesARowOnlyWhenItIsLookedAt) {
    list.setRows(upTo(5000));
    EXPECT_EQ(made, 0);

    row(3);
    row(3);

    EXPECT_EQ(made, 1);
}

TEST_F(RowListTest, NamesItsOnlyRoleRow) {
    EXPECT_EQ(list.roleNames(), (QHash<int, QByteArray>{{Qt::UserRole, "row"}}));
}

TEST_F(RowListTest, TellsAPromotionAsOneMove) {
    list.setRows(ids({1, 2, 3, 4}));
    log.clear();

    list.setRows(ids({3, 1, 2, 4}));

    EXPECT_EQ(log, "move ");
    EXPECT_EQ(shownIds(), ids({3, 1, 2, 4}));
}

TEST_F(RowListTest, TellsNeighboursThatComeAndGoTogetherAsOneRun) {
    list.setRows(ids({1, 2, 3, 4, 5}));
    log.clear();

    list.setRows(ids({8, 9, 1, 2, 5}));

    EXPECT_EQ(log, "remove insert ");
    EXPECT_EQ(shownIds(), ids({8, 9, 1, 2, 5}));
}

TEST_F(RowListTest, SaysNothingWhenNothingChanged) {
    list.setRows(ids({1, 2, 3}));
    log.clear();

    list.setRows(ids({1, 2, 3}));

    EXPECT_EQ(log, "");
}

TEST_F(RowListTest, KeepsTheObjectOfARowThatMoves) {
    list.setRows(ids({1, 2, 3}));
    const NamedRow* third = row(2);

    list.setRows(ids({3, 1, 2}));

    EXPECT_EQ(row(0), third);
}

TEST_F(RowListTest, DropsTheObjectOfARowThatGoesButNotWithinTheCall) {
    list.setRows(ids({1, 2, 3}));
    const QPointer<NamedRow> second = row(1);

    list.setRows(ids({1, 3}));
    EXPECT_TRUE(second);
    EXPECT_EQ(list.madeRow({.id = {.high = 0, .low = 2}}), nullptr);

    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(second);
}

TEST_F(RowListTest, TellsOfEachMadeRowThatGoesOnceItIsOutOfTheList) {
    for (const std::uint64_t count : {3U, 300U}) {  // one by one, and in a reset
        list.setRows(upTo(count));
        QObject* second = row(1);
        std::vector<QObject*> dropped;
        const auto connection = QObject::connect(&list, &RowList::rowDropped, [&](QObject* object) {
            EXPECT_EQ(list.madeRow({.id = {.high = 0, .low = 2}}), nullptr);
            dropped.push_back(object);
        });
        std::vector<Uuid> odd;
        for (std::uint64_t number = 1; number <= count; number += 2)
            odd.push_back({.high = 0, .low = number});

        list.setRows(odd);

        EXPECT_EQ(dropped, std::vector{second});
        QObject::disconnect(connection);
    }
}

TEST_F(RowListTest, ShowsBothOfTwoRowsWithOneIdentity) {
    list.setRows(ids({1, 2, 1}));

    EXPECT_EQ(row(0)->key, (RowKey{.id = {.high = 0, .low = 1}, .occurrence = 0}));
    EXPECT_EQ(row(2)->key, (RowKey{.id = {.high = 0, .low = 1}, .occurrence = 1}));
    EXPECT_NE(row(0), row(2));
}

TEST_F(RowListTest, TellsAHundredChangesSingly) {
    list.setRows(upTo(200));
    log.clear();
    std::vector<Uuid> even;
    for (std::uint64_t number = 2; number <= 200; number += 2) even.push_back({.high = 0, .low = number});

    list.setRows(even);

    EXPECT_EQ(log.find("reset"), std::string::npos);
    EXPECT_EQ(shownIds(), even);
}

TEST_F(RowListTest, ResetsAboveAHundredChangesAndKeepsTheObjects) {
    list.setRows(upTo(202));
    const NamedRow* second = row(1);
    log.clear();
    std::vector<Uuid> even;
    for (std::uint64_t number = 2; number <= 202; number += 2) even.push_back({.high = 0, .low = number});

    list.setRows(even);

    EXPECT_EQ(log, "reset ");
    EXPECT_EQ(row(0), second);
    EXPECT_EQ(shownIds(), even);
}

TEST_F(RowListTest, AgreesWithThreeThousandRandomLists) {
    const QAbstractItemModelTester tester(&list, QAbstractItemModelTester::FailureReportingMode::Fatal);
    std::mt19937 random(1);
    for (int turn = 0; turn < 3000; ++turn) {
        std::vector<Uuid> next;
        for (std::size_t count = random() % 13; count > 0; --count)
            next.push_back({.high = 0, .low = random() % 12});

        list.setRows(next);

        ASSERT_EQ(shownIds(), next) << "turn " << turn;
        for (int index = 0; index < list.rowCount(); ++index)
            ASSERT_EQ(row(index)->key, list.keys()[static_cast<std::size_t>(index)]);
    }
}

TEST_F(RowListTest, NeverMovesMoreRowsThanItMust) {
    int moves = 0;
    QObject::connect(&list, &RowList::rowsMoved, [&] { ++moves; });
    std::vector<Uuid> order = upTo(40);
    list.setRows(order);

    std::rotate(order.begin(), order.begin() + 3, order.end());  // the first three go last
    list.setRows(order);

    EXPECT_EQ(moves, 3);
    EXPECT_EQ(shownIds(), order);
}

}  // namespace
}  // namespace nettlecap
