#include "platform/linux/PackageKitUpdater.h"

#include "platform/linux/DesktopNotification.h"
#include "platform/linux/DetachedProgram.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/PackageKitTransaction.h"
#include "platform/linux/PackageOrigin.h"

#include <charconv>

namespace nettlecap {
namespace {

constexpr const char* package = "nettlecap";
constexpr std::string_view lastLookKey = "Nettlecap.lastUpdateCheck";
constexpr Seconds timeBetweenQuestions{60 * 60};  // whether it is due again
constexpr qulonglong noFilter = 1 << 1;           // PK_FILTER_ENUM_NONE

struct UpdateProgram {
    std::string name;
    std::vector<std::string> arguments;
};

/// What the desktop has for installing updates. Absent: nothing that we know.
std::optional<UpdateProgram> updateProgram() {
    for (const auto& program : {UpdateProgram{"gnome-software", {"--mode=updates"}},
                                UpdateProgram{"plasma-discover", {"--mode", "update"}},
                                UpdateProgram{"gpk-update-viewer", {}}, UpdateProgram{"update-manager", {}}})
        if (detachedProgram::find(program.name)) return program;
    return std::nullopt;
}

void open(const UpdateProgram& program) {
    // It may have gone since the user was told; then there is nothing to open.
    if (const auto path = detachedProgram::find(program.name))
        (void)detachedProgram::start(*path, program.arguments);
}

DesktopNotification::Text textFor(const Result<std::optional<std::string>>& newerVersion,
                                  bool canBeInstalled) {
    if (!newerVersion)
        return {.summary = QStringLiteral("Não foi possível buscar atualizações"),
                .body = QString::fromStdString(newerVersion.description()),
                .button = {}};
    if (!*newerVersion)
        return {.summary = QStringLiteral("O Nettlecap está atualizado"), .body = {}, .button = {}};
    return {.summary = QStringLiteral("Atualização disponível"),
            .body = QStringLiteral("Nettlecap ") + QString::fromStdString(**newerVersion),
            .button = canBeInstalled ? QStringLiteral("Instalar") : QString()};
}

}  // namespace

/// One check from beginning to end.
struct PackageKitUpdater::Look {
    bool isForUser;
    QDBusConnection bus;
    std::optional<Failure> refreshFailure;
    std::unique_ptr<PackageKitTransaction> step;
};

std::unique_ptr<SoftwareUpdater> PackageKitUpdater::make(const Ports& ports) {
    if (!isFromPackage(package)) return nullptr;
    return std::make_unique<PackageKitUpdater>(
        ports, Buses{.system = &QDBusConnection::systemBus, .session = &QDBusConnection::sessionBus});
}

PackageKitUpdater::PackageKitUpdater(const Ports& ports, Buses buses)
    : ports_(ports), buses_(std::move(buses)) {}

PackageKitUpdater::~PackageKitUpdater() = default;

void PackageKitUpdater::resetUpdateCycleAfterShortDelay() {
    ports_.scheduler.after(shortDelay, guard_([this, cycle = ++cycle_] {
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
    look_ = std::make_unique<Look>(
        Look{.isForUser = isForUser, .bus = buses_.system(), .refreshFailure = {}, .step = nullptr});
    ports_.scheduler.after(patience, guard_([this, number = ++looks_] {
                               if (look_ && number == looks_) endLook(systemFailure(std::errc::timed_out));
                           }));
    look_->step = std::make_unique<PackageKitTransaction>(
        look_->bus,
        PackageKitTransaction::Work{
            .method = QStringLiteral("RefreshCache"), .arguments = {false}, .isForUser = isForUser},
        [this](const auto& refreshed) {
            if (!refreshed) look_->refreshFailure = Failure{refreshed.description()};
            listUpdates();
        });
    canCheckForUpdates_ = false;
}

/// Also where nothing could be refreshed: the user may not have the right to, and the system
/// does so by itself from time to time.
void PackageKitUpdater::listUpdates() {
    look_->step = std::make_unique<PackageKitTransaction>(
        look_->bus,
        PackageKitTransaction::Work{
            .method = QStringLiteral("GetUpdates"), .arguments = {noFilter}, .isForUser = look_->isForUser},
        [this](const auto& listed) {
            if (listed)
                for (const PackageOffer& offer : *listed)
                    if (offer.name == package) return endLook(std::optional(offer.version));
            if (look_->refreshFailure) return endLook(Failure(*look_->refreshFailure));
            if (!listed) return endLook(Failure{listed.description()});
            endLook(std::optional<std::string>());
        });
}

void PackageKitUpdater::endLook(const NewerVersion& newer) {
    const auto look = std::exchange(look_, nullptr);
    if (look->isForUser || (newer && *newer)) show(newer, look->isForUser);
    canCheckForUpdates_ = true;
}

/// Where the desktop shows no notices, who asked sees the program for updates instead.
void PackageKitUpdater::show(const NewerVersion& newer, bool isForUser) {
    if (!notification_) notification_ = std::make_unique<DesktopNotification>(buses_.session());
    const auto program = updateProgram();
    const Task openProgram = [program] {
        if (program) open(*program);
    };
    notification_->show(textFor(newer, program.has_value()),
                        {.toButton = openProgram, .toNobodySeeingIt = isForUser ? openProgram : Task()});
}

}  // namespace nettlecap
