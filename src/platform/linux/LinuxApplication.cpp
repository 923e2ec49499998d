#include "platform/linux/LinuxApplication.h"

#include <QGuiApplication>

namespace nettlecap {

namespace {

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

}  // namespace

void LinuxApplication::setIcon(std::string_view name, std::string_view fallbackSymbol) {
    QIcon icon = drawings_(text(name));
    if (icon.isNull()) icon = drawings_(text(fallbackSymbol));
    QGuiApplication::setWindowIcon(icon);
}

void LinuxApplication::terminate() {
    // Not quit(): that asks the windows first, and a panel only hides when it is asked to close.
    QCoreApplication::exit();
}

}  // namespace nettlecap
