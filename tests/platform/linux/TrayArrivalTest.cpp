#include "platform/linux/TrayArrival.h"

#include "platform/linux/QtApplication.h"
#include "platform/linux/TrayWatcher.h"
#include "platform/linux/x11/TestClient.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

/// A desktop whose tray may be there before the program, or come later.
class TrayArrivalTest : public testing::Test {
protected:
    TrayArrivalTest() {
        auto opened = X11Connection::open();
        EXPECT_TRUE(opened) << "no X server";
        connection = std::move(*opened);
    }

    void wait() {
        trays = std::make_unique<TrayArrival>(*connection);
        arrival = trays->onArrival([this] { ++arrivals; });
    }
    void addEmbeddingTray() {
        embedding.emplace();
        embedding->own("_NET_SYSTEM_TRAY_S0");
    }
    bool hasArrived() {
        return runMainLoopUntil([this] { return arrivals > 0; });
    }
    /// All that the bus and the X server have told by now has been heard.
    void catchUp() {
        const auto question = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                             "org.freedesktop.DBus", "GetId");
        const QDBusPendingCallWatcher answer(QDBusConnection::sessionBus().asyncCall(question));
        EXPECT_TRUE(runMainLoopUntil([&] { return answer.isFinished(); }));
        (void)connection->serverTime();
        QCoreApplication::processEvents();
    }

    std::unique_ptr<X11Connection> connection;
    std::optional<test::TestOwner> embedding;
    std::unique_ptr<TrayArrival> trays;
    Subscription arrival;
    int arrivals = 0;
};

TEST_F(TrayArrivalTest, OneThatEmbedsAndIsThereArrivesOnceTheMainLoopRuns) {
    addEmbeddingTray();

    wait();
    EXPECT_EQ(arrivals, 0);

    EXPECT_TRUE(hasArrived());
}

TEST_F(TrayArrivalTest, OneThatEmbedsMayComeLater) {
    wait();
    catchUp();
    EXPECT_EQ(arrivals, 0);

    addEmbeddingTray();

    EXPECT_TRUE(hasArrived());
}

TEST_F(TrayArrivalTest, OneOfTheNewKindThatIsThereArrives) {
    const TrayWatcher watcher(true);

    wait();
    EXPECT_EQ(arrivals, 0);

    EXPECT_TRUE(hasArrived());
}

TEST_F(TrayArrivalTest, OneOfTheNewKindMayComeLaterWithItsWatcher) {
    wait();
    catchUp();

    const TrayWatcher watcher(true);

    EXPECT_TRUE(hasArrived());
}

TEST_F(TrayArrivalTest, AWatcherAloneShowsNothing) {
    TrayWatcher watcher(false);
    wait();
    ASSERT_TRUE(runMainLoopUntil([&] { return watcher.timesAsked() == 1; }));
    catchUp();
    EXPECT_EQ(arrivals, 0);

    watcher.addHost();

    EXPECT_TRUE(hasArrived());
}

TEST_F(TrayArrivalTest, WhatComesAfterTheFirstIsNotTold) {
    addEmbeddingTray();
    wait();
    ASSERT_TRUE(hasArrived());

    TrayWatcher watcher(true);
    ASSERT_TRUE(runMainLoopUntil([&] { return watcher.timesAsked() == 1; }));
    watcher.addHost();
    ASSERT_TRUE(runMainLoopUntil([&] { return watcher.timesAsked() == 2; }));
    embedding->release();
    addEmbeddingTray();
    catchUp();

    EXPECT_EQ(arrivals, 1);
}

TEST_F(TrayArrivalTest, NothingIsToldOnceItIsGone) {
    addEmbeddingTray();
    wait();

    trays.reset();
    catchUp();

    EXPECT_EQ(arrivals, 0);
}

}  // namespace
}  // namespace nettlecap
