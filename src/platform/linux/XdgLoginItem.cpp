#include "platform/linux/XdgLoginItem.h"

#include "platform/linux/AutostartSettings.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/DetachedProgram.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/TemporaryFile.h"
#include "platform/linux/UserFolders.h"

#include <array>

namespace nettlecap {
namespace {

namespace fs = std::filesystem;

constexpr const char* fileName = "com.nettlecap.Nettlecap.desktop";
constexpr std::int64_t largestEntry = std::int64_t{256} * 1024;

// How the desktops' own settings switch an entry off: Xfce, KDE and LXQt the first way,
// GNOME and Cinnamon the second, MATE the third.
constexpr std::array<std::pair<std::string_view, std::string_view>, 3> switchedOff{{
    {"Hidden", "true"},
    {"X-GNOME-Autostart-enabled", "false"},
    {"X-MATE-Autostart-enabled", "false"},
}};

bool isSwitchedOff(std::string_view entry) {
    for (const auto& [key, value] : switchedOff)
        if (DesktopEntry::valueOf(key, entry) == value) return true;
    return false;
}

bool canStart(std::string_view entry) {
    const auto exec = DesktopEntry::valueOf("Exec", entry);
    return exec && detachedProgram::find(DesktopEntry::executableOf(*exec));
}

/// One argument of Exec: quoted as for a shell, '%' doubled, and then written as a value of
/// the file, where every backslash counts double (Desktop Entry Specification, "The Exec key").
std::string execOf(const Path& program) {
    std::string value = "\"";
    for (const char character : program.native()) {
        switch (character) {
        case '"':
        case '`':
        case '$': (value += "\\\\") += character; break;
        case '\\': value += "\\\\\\\\"; break;
        case '%': value += "%%"; break;
        case '\n': value += "\\n"; break;
        case '\t': value += "\\t"; break;
        case '\r': value += "\\r"; break;
        default: value += character;
        }
    }
    return value + '"';
}

std::string entryFor(const Path& program) {
    return "[Desktop Entry]\nType=Application\nName=Nettlecap\nIcon=com.nettlecap.Nettlecap\nExec=" +
           execOf(program) + "\nTerminal=false\n";
}

/// Whoever keeps settings elsewhere links to them from here. Absent: it leads nowhere.
std::optional<Path> realPath(const Path& path) {
    std::error_code error;
    auto real = fs::canonical(path, error);
    if (error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory)
        return std::nullopt;
    return error ? path : real;
}

}  // namespace

XdgLoginItem::Places XdgLoginItem::Places::ofProcess() {
    auto folder = userFolders::configuration();
    if (folder) *folder /= "autostart";
    std::error_code error;  // without a program there is nothing to start, and that is what is said
    return {.folder = std::move(folder), .program = fs::read_symlink("/proc/self/exe", error)};
}

XdgLoginItem::XdgLoginItem(FileSystem& files, Places places) : files_(files), places_(std::move(places)) {}

LoginItemStatus XdgLoginItem::status() const {
    if (!places_.folder) return LoginItemStatus::notFound;
    const auto path = realPath(*places_.folder / fileName);
    if (!path)
        return detachedProgram::find(places_.program) ? LoginItemStatus::notRegistered
                                                      : LoginItemStatus::notFound;
    if (files_.size(*path).value_or(0) > largestEntry) return LoginItemStatus::unknown;
    const auto entry = files_.read(*path);
    if (!entry) return LoginItemStatus::unknown;
    if (isSwitchedOff(entry->view())) return LoginItemStatus::requiresApproval;
    return canStart(entry->view()) ? LoginItemStatus::enabled : LoginItemStatus::notFound;
}

Result<Done> XdgLoginItem::registerItem() {
    if (!places_.folder || !detachedProgram::find(places_.program))
        return systemFailure(std::errc::no_such_file_or_directory);
    // The user's word stands.
    if (status() == LoginItemStatus::requiresApproval) return Done();
    const std::string entry = entryFor(places_.program);
    // A path that is no text can't stand in an entry.
    if (!canStart(entry)) return systemFailure(std::errc::illegal_byte_sequence);
    std::error_code error;
    // It is the desktop's folder: where it exists, its rights are not ours to change.
    if (!fs::is_directory(*places_.folder, error))
        if (auto made = files_.createDirectory(*places_.folder); !made) return made;
    files_.removeLeftovers(*places_.folder);
    const std::array<std::string_view, 1> pieces = {entry};
    return files_.writeAtomically(*places_.folder / fileName, pieces, *places_.folder);
}

Result<Done> XdgLoginItem::unregisterItem() {
    if (!places_.folder) return Done();
    const Path path = *places_.folder / fileName;
    std::error_code error;
    if (fs::symlink_status(path, error).type() == fs::file_type::not_found) return Done();
    if (auto removed = files_.remove(path); !removed) return removed;
    (void)flushFolder(*places_.folder);  // it is gone, whatever a power cut brings back
    return Done();
}

void XdgLoginItem::openSystemSettings() {
    if (!places_.folder) return;
    std::error_code error;
    // A failure shows in the file manager.
    if (!fs::is_directory(*places_.folder, error)) (void)files_.createDirectory(*places_.folder);
    openAutostartSettings(*places_.folder);
}

}  // namespace nettlecap
