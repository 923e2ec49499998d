#include "Process.h"
#include "app/AppDelegate.h"
#include "app/AppUpdateController.h"
#include "app/LaunchAtLogin.h"
#include "platform/linux/HistoryLock.h"
#include "platform/linux/LinuxPlatform.h"
#include "platform/linux/PosixFileSystem.h"
#include "platform/linux/SingleInstance.h"
#include "ui/NavigationHUDController.h"
#include "ui/SearchPanelController.h"
#include "ui/StatusBarPopoverContent.h"
#include "ui/qml/AppIcon.h"
#include "ui/qml/QuickPanels.h"
#include "ui/qml/QuickPopover.h"
#include "ui/qml/QuickStatusItemWindows.h"
#include "ui/qml/QuickViewFactory.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QQuickWindow>
#include <QSessionManager>
#include <cstdio>
#include <cstdlib>

using namespace nettlecap;

namespace {

constexpr const char* alreadyRunning = "o programa já está em execução";

int fail(const char* message, const std::string& description = {}) {
    std::fprintf(stderr, description.empty() ? "nettlecap: %s\n" : "nettlecap: %s: %s\n", message,
                 description.c_str());
    return EXIT_FAILURE;
}

/// What must be said before there is an application object.
void prepareQt() {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);  // a third of the memory of OpenGL
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "xcb");
    // Before each frame Qt waits 5 ms for more changes. What changes at once is in one frame anyway.
    if (!qEnvironmentVariableIsSet("QT_QPA_UPDATE_IDLE_TIME")) qputenv("QT_QPA_UPDATE_IDLE_TIME", "0");
    QGuiApplication::setApplicationName(QStringLiteral("Nettlecap"));
    QGuiApplication::setDesktopFileName(QStringLiteral("com.nettlecap.Nettlecap"));
}

void prepare(QGuiApplication& application) {
    // Qt reads the clipboard at every change wherever there is a text field, and waits for
    // the owner while it does.
    QGuiApplication::clipboard()->blockSignals(true);
    application.setQuitOnLastWindowClosed(false);
    // The login item starts the program with the session, and nothing else does.
    const auto neverRestart = [](QSessionManager& session) {
        session.setRestartHint(QSessionManager::RestartNever);
    };
    QObject::connect(&application, &QGuiApplication::commitDataRequest, neverRestart);
    QObject::connect(&application, &QGuiApplication::saveStateRequest, neverRestart);
}

MenuBarContentView::Ports contentPorts(LinuxPlatform& backend) {
    const Platform platform = backend.platform();
    return {.clock = platform.clock,
            .scheduler = platform.scheduler,
            .identifiers = platform.identifiers,
            .images = platform.images,
            .text = platform.text,
            .pasteboard = platform.pasteboard,
            .quit = [&application = platform.application] { application.terminate(); }};
}

AppModel::Windows makeWindows(LinuxPlatform& backend, PanelFactory& panels, ViewFactory& views) {
    auto hud = std::make_unique<NavigationHUDController>(
        NavigationHUDController::Collaborators{.panels = panels,
                                               .screens = backend.screens(),
                                               .scheduler = backend.platform().scheduler,
                                               .views = views});
    auto searchPanel = std::make_unique<SearchPanelController>(
        SearchPanelController::Collaborators{
            .ports = contentPorts(backend), .panels = panels, .screens = backend.screens(), .views = views},
        releaseMemory);
    return {.hud = std::move(hud), .searchPanel = std::move(searchPanel)};
}

AppModel::Services makeServices(LinuxPlatform& backend) {
    const Platform platform = backend.platform();
    auto updates = std::make_unique<AppUpdateController>(backend.bundle(), backend.makeUpdater());
    auto loginItem = std::make_unique<LaunchAtLogin>(LaunchAtLogin::Ports{.loginItem = backend.loginItem(),
                                                                          .bundle = backend.bundle(),
                                                                          .files = platform.files,
                                                                          .clock = platform.clock});
    return {.updates = std::move(updates), .loginItem = std::move(loginItem)};
}

int run(LinuxPlatform& backend) {
    const Platform platform = backend.platform();
    QuickViewFactory views(ClipboardStore::defaultImagesDirectory(platform.files));
    QuickPanels panels(backend.windows(), backend.screens());
    const auto itemGeometry = [&item = backend.statusItem()] { return item.geometry(); };
    QuickPopover popover({.windows = backend.windows(),
                          .screens = backend.screens(),
                          .scheduler = platform.scheduler,
                          .events = platform.events},
                         itemGeometry);
    QuickStatusItemWindows itemWindows(
        {.windows = backend.windows(), .screens = backend.screens(), .events = platform.events},
        views.engine(), itemGeometry);
    const auto showing = backend.statusItem().showIn(itemWindows);
    AppModel app(platform, makeWindows(backend, panels, views), makeServices(backend));
    StatusBarPopoverContent content(contentPorts(backend), views);
    AppDelegate delegate({.app = app,
                          .application = platform.application,
                          .scheduler = platform.scheduler,
                          .statusItem = backend.statusItem(),
                          .popover = popover,
                          .content = content});
    const auto loss = backend.onLost([] {
        // Nothing can be handed over any more, and everything is saved.
        std::_Exit(fail("a conexão com o servidor X foi perdida"));
    });
    const TerminationSignals terminations([&application = platform.application] { application.terminate(); });
    delegate.applicationWillFinishLaunching();
    delegate.applicationDidFinishLaunching();
    const int status = QGuiApplication::exec();
    delegate.applicationWillTerminate();
    backend.handOver();
    return status;
}

}  // namespace

int main() {
    keepToTheUser();
    returnMemoryEarly();
    if (const auto display = LinuxPlatform::findDisplay(); !display)
        return fail("não foi possível abrir a tela", display.description());
    prepareQt();
    // The program takes no options, and its name is also the instance half of WM_CLASS.
    char name[] = "nettlecap";
    char* arguments[] = {name, nullptr};
    int count = 1;
    QGuiApplication application(count, arguments);
    prepare(application);

    const auto instance = SingleInstance::claim();
    if (!instance) return fail(alreadyRunning, instance.description());
    if (!*instance) return EXIT_SUCCESS;
    PosixFileSystem files;
    const Path folder = ClipboardStore::defaultBaseDirectory(files);
    (void)files.createDirectory(folder);  // the store says what failed
    const auto lock = HistoryLock::take(folder);
    if (lock && !*lock) return fail(alreadyRunning);

    const auto backend = LinuxPlatform::open(**instance, AppIcon::drawing);
    if (!backend) return fail("não foi possível abrir a tela", backend.description());
    return run(**backend);
}
