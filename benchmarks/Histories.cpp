#include "Histories.h"

#include "model/ClipboardContentFingerprint.h"
#include "model/Text.h"

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <unistd.h>

namespace nettlecap {

namespace {

constexpr std::size_t pictureEvery = 10;
constexpr double newestDate = 800'000'000;  // seconds since 2001

ClipboardEntry textEntry(std::size_t number, std::size_t bytes) {
    std::string text = sampleText(number, bytes);
    std::string fingerprint =
        ClipboardContentFingerprint::fingerprint(text::normalized(text), ClipboardContentKind::text);
    return {.text = std::move(text), .fingerprint = std::move(fingerprint)};
}

ClipboardEntry pictureEntry(std::size_t number) {
    return {.kind = ClipboardContentKind::image,
            .imageFilename = "figura" + std::to_string(number) + ".png",
            .fingerprint = "image:" + std::to_string(number)};
}

bool isPicture(const HistoryShape& shape, std::size_t number) {
    return shape.hasPictures && number % pictureEvery == pictureEvery - 1;
}

void writePlainly(const Path& path, std::string_view bytes) {
    std::ofstream file(path, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) std::abort();
}

}  // namespace

std::string sampleText(std::size_t number, std::size_t bytes) {
    constexpr std::string_view sentence = "a reunião de terça-feira começa às 15h30, na sala \"café\".\n";
    std::string result = "Anotação número " + std::to_string(number) + ": ";
    while (result.size() < bytes) result += sentence;
    result.resize(bytes);  // ends in the middle of a sentence, never of a character
    while ((static_cast<unsigned char>(result.back()) & 0x80U) != 0) result.pop_back();
    result.resize(bytes, '.');
    return result;
}

PersistedState sampleHistory(const HistoryShape& shape) {
    PersistedState state;
    state.entries.reserve(shape.entries);
    for (std::size_t number = 0; number < shape.entries; ++number) {
        ClipboardEntry entry =
            isPicture(shape, number) ? pictureEntry(number) : textEntry(number, shape.bytes);
        entry.id = FakeIdentifiers::nth(1'000'000 + number);  // not those that captures get
        entry.createdAt = {newestDate - static_cast<double>(number)};
        entry.sourceApplication = "Editor de Texto";
        state.entries.push_back(std::move(entry));
    }
    return state;
}

DiskHistory::DiskHistory(const HistoryShape& shape) : shape_(shape) {
    const PersistedState state = sampleHistory(shape);
    const Path images = folder.path() / "Images";
    std::filesystem::create_directory(images);
    for (const ClipboardEntry& entry : state.entries)
        if (entry.imageFilename) writePlainly(images / *entry.imageFilename, *entry.imageFilename);
    writePlainly(stateFile(), HistoryDocument::encode(state));
}

std::string DiskHistory::document() const {
    const auto contents = files.read(stateFile());
    if (!contents) std::abort();
    return std::string(contents->view());
}

ClipboardStore DiskHistory::open() {
    return ClipboardStore({.files = files, .clock = time, .identifiers = identifiers}, folder.path(),
                          static_cast<std::int64_t>(shape_.entries));
}

WeightlessDisk::WeightlessDisk(const HistoryShape& shape)
    : document_(HistoryDocument::encode(sampleHistory(shape))) {}

Result<Done> WeightlessDisk::writeAtomically(const Path&, std::span<const std::string_view> pieces,
                                             const Path&) {
    for (const auto piece : pieces) bytes_ += static_cast<std::int64_t>(piece.size());
    return Done();
}

FullHistory::FullHistory(FileSystem& files, const Path& folder, const HistoryShape& shape)
    : store_({.files = files, .clock = system_.time, .identifiers = system_.identifiers}, folder,
             static_cast<std::int64_t>(shape.entries)),
      monitor_({.pasteboard = system_.pasteboard,
                .scheduler = system_.time,
                .clock = system_.time,
                .identifiers = system_.identifiers,
                .files = files,
                .images = system_.images,
                .background = system_.background,
                .workspace = system_.workspace,
                .events = system_.events},
               store_, [] {}),
      bytes_(shape.bytes), copies_(shape.entries) {
    system_.time.advance(Seconds(newestDate));
    captureAnother();
    if (store_.entries()->size() != shape.entries || newest() != sampleText(shape.entries, bytes_))
        std::abort();
}

void FullHistory::captureAnother() {
    system_.time.advance(Seconds(1));
    system_.pasteboard.copyFromOutside(sampleText(copies_++, bytes_));
    monitor_.poll();
}

std::string_view FullHistory::newest() const { return *store_.entries()->front()->text; }

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

}  // namespace nettlecap
