#include "ui/qml/HistoryPictures.h"

#include "platform/PngEssentials.h"

#include <QBuffer>
#include <QDeadlineTimer>
#include <QFileInfo>
#include <QImageReader>
#include <QPainter>
#include <QPainterPath>
#include <QUrl>
#include <new>

namespace nettlecap {

namespace {

/// Of the height: a tile of 38 points has corners of 7, the card's box of 240 has 12.
constexpr double tileCorner = 7.0 / 38.0;
constexpr double cardCorner = 12.0 / 240.0;

bool isPlainName(const QString& name) {
    return !name.isEmpty() && name != "." && name != ".." && !name.contains('/') && !name.contains(QChar(0));
}

/// Ends when the time is up: a file can be made that takes hours for a picture of one pixel.
class TimedBuffer final : public QBuffer {
public:
    explicit TimedBuffer(std::chrono::milliseconds time) : deadline_(time) {}

protected:
    qint64 readData(char* to, qint64 count) override {
        return deadline_.hasExpired() ? -1 : QBuffer::readData(to, count);
    }

private:
    QDeadlineTimer deadline_;
};

/// Absent for what is not a file of its own, and for one larger than any copy.
std::optional<QByteArray> essentialsOf(const QString& path) {
    QFile file(path);
    const QFileInfo info(file);
    if (!info.isFile() || info.isSymLink() || info.size() > HistoryPictures::mostBytes) return std::nullopt;
    if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
    const QByteArray whole = file.read(info.size());
    const std::string_view bytes(whole.constData(), static_cast<std::size_t>(whole.size()));
    return QByteArray::fromStdString(pngEssentials(bytes));
}

/// Decoded whole and scaled then: for PNG that is quicker than a reader that scales.
QImage decoded(const QString& file) {
    const auto bytes = essentialsOf(file);
    if (!bytes) return {};
    TimedBuffer buffer(HistoryPictures::patience);
    buffer.setData(*bytes);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer, "png");  // no other plugin is asked, nor loaded
    if (!reader.canRead()) return {};
    const QSize size = reader.size();
    if (std::int64_t{size.width()} * size.height() > HistoryPictures::mostPixels) return {};
    return reader.read();
}

/// A picture that would leave no more than slivers of its box free, such as one of a wide
/// screen, fills it.
bool nearlyFills(QSize picture, QSize box) {
    constexpr double sliver = 0.04;  // of the box
    const QSizeF fitted = QSizeF(picture).scaled(box, Qt::KeepAspectRatio);
    return fitted.width() >= box.width() * (1 - sliver) && fitted.height() >= box.height() * (1 - sliver);
}

/// What of a picture is seen where it covers the box. Scaled as a whole, one that is long and
/// narrower than the box would become many times as large as it was.
QImage covering(const QImage& picture, QSize box) {
    if (picture.width() >= box.width() && picture.height() >= box.height()) return picture;
    const QSize kept = box.scaled(picture.size(), Qt::KeepAspectRatio).expandedTo({1, 1});
    return picture.copy(
        {{(picture.width() - kept.width()) / 2, (picture.height() - kept.height()) / 2}, kept});
}

QImage shaped(const QImage& picture, QSize size, HistoryPictures::Use use) {
    const bool isTile = use == HistoryPictures::Use::tile;
    const bool fills = isTile || nearlyFills(picture.size(), size);
    const QImage scaled =
        fills ? covering(picture, size).scaled(size, Qt::KeepAspectRatioByExpanding, Qt::SmoothTransformation)
              : picture.scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QImage result(size, QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath outline;
    const double radius = size.height() * (isTile ? tileCorner : cardCorner);
    outline.addRoundedRect(QRectF(QPointF(0, 0), size), radius, radius);
    const QPoint corner((size.width() - scaled.width()) / 2, (size.height() - scaled.height()) / 2);
    QPainterPath place;
    place.addRect(QRectF(corner, scaled.size()));
    painter.setBrushOrigin(corner);
    painter.fillPath(outline.intersected(place), QBrush(scaled));
    return result;
}

class Response : public QQuickImageResponse {
public:
    QQuickTextureFactory* textureFactory() const override {
        return picture_.isNull() ? nullptr : QQuickTextureFactory::textureFactoryForImage(picture_);
    }
    /// Says nothing of the picture: the engine writes it to the log.
    QString errorString() const override {
        return picture_.isNull() ? QStringLiteral("no picture") : QString();
    }
    void cancel() override { isCancelled_ = true; }

    bool isCancelled() const { return isCancelled_; }
    /// On the thread that decoded; `finished` makes it visible to the main one.
    void finish(QImage picture) {
        picture_ = std::move(picture);
        Q_EMIT finished();
    }

private:
    QImage picture_;
    std::atomic<bool> isCancelled_ = false;
};

}  // namespace

HistoryPictures::HistoryPictures(Path folder, Use use) : folder_(std::move(folder)), use_(use) {
    constexpr std::int64_t bytesOfPixel = 4;
    QImageReader::setAllocationLimit(static_cast<int>(mostPixels * bytesOfPixel >> 20));
    threads_.setMaxThreadCount(2);
}

HistoryPictures::~HistoryPictures() {
    threads_.clear();
    threads_.waitForDone();
}

QQuickImageResponse* HistoryPictures::requestImageResponse(const QString& id, const QSize& requestedSize) {
    auto* response = new Response;
    threads_.start([this, response, name = QUrl::fromPercentEncoding(id.toUtf8()), size = requestedSize] {
        response->finish(response->isCancelled() ? QImage() : picture(name, size));
    });
    return response;
}

QImage HistoryPictures::picture(const QString& name, QSize size) const try {
    if (!isPlainName(name) || size.isEmpty()) return {};
    const QImage whole = decoded(QString::fromStdString(folder_.string()) + "/" + name);
    return whole.isNull() ? QImage() : shaped(whole, size, use_);
} catch (const std::bad_alloc&) {
    return {};
}

}  // namespace nettlecap
