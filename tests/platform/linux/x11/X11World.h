#pragma once

#include "platform/fake/FakeBackgroundWork.h"
#include "platform/fake/FakeTime.h"
#include "platform/linux/x11/TestClient.h"
#include "platform/linux/x11/X11Pasteboard.h"

#include <QTimer>
#include <gtest/gtest.h>

namespace nettlecap::test {

/// An X server with other programs on it, and time that moves only when the test waits for
/// something with `settle`, so that no slowness of the machine makes a deadline pass.
class X11World {
public:
    X11World();
    ~X11World();

    /// Runs the event loop until it holds. False: it did not within a minute.
    bool waitFor(const std::function<bool()>& condition);  ///< our time stands still
    bool settle(const std::function<bool()>& condition);   ///< our time goes on too
    void advance(Seconds elapsed);
    void stop() { waking_->stop(); }
    void pump();  ///< lets the others, and what waits in the background, go on

    template <class Client, class... Arguments>
    Client& add(Arguments... arguments) {
        auto client = std::make_unique<Client>(arguments...);
        Client& result = *client;
        clients_.push_back(std::move(client));
        return result;
    }

    SelectionPorts ports() { return {*connection, time, time, background}; }

    FakeTime time;
    FakeBackgroundWork background{time};
    std::unique_ptr<X11Connection> connection;
    bool runsBackgroundWork = true;

private:
    bool turnUntil(const std::function<bool()>& condition, bool movesTime);
    void turn();

    std::vector<std::unique_ptr<TestClient>> clients_;
    std::unique_ptr<QTimer> waking_;
};

/// A pasteboard that wants texts and pictures, on a clipboard that nobody owns yet.
class X11PasteboardTest : public testing::Test {
protected:
    X11PasteboardTest();

    static PasteboardInterest textAndImages();

    TestOwner& owner() { return world.add<TestOwner>(); }
    TestRequestor& requestor() { return world.add<TestRequestor>(); }
    void start();  ///< opens the pasteboard (again)
    bool waitForChange(std::int64_t count = 1) {
        return world.settle([this, count] { return pasteboard->changeCount() >= count; });
    }
    std::optional<std::string> text() const { return pasteboard->string(pasteboardType::text); }
    std::optional<TestRequestor::Answer> paste(const std::string& target);
    bool isOurs();  ///< the selection, as the server sees it
    void write(const std::string& contents);

    X11World world;
    TestClient& observer;
    std::unique_ptr<X11Pasteboard> pasteboard;
};

}  // namespace nettlecap::test
