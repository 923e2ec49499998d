// drawIcons DRAWING FOLDER NAME: makes the icon theme's FOLDER/<size>x<size>/apps/NAME.png
// of an SVG drawing, and FOLDER/NAME.icns.
//
// An icns file is the word "icns" and the file's length, then for each size four letters, a
// length, and a PNG; numbers are big-endian, and a length counts its own eight bytes too.
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QtEndian>
#include <cstdio>

namespace {

struct IcnsEntry {
    const char* type;
    int side;
};

constexpr int sidesInTheme[] = {16, 22, 24, 32, 48, 64, 128, 256, 512};
constexpr IcnsEntry entriesInIcns[] = {{"icp4", 16},  {"icp5", 32},  {"icp6", 64},  {"ic07", 128},
                                       {"ic08", 256}, {"ic09", 512}, {"ic10", 1024}};

QByteArray drawn(QSvgRenderer& drawing, int side) {
    QImage image(side, side, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    painter.end();
    QByteArray png;
    QBuffer buffer(&png);
    image.save(&buffer, "png");
    return png;
}

QByteArray block(const char* type, const QByteArray& contents) {
    const quint32 length = qToBigEndian(static_cast<quint32>(contents.size()) + 8);
    return type + QByteArray(reinterpret_cast<const char*>(&length), 4) + contents;
}

bool write(const QString& path, const QByteArray& contents) {
    QFile file(path);
    const bool isWhole =
        file.open(QFile::WriteOnly) && file.write(contents) == contents.size() && file.flush();
    if (!isWhole)
        std::fprintf(stderr, "drawIcons: %s: %s\n", qPrintable(path), qPrintable(file.errorString()));
    return isWhole;
}

}  // namespace

int main(int count, char** arguments) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(count, arguments);
    if (count != 4) return 2;
    QSvgRenderer drawing(QString::fromLocal8Bit(arguments[1]));
    const QString folder = QString::fromLocal8Bit(arguments[2]);
    const QString name = QString::fromLocal8Bit(arguments[3]);
    if (!drawing.isValid()) return 1;

    bool isDone = true;
    for (const int side : sidesInTheme) {
        const QString apps = QStringLiteral("%1/%2x%2/apps").arg(folder).arg(side);
        isDone = QDir().mkpath(apps) && write(apps + '/' + name + ".png", drawn(drawing, side)) && isDone;
    }
    QByteArray icns;
    for (const auto& [type, side] : entriesInIcns) icns += block(type, drawn(drawing, side));
    isDone = write(folder + '/' + name + ".icns", block("icns", icns)) && isDone;
    return isDone ? 0 : 1;
}
