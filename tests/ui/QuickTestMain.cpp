#include <QGuiApplication>
#include <QQuickWindow>
#include <gtest/gtest.h>

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    const QGuiApplication application(count, arguments);
    return RUN_ALL_TESTS();
}
