// As little as a program with an icon in the tray and a Qt Quick window can be, with the
// window shown once and closed again: what holding one costs at least.
#include <QApplication>
#include <QPixmap>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QSystemTrayIcon>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>

int main(int count, char** arguments) {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QApplication application(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    QPixmap picture(22, 22);
    picture.fill(Qt::white);
    QSystemTrayIcon icon{QIcon(picture)};
    icon.show();
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
    return QApplication::exec();
}
