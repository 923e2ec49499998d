#pragma once

#include <QDeadlineTimer>
#include <QIODevice>
#include <string_view>

namespace nettlecap {

/// The bytes of a picture, borrowed, for a decoder to read. It remembers whether the
/// decoder wanted more than there is: several decoders hand out a picture that breaks off
/// as if it were whole. And it ends when the time is up: a file can be made that takes hours
/// for a picture of one pixel.
class PictureSource final : public QIODevice {
public:
    /// Many times what the largest picture takes on a slow machine.
    static constexpr std::chrono::seconds patience{20};

    explicit PictureSource(std::string_view bytes, std::chrono::milliseconds time = patience);

    void forgetShortReads();
    bool gaveLessThanAsked() const { return gaveLess_; }
    bool gaveNothing() const { return gaveNothing_; }

    bool isSequential() const override { return false; }
    qint64 size() const override { return static_cast<qint64>(bytes_.size()); }
    bool seek(qint64 position) override;

protected:
    qint64 readData(char* to, qint64 count) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    std::string_view bytes_;
    std::size_t position_ = 0;
    QDeadlineTimer deadline_;
    bool gaveLess_ = false;
    bool gaveNothing_ = false;
};

}  // namespace nettlecap
