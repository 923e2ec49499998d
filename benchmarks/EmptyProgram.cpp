// As little as a program with an icon in the tray can be: what starting costs at least.
#include <QApplication>
#include <QPixmap>
#include <QSystemTrayIcon>

int main(int count, char** arguments) {
    QApplication application(count, arguments);
    QPixmap picture(22, 22);
    picture.fill(Qt::white);
    QSystemTrayIcon icon{QIcon(picture)};
    icon.show();
    return QApplication::exec();
}
