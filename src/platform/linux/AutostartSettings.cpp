#include "platform/linux/AutostartSettings.h"

#include "platform/linux/DetachedProgram.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QUrl>
#include <array>
#include <cstdlib>

namespace nettlecap {
namespace {

struct Settings {
    std::string_view desktop;
    const char* program;
    const char* argument = nullptr;
};

// By the registered names of desktops (Desktop Menu Specification, "Registered OnlyShowIn
// Environments").
constexpr std::array settings{
    Settings{"XFCE", "xfce4-session-settings"},
    Settings{"KDE", "kcmshell6", "kcm_autostart"},
    Settings{"KDE", "kcmshell5", "kcm_autostart"},
    Settings{"X-Cinnamon", "cinnamon-settings", "startup"},
    Settings{"MATE", "mate-session-properties"},
    Settings{"LXQt", "lxqt-config-session"},
    Settings{"LXDE", "lxsession-edit"},
    Settings{"GNOME", "gnome-session-properties"},
    Settings{"GNOME", "gnome-tweaks"},
    Settings{"Unity", "gnome-session-properties"},
};

bool start(const CommandLine& line) {
    const auto program = detachedProgram::find(line.program);
    return program && detachedProgram::start(*program, line.arguments);
}

/// The interface is that of the freedesktop.org File Manager D-Bus Interface.
void askFileManager(const Path& folder) {
    auto call =
        QDBusMessage::createMethodCall("org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                                       "org.freedesktop.FileManager1", "ShowFolders");
    call << QStringList(QUrl::fromLocalFile(QString::fromStdString(folder)).toString(QUrl::FullyEncoded))
         << QString();
    // Where there is no file manager either, there is nothing to show the folder with.
    QDBusConnection::sessionBus().send(call);
}

}  // namespace

std::vector<CommandLine> autostartSettings(std::string_view currentDesktop) {
    std::vector<CommandLine> found;
    while (!currentDesktop.empty()) {
        const auto end = std::min(currentDesktop.find(':'), currentDesktop.size());
        for (const Settings& one : settings) {
            if (one.desktop != currentDesktop.substr(0, end)) continue;
            found.push_back({.program = one.program, .arguments = {}});
            if (one.argument) found.back().arguments.emplace_back(one.argument);
        }
        currentDesktop.remove_prefix(std::min(end + 1, currentDesktop.size()));
    }
    return found;
}

void openAutostartSettings(const Path& folder) {
    const char* desktop = std::getenv("XDG_CURRENT_DESKTOP");
    for (const CommandLine& line : autostartSettings(desktop ? desktop : ""))
        if (start(line)) return;
    if (!start({.program = "xdg-open", .arguments = {folder}})) askFileManager(folder);
}

}  // namespace nettlecap
