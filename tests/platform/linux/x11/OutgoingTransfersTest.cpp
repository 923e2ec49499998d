#include "platform/linux/x11/OutgoingTransfers.h"
#include "platform/linux/x11/X11World.h"

using namespace nettlecap;
using namespace nettlecap::test;
using namespace std::chrono_literals;

class OutgoingTransfersTest : public testing::Test {
protected:
    OutgoingTransfers::Destination propertyOf(TestClient& client, const std::string& name) {
        return {.window = client.window(), .property = client.atom(name)};
    }
    bool arrives(const std::string& property) {
        return world.waitFor([&] { return reader.property(property).type == "INCR"; });
    }

    X11World world;
    TestRequestor& reader = world.add<TestRequestor>();
    OutgoingTransfers transfers{world.ports()};
    Bytes large{std::string(600'000, 'x')};
};

TEST_F(OutgoingTransfersTest, PutsWhatIsSmallAtOneGo) {
    transfers.put(propertyOf(reader, "A"), XCB_ATOM_STRING, Bytes("small"));

    EXPECT_EQ(transfers.underWay(), 0U);
    EXPECT_TRUE(world.waitFor([&] { return reader.property("A").bytes == "small"; }));
}

TEST_F(OutgoingTransfersTest, PutsOnePieceEachTimeTheLastOneWasTaken) {
    transfers.put(propertyOf(reader, "A"), XCB_ATOM_STRING, large);
    ASSERT_TRUE(arrives("A"));
    std::vector<std::size_t> pieces;

    ASSERT_TRUE(world.waitFor([&] {
        const auto piece = reader.property("A");
        if (!piece.refused) pieces.push_back(piece.bytes.size());
        return !piece.refused && piece.bytes.empty();
    }));

    EXPECT_EQ(pieces, (std::vector<std::size_t>{262'144, 262'144, 75'712, 0}));
    EXPECT_EQ(transfers.underWay(), 0U);
}

TEST_F(OutgoingTransfersTest, GivesUpOnWhoTakesNothingForTenSeconds) {
    transfers.put(propertyOf(reader, "A"), XCB_ATOM_STRING, large);

    world.advance(9.999s);
    EXPECT_EQ(transfers.underWay(), 1U);
    world.advance(0.001s);
    EXPECT_EQ(transfers.underWay(), 0U);
}

TEST_F(OutgoingTransfersTest, WaitsAnewForEachPiece) {
    transfers.put(propertyOf(reader, "A"), XCB_ATOM_STRING, large);
    world.advance(9s);
    ASSERT_TRUE(arrives("A"));
    ASSERT_TRUE(world.waitFor([&] { return reader.property("A").bytes.size() == 262'144; }));

    world.advance(9s);
    EXPECT_EQ(transfers.underWay(), 1U);
}

TEST_F(OutgoingTransfersTest, KeepsTransfersToOneWindowApart) {
    transfers.put(propertyOf(reader, "A"), XCB_ATOM_STRING, large);
    transfers.put(propertyOf(reader, "B"), XCB_ATOM_STRING, large);
    world.advance(5s);
    ASSERT_TRUE(arrives("B"));
    ASSERT_TRUE(world.waitFor([&] { return reader.property("B").bytes.size() == 262'144; }));

    world.advance(5s);

    EXPECT_EQ(transfers.underWay(), 1U);
    EXPECT_TRUE(world.waitFor([&] { return reader.property("B").bytes.size() == 262'144; }));
}

TEST_F(OutgoingTransfersTest, EndsWithTheWindow) {
    transfers.put(propertyOf(reader, "A"), XCB_ATOM_STRING, large);
    ASSERT_TRUE(arrives("A"));

    reader.quit();

    EXPECT_TRUE(world.waitFor([&] { return transfers.underWay() == 0; }));
}

TEST_F(OutgoingTransfersTest, EndsAtOnceWhereThereIsNoWindow) {
    constexpr xcb_window_t nobodys = 12345;

    transfers.put({.window = nobodys, .property = XCB_ATOM_WM_NAME}, XCB_ATOM_STRING, large);

    EXPECT_TRUE(world.waitFor([&] { return transfers.underWay() == 0; }));
}
