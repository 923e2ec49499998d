#include "ui/qml/HistoryPictures.h"

#include "pictures/ReducedPng.h"
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
constexpr std::uint64_t mostDecoded = HistoryPictures::mostPixels * 4;  // bytes

bool isPlainName(const QString& name) {
    return !name.isEmpty() && name != "." && name != ".." && !name.contains('/') && !name.contains(QChar(0));
}

/// A file can be made that takes hours for a picture of one pixel.
struct Decoding {
    bool isOver() const { return hasEnded || deadline.hasExpired(); }

    const std::atomic<bool>& hasEnded;
    QDeadlineTimer deadline{HistoryPictures::patience};
};

/// Ends with the decoding.
class TimedBuffer final : public QBuffer {
public:
    explicit TimedBuffer(const Decoding& decoding) : decoding_(decoding) {}

protected:
    qint64 readData(char* to, qint64 count) override {
        return decoding_.isOver() ? -1 : QBuffer::readData(to, count);
    }

private:
    const Decoding& decoding_;
};

/// False for what is not a file of its own, and for one larger than any copy.
bool open(QFile& file) {
    const QFileInfo info(file);
    if (!info.isFile() || info.isSymLink() || info.size() > HistoryPictures::mostBytes) return false;
    return file.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

std::string essentialsOf(QFile& file) {
    if (!file.seek(0)) return {};
    const QByteArray whole = file.read(std::min(file.size(), qint64{HistoryPictures::mostBytes}));
    return pngEssentials({whole.constData(), static_cast<std::size_t>(whole.size())});
}

/// Decoded whole. For PNG, scaling it then is quicker than a reader that scales.
QImage decoded(QFile& file, const Decoding& decoding) {
    const std::string bytes = essentialsOf(file);
    TimedBuffer buffer(decoding);
    buffer.setData(QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size())));
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

Qt::AspectRatioMode modeFor(QSize picture, QSize box, HistoryPictures::Use use) {
    const bool fills = use == HistoryPictures::Use::tile || nearlyFills(picture, box);
    return fills ? Qt::KeepAspectRatioByExpanding : Qt::KeepAspectRatio;
}

/// Scaled as it is, a picture with a palette keeps that and loses colours, and one of deep colours
/// loses what is transparent.
QImage scaled(QImage picture, QSize box, HistoryPictures::Use use) {
    if (picture.isNull()) return {};
    const auto mode = modeFor(picture.size(), box, use);
    if (mode == Qt::KeepAspectRatioByExpanding) picture = covering(picture, box);
    picture.convertTo(picture.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    return picture.scaled(box, mode, Qt::SmoothTransformation);
}

/// Qt refuses by bytes, and has eight for a pixel of deep colours.
bool isTooLarge(const PngFormat& format) {
    const bool isDeep = format.bits > 8 && format.hasColourOrAlpha;
    return format.size.pixels() * (isDeep ? 8 : 4) > mostDecoded;
}

QImage asImage(const ReducedPicture& picture) {
    const auto* bytes = reinterpret_cast<const uchar*>(picture.pixels.data());
    const auto format = picture.isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied;
    return QImage(bytes, static_cast<int>(picture.size.width), static_cast<int>(picture.size.height), format)
        .copy();
}

/// As large as `scaled` makes it; null where that is no reduction, or the picture is not plain.
QImage reduced(QFile& file, const Decoding& decoding, QSize box, HistoryPictures::Use use) {
    const auto source = [&](std::span<std::uint8_t> to) -> std::size_t {
        const auto size = static_cast<qint64>(to.size());
        const qint64 count = decoding.isOver() ? 0 : file.read(reinterpret_cast<char*>(to.data()), size);
        return static_cast<std::size_t>(std::max<qint64>(count, 0));
    };
    const auto choice = [&](const PngFormat& format) -> std::optional<PictureSize> {
        if (isTooLarge(format)) return std::nullopt;
        const QSize size(static_cast<int>(format.size.width), static_cast<int>(format.size.height));
        const QSize wanted = size.scaled(box, modeFor(size, box, use)).expandedTo({1, 1});
        return PictureSize{static_cast<std::uint32_t>(wanted.width()),
                           static_cast<std::uint32_t>(wanted.height())};
    };
    const auto picture = reducedPng(source, choice);
    return picture ? asImage(*picture) : QImage();
}

QImage shaped(const QImage& picture, QSize box, HistoryPictures::Use use) {
    QImage result(box, QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.drawImage((box.width() - picture.width()) / 2, (box.height() - picture.height()) / 2, picture);
    const bool isTile = use == HistoryPictures::Use::tile;
    const double radius = box.height() * (isTile ? tileCorner : cardCorner);
    QPainterPath outside;  // by the odd-even rule
    outside.addRect(QRectF(QPointF(0, 0), box));
    outside.addRoundedRect(QRectF(QPointF(0, 0), box), radius, radius);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(outside, Qt::black);
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
    QImageReader::setAllocationLimit(static_cast<int>(mostDecoded >> 20));
    threads_.setMaxThreadCount(2);
}

HistoryPictures::~HistoryPictures() { end(); }

void HistoryPictures::end() {
    {
        const std::lock_guard lock(starting_);
        hasEnded_ = true;
    }
    threads_.waitForDone();
}

QQuickImageResponse* HistoryPictures::requestImageResponse(const QString& id, const QSize& requestedSize) {
    auto* response = new Response;
    const std::lock_guard lock(starting_);
    if (hasEnded_) return response;
    threads_.start([this, response, name = QUrl::fromPercentEncoding(id.toUtf8()), size = requestedSize] {
        response->finish(response->isCancelled() ? QImage() : picture(name, size));
    });
    return response;
}

QImage HistoryPictures::picture(const QString& name, QSize size) const try {
    if (!isPlainName(name) || size.isEmpty()) return {};
    QFile file(QString::fromStdString(folder_.string()) + "/" + name);
    if (!open(file)) return {};
    const Decoding decoding{.hasEnded = hasEnded_};
    QImage fitting = reduced(file, decoding, size, use_);
    if (fitting.isNull() && !decoding.isOver()) fitting = scaled(decoded(file, decoding), size, use_);
    return fitting.isNull() ? QImage() : shaped(fitting, size, use_);
} catch (const std::bad_alloc&) {
    return {};
}

}  // namespace nettlecap
