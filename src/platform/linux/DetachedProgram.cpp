#include "platform/linux/DetachedProgram.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <array>
#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

namespace nettlecap::detachedProgram {
namespace {

mode_t currentMask() {
    const mode_t mask = ::umask(S_IRWXG | S_IRWXO);
    ::umask(mask);
    return mask;
}

/// Taken before main narrows it for our own files: a file manager that we start makes its
/// files as if the user had started it.
const mode_t maskOfSession = currentMask();

struct Variable {
    const char* name;
    std::optional<std::string> value;  // absent: not set
};

Variable current(const char* name) {
    const char* value = std::getenv(name);
    return {.name = name, .value = value ? std::optional<std::string>(value) : std::nullopt};
}

/// Taken before main says how Qt is to run in this process: on a desktop that has no X server for
/// it, another program would not start with that.
const std::array qtOfSession{current("QT_QPA_PLATFORM"), current("QT_QPA_UPDATE_IDLE_TIME")};

QProcessEnvironment environmentOfSession() {
    auto environment = QProcessEnvironment::systemEnvironment();
    for (const auto& [name, value] : qtOfSession) {
        const QString variable = QString::fromLatin1(name);
        if (value)
            environment.insert(variable, QString::fromStdString(*value));
        else
            environment.remove(variable);
    }
    return environment;
}

bool canRun(const Path& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error) && ::access(path.c_str(), X_OK) == 0;
}

}  // namespace

std::optional<Path> find(const std::string& name) {
    if (name.find('/') != std::string::npos) return canRun(name) ? std::optional<Path>(name) : std::nullopt;
    const char* variable = std::getenv("PATH");
    std::string_view rest = variable ? variable : "";
    while (!name.empty() && !rest.empty()) {
        const auto end = std::min(rest.find(':'), rest.size());
        const Path folder = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        // A relative folder would mean another program in every working directory.
        if (folder.is_absolute() && canRun(folder / name)) return folder / name;
    }
    return std::nullopt;
}

bool start(const Path& program, const std::vector<std::string>& arguments) {
    QProcess process;
    process.setProgram(QString::fromStdString(program));
    QStringList words;
    for (const std::string& argument : arguments) words += QString::fromStdString(argument);
    process.setArguments(words);
    process.setProcessEnvironment(environmentOfSession());
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    // The child takes the mask with it; Qt calls no modifier for one that is detached. Our own
    // files name their mode and fear no other thread that writes one meanwhile.
    const mode_t mask = ::umask(maskOfSession);
    const bool hasStarted = process.startDetached();
    ::umask(mask);
    return hasStarted;
}

}  // namespace nettlecap::detachedProgram
