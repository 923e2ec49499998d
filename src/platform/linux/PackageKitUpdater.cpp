#include "platform/linux/PackageKitUpdater.h"

#include "platform/linux/DesktopNotification.h"
#include "platform/linux/DetachedProgram.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/PackageKitTransaction.h"

#include <QDBusMessage>
#include <QString>
#include <array>
#include <charconv>
#include <fstream>

namespace nettlecap {
namespace {

constexpr std::string_view package = "nettlecap";
constexpr std::string_view lastLookKey = "Nettlecap.lastUpdateCheck";
constexpr Seconds timeBetweenQuestions{60 * 60};  // whether it is due again
constexpr qulonglong noFilter = 1 << 1;           // PK_FILTER_ENUM_NONE

struct UpdateProgram {
    const char* name;
    std::vector<std::string> arguments;
};

/// Opens what the desktop has for installing updates.
void openUpdateProgram(const QDBusConnection& session) {
    const std::array programs{
        UpdateProgram{"gnome-software", {"--mode=updates"}},
        UpdateProgram{"plasma-discover", {"--mode", "update"}},
        UpdateProgram{"gpk-update-viewer", {}},
        UpdateProgram{"update-manager", {}},
    };
    for (const auto& [name, arguments] : programs)
        if (const auto program = detachedProgram::find(name);
            program && detachedProgram::start(*program, arguments))
            return;
    auto call = QDBusMessage::createMethodCall("org.freedesktop.PackageKit", "/org/freedesktop/PackageKit",
                                               "org.freedesktop.PackageKit.Modify", "InstallPackageNames");
    call << 0U << QStringList(QLatin1String(package.data(), package.size())) << QString();
    session.send(call);
}

/// What dpkg keeps of a package is a file that lists its files.
bool isFromPackage(const Path& program) {
    if (program != "/usr/bin/nettlecap") return false;
    std::ifstream list("/var/lib/dpkg/info/nettlecap.list");
    for (std::string line; std::getline(list, line);)
        if (line == program) return true;
    return false;
}

DesktopNotification::Text textFor(const Result<std::optional<std::string>>& newerVersion) {
    if (!newerVersion)
        return {.summary = QStringLiteral("Não foi possível buscar atualizações"),
                .body = QString::fromStdString(newerVersion.description()),
                .button = {}};
    if (!*newerVersion)
        return {.summary = QStringLiteral("O Nettlecap está atualizado"), .body = {}, .button = {}};
    return {.summary = QStringLiteral("Atualização disponível"),
            .body = QStringLiteral("Nettlecap ") + QString::fromStdString(**newerVersion),
            .button = QStringLiteral("Instalar")};
}

}  // namespace

/// One check from beginning to end.
struct PackageKitUpdater::Look {
    bool isForUser = false;
    QDBusConnection bus;
    std::unique_ptr<PackageKitTransaction> step;
};

std::unique_ptr<SoftwareUpdater> PackageKitUpdater::make(const Ports& ports) {
    std::error_code error;
    if (!isFromPackage(std::filesystem::read_symlink("/proc/self/exe", error))) return nullptr;
    return std::make_unique<PackageKitUpdater>(
        ports, Buses{.system = &QDBusConnection::systemBus, .session = &QDBusConnection::sessionBus});
}

PackageKitUpdater::PackageKitUpdater(const Ports& ports, Buses buses)
    : ports_(ports), buses_(std::move(buses)) {}

PackageKitUpdater::~PackageKitUpdater() = default;

void PackageKitUpdater::start() { canCheckForUpdates_ = true; }

void PackageKitUpdater::resetUpdateCycleAfterShortDelay() {
    ++cycle_;
    ports_.scheduler.after(shortDelay, guard_([this, cycle = cycle_] {
                               if (cycle == cycle_) lookIfDue();
                           }));
}

void PackageKitUpdater::lookIfDue() {
    if (isAutomatic_ && *canCheckForUpdates_ && isDue()) look(false);
    ports_.scheduler.after(timeBetweenQuestions, guard_([this, cycle = cycle_] {
                               if (cycle == cycle_) lookIfDue();
                           }));
}

bool PackageKitUpdater::isDue() const {
    const auto last = ports_.defaults.data(lastLookKey);
    if (!last) return true;
    const std::string_view text = last->view();
    double seconds = 0;
    if (std::from_chars(text.data(), text.data() + text.size(), seconds).ec != std::errc()) return true;
    const double passed = ports_.clock.now().secondsSince2001 - seconds;
    // Negative: the clock was put back meanwhile.
    return passed < 0 || passed >= interval.count();
}

void PackageKitUpdater::checkForUpdates() {
    if (*canCheckForUpdates_) look(true);
}

void PackageKitUpdater::look(bool isForUser) {
    const auto now = std::to_string(static_cast<std::int64_t>(ports_.clock.now().secondsSince2001));
    ports_.defaults.setData(lastLookKey, Bytes(now));
    look_ = std::make_unique<Look>(Look{.isForUser = isForUser, .bus = buses_.system(), .step = nullptr});
    ports_.scheduler.after(patience, guard_([this, number = ++looks_] {
                               if (look_ && number == looks_) endLook(systemFailure(std::errc::timed_out));
                           }));
    const auto refreshed = guard_([this](const Result<std::vector<PackageOffer>>& result) {
        // Never from within the transaction, which goes with the next one.
        ports_.scheduler.post(guard_([this, number = looks_, result] {
            if (!look_ || number != looks_) return;
            if (result)
                getUpdates();
            else
                endLook(Failure{result.description()});
        }));
    });
    look_->step = std::make_unique<PackageKitTransaction>(look_->bus, QStringLiteral("RefreshCache"),
                                                          QVariantList{false}, refreshed);
    canCheckForUpdates_ = false;
}

void PackageKitUpdater::getUpdates() {
    const auto listed = guard_([this](const Result<std::vector<PackageOffer>>& result) {
        ports_.scheduler.post(guard_([this, number = looks_, result] {
            if (!look_ || number != looks_) return;
            if (!result) return endLook(Failure{result.description()});
            for (const PackageOffer& offer : *result)
                if (offer.name == package) return endLook(std::optional(offer.version));
            endLook(std::optional<std::string>());
        }));
    });
    look_->step = std::make_unique<PackageKitTransaction>(look_->bus, QStringLiteral("GetUpdates"),
                                                          QVariantList{noFilter}, listed);
}

void PackageKitUpdater::endLook(const Result<std::optional<std::string>>& newerVersion) {
    const auto look = std::exchange(look_, nullptr);
    if (look->isForUser || (newerVersion && *newerVersion)) {
        if (!notification_) notification_ = std::make_unique<DesktopNotification>(buses_.session());
        notification_->show(textFor(newerVersion), [this] { openUpdateProgram(buses_.session()); });
    }
    canCheckForUpdates_ = true;
}

}  // namespace nettlecap
