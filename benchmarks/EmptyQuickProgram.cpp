// As little as a program with an icon in the tray and a Qt Quick window can be, with the
// window shown once and closed again: what holding one costs at least.
#include "platform/linux/LinuxStatusItem.h"
#include "platform/linux/QtScheduler.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>

int main(int count, char** arguments) {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QGuiApplication application(count, arguments);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const auto connection = nettlecap::X11Connection::open();
    if (!connection) return EXIT_FAILURE;
    nettlecap::QtScheduler scheduler;
    nettlecap::LinuxStatusItem icon(**connection, scheduler);
    icon.setImage(
        {.size = {22, 22}, .rectangles = {{.frame = {.origin = {1, 1}, .size = {20, 20}}}}, .strokes = {}});
    QQmlEngine engine;
    QQmlComponent component(&engine);
    component.setData("import QtQuick\nWindow { width: 430; height: 560; visible: true }", QUrl());
    auto* window = qobject_cast<QQuickWindow*>(component.create());
    if (!window) return EXIT_FAILURE;
    const auto closed = [window] {
        window->hide();
        malloc_trim(0);
        std::puts("closed");
        std::fflush(stdout);
    };
    QObject::connect(window, &QQuickWindow::frameSwapped, window, closed, Qt::QueuedConnection);
    return QGuiApplication::exec();
}
