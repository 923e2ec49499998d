// As little as a program with an icon in the tray can be: what starting costs at least.
#include "platform/linux/LinuxStatusItem.h"
#include "platform/linux/QtScheduler.h"

#include <QGuiApplication>
#include <cstdlib>

int main(int count, char** arguments) {
    QGuiApplication application(count, arguments);
    const auto connection = nettlecap::X11Connection::open();
    if (!connection) return EXIT_FAILURE;
    nettlecap::QtScheduler scheduler;
    nettlecap::LinuxStatusItem icon(**connection, scheduler);
    icon.setImage(
        {.size = {22, 22}, .rectangles = {{.frame = {.origin = {1, 1}, .size = {20, 20}}}}, .strokes = {}});
    return QGuiApplication::exec();
}
