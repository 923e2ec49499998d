#pragma once

#include "platform/linux/x11/DesktopUser.h"
#include "platform/linux/x11/X11EventMonitors.h"
#include "platform/linux/x11/X11Workspace.h"

#include <QRasterWindow>
#include <filesystem>
#include <gmock/gmock.h>

namespace nettlecap::test {

/// The backend's view of a desktop, on which other programs' windows and ours can be put.
class X11Session {
public:
    X11Session();
    ~X11Session();

    /// A window of another program, in front of the others.
    OtherWindow& open(const Appearance& appearance);
    OtherWindow& openNamed(const std::string& name) { return open({.windowClass = classOf(name)}); }
    /// A window of ours, in front of the others.
    QWindow& openOwn(int x = 600, int y = 400);
    void quitAll();

    static std::string classOf(const std::string& name) { return name + '\0' + name + '\0'; }

    std::unique_ptr<X11Connection> connection;
    std::unique_ptr<X11Inquiry> inquiry;
    DesktopEntries entries{{"/usr/share"}, MessageLocale("pt_PT")};
    std::unique_ptr<X11Workspace> workspace;
    std::unique_ptr<X11RawInput> raw;
    std::unique_ptr<X11EventMonitors> monitors;
    DesktopUser user;

private:
    std::vector<std::unique_ptr<OtherWindow>> others_;
    std::vector<std::unique_ptr<QRasterWindow>> own_;
};

class X11SessionTest : public testing::Test {
protected:
    /// The name of the application in front.
    std::string front() const {
        const auto application = session.workspace->frontmostApplication();
        return application ? application->localizedName.value_or("(nameless)") : "(nothing)";
    }
    std::optional<std::string> frontIdentifier() const {
        const auto application = session.workspace->frontmostApplication();
        return application ? application->bundleIdentifier : std::nullopt;
    }

    X11Session session;
    DesktopUser& user = session.user;
};

}  // namespace nettlecap::test
