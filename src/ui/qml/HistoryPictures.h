#pragma once

#include "platform/Values.h"

#include <QImage>
#include <QQuickAsyncImageProvider>
#include <QThreadPool>
#include <atomic>
#include <chrono>
#include <mutex>

namespace nettlecap {

/// The pictures in one folder, decoded off the main thread by two threads of its own. An id
/// is a plain file name as it stands in an address: nothing outside the folder is ever
/// opened. The size that is asked for is the size that comes, with round corners.
class HistoryPictures : public QQuickAsyncImageProvider {
public:
    /// Above this a picture gives nothing: 256 MiB decoded.
    static constexpr std::int64_t mostPixels = 64 << 20;
    static constexpr std::int64_t mostBytes = 256 << 20;  ///< of a file, as of a copy
    /// Many times what the largest picture takes on a slow machine.
    static constexpr std::chrono::seconds patience{20};

    enum class Use {
        tile,  ///< the middle of the picture, filling a row's tile
        card,  ///< the whole picture, in the middle of the card's box
    };

    /// Raises Qt's limit on decoded pictures to the same size, in the whole process.
    HistoryPictures(Path folder, Use use);
    ~HistoryPictures() override;

    /// Breaks off what is being decoded and gives nothing from then on. To be called before the
    /// engine goes: Qt may keep a provider beyond that, and a thread of ours that still decodes
    /// while the process ends crashes it.
    void end();

    QQuickImageResponse* requestImageResponse(const QString& id, const QSize& requestedSize) override;

    /// Null for a name that is not a plain one, for what is no picture and for an absurd one.
    /// Of any thread.
    QImage picture(const QString& name, QSize size) const;

private:
    Path folder_;
    Use use_;
    std::mutex starting_;
    std::atomic<bool> hasEnded_ = false;
    QThreadPool threads_;
};

}  // namespace nettlecap
