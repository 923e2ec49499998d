#pragma once

#include "platform/Values.h"

#include <QImage>
#include <QQuickAsyncImageProvider>
#include <QThreadPool>

namespace nettlecap {

/// Thumbnails of the pictures in one folder, decoded off the main thread by two threads of
/// its own. An id is a plain file name as it stands in an address: nothing outside the folder
/// is ever opened.
class HistoryPictures : public QQuickAsyncImageProvider {
public:
    /// Above this a picture gives nothing: 256 MiB decoded.
    static constexpr std::int64_t mostPixels = 64 << 20;

    /// Raises Qt's limit on decoded pictures to the same size, in the whole process.
    explicit HistoryPictures(Path folder);
    ~HistoryPictures() override;

    QQuickImageResponse* requestImageResponse(const QString& id, const QSize& requestedSize) override;

    /// Null for a name that is not a plain one, for what is no picture and for an absurd one.
    /// Of any thread.
    QImage thumbnail(const QString& name, QSize size) const;

private:
    Path folder_;
    QThreadPool threads_;
};

}  // namespace nettlecap
