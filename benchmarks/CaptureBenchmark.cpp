#include "TemporaryFolder.h"

#include "capture/ClipboardMonitor.h"
#include "model/ClipboardContentFingerprint.h"
#include "platform/fake/FakePlatform.h"
#include "platform/linux/PosixFileSystem.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

// One capture of a text of 1 KB into a full history of such texts, from the poll to the
// file safely on the disk. The floor is what no program can do without: writing the same
// bytes, flushing them, renaming the file, flushing the folder.

namespace nettlecap {
namespace {

using SteadyClock = std::chrono::steady_clock;

std::string text(std::size_t number) {
    std::string result = "Anotação número " + std::to_string(number) + ": ";
    while (result.size() < 1000) result += "a reunião de terça-feira começa às 15h30, na sala do café. ";
    result.resize(1000);  // ends in the middle of a sentence, never of a character
    while ((static_cast<unsigned char>(result.back()) & 0x80U) != 0) result.back() = '.';
    return result;
}

std::string fingerprint(std::string_view content) {
    return ClipboardContentFingerprint::fingerprint(content, ClipboardContentKind::text);
}

/// A monitor over a history that is full of texts.
class FullHistory {
public:
    FullHistory(FileSystem& files, const Path& folder, std::size_t size)
        : store_({.files = files, .clock = system_.time, .identifiers = system_.identifiers}, folder,
                 static_cast<std::int64_t>(size)),
          monitor_({.pasteboard = system_.pasteboard,
                    .scheduler = system_.time,
                    .clock = system_.time,
                    .identifiers = system_.identifiers,
                    .files = files,
                    .images = system_.images,
                    .background = system_.background,
                    .workspace = system_.workspace,
                    .events = system_.events},
                   store_, [] {}) {
        for (; copies_ < size; ++copies_)
            store_.insertChronologically({.id = system_.identifiers.next(),
                                          .text = text(copies_),
                                          .createdAt = system_.time.now(),
                                          .sourceApplication = "Editor de Texto",
                                          .fingerprint = fingerprint(text(copies_))});
        captureAnother();
    }

    void captureAnother() {
        system_.time.advance(Seconds(1));
        system_.pasteboard.copyFromOutside(text(copies_++));
        monitor_.poll();
    }

private:
    FakePlatform system_;
    ClipboardStore store_;
    ClipboardMonitor monitor_;
    std::size_t copies_ = 0;
};

void writeSafely(const Path& folder, std::string_view bytes) {
    const Path temporary = folder / ".floor";
    const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    while (!bytes.empty()) {
        const auto count = ::write(file, bytes.data(), bytes.size());
        if (count < 0) std::abort();
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    const int directory = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (::fsync(file) != 0 || ::close(file) != 0 ||
        ::rename(temporary.c_str(), (folder / "floor.json").c_str()) != 0 || ::fsync(directory) != 0 ||
        ::close(directory) != 0)
        std::abort();
}

template <class Work>
double secondsOf(Work work) {
    const auto start = SteadyClock::now();
    work();
    return Seconds(SteadyClock::now() - start).count();
}

double median(std::vector<double> values) {
    std::ranges::nth_element(values, values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2));
    return values[values.size() / 2];
}

void captureToDisk(benchmark::State& state) {
    const TemporaryFolder folder;
    PosixFileSystem files;
    FullHistory history(files, folder.path(), static_cast<std::size_t>(state.range(0)));
    const auto document = files.read(folder.path() / "history.json");
    if (!document) std::abort();
    const std::string bytes(document->view());

    // In turns, so that what else the disk does falls on both alike.
    std::vector<double> floors;
    std::vector<double> captures;
    for ([[maybe_unused]] auto iteration : state) {
        floors.push_back(secondsOf([&] { writeSafely(folder.path(), bytes); }));
        captures.push_back(secondsOf([&] { history.captureAnother(); }));
        state.SetIterationTime(captures.back());
    }
    state.counters["floor_ms"] = 1000 * median(floors);
    state.counters["capture_ms"] = 1000 * median(captures);
    state.counters["times_floor"] = median(captures) / median(floors);
    state.counters["document_KB"] = static_cast<double>(bytes.size()) / 1000;
}
BENCHMARK(captureToDisk)
    ->Arg(500)
    ->Arg(5000)
    ->UseManualTime()
    ->Iterations(200)
    ->Unit(benchmark::kMillisecond);

/// Takes whatever it is given, and keeps none of it.
class WeightlessDisk final : public FileSystem {
public:
    Result<Done> createDirectory(const Path&) override { return Done(); }
    Result<Done> writeAtomically(const Path&, std::span<const std::string_view> pieces,
                                 const Path&) override {
        for (const auto piece : pieces) bytes_ += static_cast<std::int64_t>(piece.size());
        return Done();
    }
    Result<Done> keepCopy(const Path&, const Path&) override { return Done(); }
    Result<Done> remove(const Path&) override { return Done(); }
    void removeLeftovers(const Path&) override {}
    std::optional<Path> applicationSupportDirectory() const override { return std::nullopt; }
    Result<Bytes> read(const Path&) const override { return Failure{"empty"}; }
    std::optional<std::int64_t> size(const Path&) const override { return std::nullopt; }
    std::int64_t sizeOfFilesIn(const Path&) const override { return 0; }

private:
    std::int64_t bytes_ = 0;
};

void captureWithoutDisk(benchmark::State& state) {
    WeightlessDisk disk;
    FullHistory history(disk, "/history", static_cast<std::size_t>(state.range(0)));
    for ([[maybe_unused]] auto iteration : state) history.captureAnother();
}
BENCHMARK(captureWithoutDisk)->Arg(500)->Arg(5000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace nettlecap
