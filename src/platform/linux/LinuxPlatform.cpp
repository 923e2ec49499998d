#include "platform/linux/LinuxPlatform.h"

#include "platform/linux/FileUserDefaults.h"
#include "platform/linux/InstalledBundle.h"
#include "platform/linux/PackageKitUpdater.h"
#include "platform/linux/PosixFileSystem.h"
#include "platform/linux/QtBackgroundWork.h"
#include "platform/linux/QtImageCodec.h"
#include "platform/linux/QtScheduler.h"
#include "platform/linux/QtTextMeasure.h"
#include "platform/linux/RandomIdentifiers.h"
#include "platform/linux/SystemClock.h"
#include "platform/linux/XdgLoginItem.h"
#include "platform/linux/x11/X11Bell.h"
#include "platform/linux/x11/X11EventMonitors.h"
#include "platform/linux/x11/X11HotKeys.h"
#include "platform/linux/x11/X11Keyboard.h"
#include "platform/linux/x11/X11Pasteboard.h"
#include "platform/linux/x11/X11Screens.h"
#include "platform/linux/x11/X11Windows.h"
#include "platform/linux/x11/X11Workspace.h"

namespace nettlecap {

/// In the order in which they need each other; the X11 parts go before what they work with.
struct LinuxPlatform::Parts {
    SystemClock clock;
    QtScheduler scheduler;
    QtBackgroundWork background;
    RandomIdentifiers identifiers;
    PosixFileSystem files;
    FileUserDefaults defaults{files, FileUserDefaults::folderOfUser()};
    InstalledBundle bundle{files};
    XdgLoginItem loginItem{files};
    QtImageCodec images;
    QtTextMeasure text;
    DesktopEntries entries{DesktopEntries::dataFoldersOfEnvironment(), MessageLocale::ofEnvironment()};
    std::unique_ptr<X11Connection> connection;
    std::unique_ptr<X11Inquiry> inquiry;
    std::unique_ptr<X11RawInput> rawInput;
    std::unique_ptr<X11Screens> screens;
    std::unique_ptr<X11Windows> windows;
    std::unique_ptr<X11Pasteboard> pasteboard;
    std::unique_ptr<X11Workspace> workspace;
    std::unique_ptr<X11EventMonitors> events;
    std::unique_ptr<X11HotKeys> hotKeys;
    std::unique_ptr<X11Keyboard> keyboard;
    std::unique_ptr<X11Bell> bell;
    std::unique_ptr<LinuxApplication> application;
    std::unique_ptr<LinuxStatusItem> statusItem;
};

Result<Done> LinuxPlatform::findDisplay() {
    xcb_connection_t* display = xcb_connect(nullptr, nullptr);
    const bool isThere = xcb_connection_has_error(display) == 0;
    xcb_disconnect(display);
    if (!isThere) return Failure{"cannot connect to the X server"};
    return Done();
}

Result<std::unique_ptr<LinuxPlatform>> LinuxPlatform::open(const SingleInstance& instance,
                                                           LinuxApplication::Drawings drawings) {
    auto parts = std::make_unique<Parts>();
    auto connection = X11Connection::open();
    if (!connection) return Failure{connection.description()};
    parts->connection = std::move(*connection);
    auto inquiry = X11Inquiry::open();
    if (!inquiry) return Failure{inquiry.description()};
    parts->inquiry = std::move(*inquiry);
    parts->screens = std::make_unique<X11Screens>(*parts->inquiry);
    parts->windows = std::make_unique<X11Windows>(*parts->connection, *parts->inquiry);
    auto rawInput = X11RawInput::open();
    if (!rawInput) return Failure{rawInput.description()};
    parts->rawInput = std::move(*rawInput);
    auto pasteboard = X11Pasteboard::open({.connection = *parts->connection,
                                           .scheduler = parts->scheduler,
                                           .clock = parts->clock,
                                           .background = parts->background});
    if (!pasteboard) return Failure{pasteboard.description()};
    parts->pasteboard = std::move(*pasteboard);
    parts->workspace = std::make_unique<X11Workspace>(*parts->connection, *parts->inquiry, parts->entries);
    parts->events = std::make_unique<X11EventMonitors>(*parts->workspace, *parts->inquiry, *parts->rawInput,
                                                       *parts->connection);
    auto hotKeys = X11HotKeys::open();
    if (!hotKeys) return Failure{hotKeys.description()};
    parts->hotKeys = std::move(*hotKeys);
    parts->keyboard = std::make_unique<X11Keyboard>(X11Keyboard::Parts{.inquiry = *parts->inquiry,
                                                                       .keys = parts->rawInput->keyTable(),
                                                                       .workspace = *parts->workspace,
                                                                       .entries = parts->entries,
                                                                       .pasteboard = *parts->pasteboard,
                                                                       .hotKeys = *parts->hotKeys});
    parts->bell = std::make_unique<X11Bell>(*parts->connection);
    parts->application = std::make_unique<LinuxApplication>(*parts->bell, instance, std::move(drawings));
    parts->statusItem = std::make_unique<LinuxStatusItem>(*parts->connection, parts->scheduler);
    return std::unique_ptr<LinuxPlatform>(new LinuxPlatform(std::move(parts)));
}

LinuxPlatform::LinuxPlatform(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

LinuxPlatform::~LinuxPlatform() = default;

Platform LinuxPlatform::platform() {
    return {.clock = parts_->clock,
            .scheduler = parts_->scheduler,
            .background = parts_->background,
            .identifiers = parts_->identifiers,
            .files = parts_->files,
            .defaults = parts_->defaults,
            .pasteboard = *parts_->pasteboard,
            .images = parts_->images,
            .text = parts_->text,
            .workspace = *parts_->workspace,
            .events = *parts_->events,
            .hotKeys = *parts_->hotKeys,
            .keyboard = *parts_->keyboard,
            .application = *parts_->application};
}

Screens& LinuxPlatform::screens() { return *parts_->screens; }

NativeWindows& LinuxPlatform::windows() { return *parts_->windows; }

LinuxStatusItem& LinuxPlatform::statusItem() { return *parts_->statusItem; }

LoginItem& LinuxPlatform::loginItem() { return parts_->loginItem; }

const BundleInfo& LinuxPlatform::bundle() const { return parts_->bundle; }

MakeSoftwareUpdater LinuxPlatform::makeUpdater() {
    return [this] {
        return PackageKitUpdater::make(
            {.clock = parts_->clock, .scheduler = parts_->scheduler, .defaults = parts_->defaults});
    };
}

void LinuxPlatform::handOver() { parts_->pasteboard->handOver(); }

Subscription LinuxPlatform::onLost(Task handler) const {
    return parts_->connection->onLost(std::move(handler));
}

}  // namespace nettlecap
