#include "TemporaryFolder.h"

#include "model/ClipboardContentFingerprint.h"
#include "model/ClipboardStore.h"
#include "model/Expression.h"
#include "model/SensitiveContentDetector.h"
#include "model/Text.h"
#include "platform/fake/FakeIdentifiers.h"
#include "platform/fake/FakeTime.h"
#include "platform/linux/PosixFileSystem.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <unistd.h>

// What the history costs, each beside its floor: the least that any program would have to
// do for the same. The two run in turns, so that whatever else the machine does falls on
// both alike; times_floor is the ratio of the medians.

namespace nettlecap {
namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr std::size_t entryCount = 5000;

/// About 1 KB of Portuguese, all different.
std::string text(std::size_t number) {
    std::string result = "Anotação número " + std::to_string(number) + ": ";
    while (result.size() < 1000) result += "a reunião de terça-feira começa às 15h30, na sala \"café\".\n";
    return result;
}

ClipboardEntry entry(std::size_t number) {
    return {.id = FakeIdentifiers::nth(number),
            .text = text(number),
            .createdAt = {800'000'000 - static_cast<double>(number)},
            .sourceApplication = "Editor de Texto",
            .fingerprint = ClipboardContentFingerprint::fingerprint(text::normalized(text(number)),
                                                                    ClipboardContentKind::text)};
}

PersistedState history(std::size_t count) {
    PersistedState state;
    for (std::size_t number = 0; number < count; ++number) state.entries.push_back(entry(number));
    return state;
}

/// A store on the real disk.
class DiskStore {
public:
    explicit DiskStore(const PersistedState& state) {
        const std::string document = HistoryDocument::encode(state);
        const std::vector<std::string_view> pieces = {document};
        if (!files.writeAtomically(stateFile(), pieces, folder.path())) std::abort();
    }

    Path stateFile() const { return folder.path() / "history.json"; }
    ClipboardStore open() {
        return ClipboardStore({.files = files, .clock = time, .identifiers = identifiers}, folder.path(),
                              static_cast<std::int64_t>(entryCount));
    }

    TemporaryFolder folder;
    PosixFileSystem files;
    FakeTime time;
    FakeIdentifiers identifiers;
};

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

/// Runs both in turns and reports the ratio.
template <class Floor, class Work>
void runBeside(benchmark::State& state, Floor floor, Work work) {
    std::vector<double> floors;
    std::vector<double> works;
    for ([[maybe_unused]] auto iteration : state) {
        floors.push_back(secondsOf(floor));
        works.push_back(secondsOf(work));
        state.SetIterationTime(works.back());
    }
    state.counters["floor_us"] = 1e6 * median(floors);
    state.counters["times_floor"] = median(works) / median(floors);
}

/// Floor: read the file, parse it, and for every text one NFC check, one hash and one run of
/// the card expression.
void load(benchmark::State& state) {
    DiskStore disk(history(entryCount));
    const Expression card(R"((?<!\d)(?:\d[ -]?){12,18}\d(?!\d))");
    const auto floor = [&] {
        const auto document = disk.files.read(disk.stateFile());
        const auto parsed = HistoryDocument::decode(*document);
        for (const ClipboardEntry& parsedEntry : parsed->entries) {
            const std::string content = text::normalized(*parsedEntry.text);
            benchmark::DoNotOptimize(
                ClipboardContentFingerprint::fingerprint(content, ClipboardContentKind::text));
            benchmark::DoNotOptimize(card.isFoundIn(*parsedEntry.text));
        }
    };
    runBeside(state, floor, [&] { benchmark::DoNotOptimize(disk.open().entries()->size()); });
}
BENCHMARK(load)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);

/// The same without the card expression, which the store runs on next to no text.
void loadBesideReadingAndHashing(benchmark::State& state) {
    DiskStore disk(history(entryCount));
    const auto floor = [&] {
        const auto document = disk.files.read(disk.stateFile());
        const auto parsed = HistoryDocument::decode(*document);
        for (const ClipboardEntry& parsedEntry : parsed->entries)
            benchmark::DoNotOptimize(ClipboardContentFingerprint::fingerprint(
                text::normalized(*parsedEntry.text), ClipboardContentKind::text));
    };
    runBeside(state, floor, [&] { benchmark::DoNotOptimize(disk.open().entries()->size()); });
}
BENCHMARK(loadBesideReadingAndHashing)->UseManualTime()->Iterations(30)->Unit(benchmark::kMillisecond);

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

/// Floor: write the same bytes, flush them, rename the file, flush the folder.
void save(benchmark::State& state) {
    DiskStore disk(history(entryCount));
    ClipboardStore store = disk.open();
    store.persist();
    const std::string bytes(disk.files.read(disk.stateFile())->view());
    runBeside(
        state, [&] { writeSafely(disk.folder.path(), bytes); }, [&] { store.persist(); });
}
BENCHMARK(save)->UseManualTime()->Iterations(100)->Unit(benchmark::kMillisecond);

/// Takes whatever it is given, and keeps none of it.
class WeightlessDisk final : public FileSystem {
public:
    Result<Done> createDirectory(const Path&) override { return Done(); }
    Result<Done> writeAtomically(const Path&, std::span<const std::string_view> pieces,
                                 const Path&) override {
        for (const auto piece : pieces) benchmark::DoNotOptimize(piece.data());
        return Done();
    }
    Result<Done> keepCopy(const Path&, const Path&) override { return Done(); }
    Result<Done> remove(const Path&) override { return Done(); }
    void removeLeftovers(const Path&) override {}
    std::optional<Path> applicationSupportDirectory() const override { return std::nullopt; }
    Result<Bytes> read(const Path&) const override { return Failure{"empty"}; }
    std::optional<std::int64_t> size(const Path&) const override { return std::nullopt; }
    std::int64_t sizeOfFilesIn(const Path&) const override { return 0; }
};

/// A full history to which one text after the other is added, the disk aside.
class FullHistory {
public:
    explicit FullHistory(std::size_t size)
        : store_({.files = disk_, .clock = time_, .identifiers = identifiers_}, "/historico",
                 static_cast<std::int64_t>(size)) {
        while (number_ < size) insertAnother();
        store_.persist();
    }

    void captureAnother() {
        insertAnother();
        store_.trimIfNeeded();
        store_.persist();
    }

private:
    void insertAnother() {
        ClipboardEntry added = entry(number_);
        added.createdAt = {static_cast<double>(++number_)};
        if (store_.containsFingerprint(added.fingerprint)) std::abort();
        store_.insertChronologically(std::move(added));
    }

    WeightlessDisk disk_;
    FakeTime time_;
    FakeIdentifiers identifiers_;
    ClipboardStore store_;
    std::size_t number_ = 0;
};

/// Floor: the same with a tenth of the entries.
void captureInto5000Beside500(benchmark::State& state) {
    FullHistory small(entryCount / 10);
    FullHistory large(entryCount);
    runBeside(
        state, [&] { small.captureAnother(); }, [&] { large.captureAnother(); });
}
BENCHMARK(captureInto5000Beside500)->UseManualTime()->Iterations(1000)->Unit(benchmark::kMicrosecond);

void classify(benchmark::State& state, std::string_view word) {
    std::string content;
    while (content.size() < 100) content += word;
    content.resize(100);
    for ([[maybe_unused]] auto iteration : state)
        benchmark::DoNotOptimize(SensitiveContentDetector::classify(content));
}
BENCHMARK_CAPTURE(classify, sentence, "a sala do cafe fica no fim do corredor ")
    ->Unit(benchmark::kNanosecond);
BENCHMARK_CAPTURE(classify, accents, "reunião às três, opção não é função ")->Unit(benchmark::kNanosecond);
BENCHMARK_CAPTURE(classify, token, "aB3xQ9_k")->Unit(benchmark::kNanosecond);
BENCHMARK_CAPTURE(classify, numbers, "15/03 17:30 482 ")->Unit(benchmark::kNanosecond);
BENCHMARK_CAPTURE(classify, paths, "pasta_1/arquivo-2.txt/")->Unit(benchmark::kNanosecond);
BENCHMARK_CAPTURE(classify, addresses, "Ana.Silva2024@exemplo.com.br")->Unit(benchmark::kNanosecond);
BENCHMARK_CAPTURE(classify, digits, "1234567 12345678 ")->Unit(benchmark::kNanosecond);

/// Floor: one pass of memmem over the same bytes. The first key pays for folding.
void search(benchmark::State& state) {
    StoredEntries entries;
    std::string all;
    for (std::size_t number = 0; number < entryCount; ++number) {
        entries.emplace_back(entry(number));
        all += entries.back().folded(true);
    }
    const std::string query = text::folded("Zebra");
    const auto floor = [&] {
        benchmark::DoNotOptimize(::memmem(all.data(), all.size(), query.data(), query.size()));
    };
    runBeside(state, floor, [&] {
        StoredEntries found;
        std::ranges::copy_if(entries, std::back_inserter(found), [&](const StoredEntry& stored) {
            const std::string_view folded = stored.folded(true);
            return ::memmem(folded.data(), folded.size(), query.data(), query.size()) != nullptr;
        });
        benchmark::DoNotOptimize(found.data());
    });
}
BENCHMARK(search)->UseManualTime()->Iterations(1000)->Unit(benchmark::kMicrosecond);

/// What the first key and the first save pay, once for each entry.
void foldOnce(benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        StoredEntries entries;
        for (std::size_t number = 0; number < entryCount; ++number) entries.emplace_back(entry(number));
        state.ResumeTiming();
        for (const StoredEntry& stored : entries) benchmark::DoNotOptimize(stored.folded(true).data());
    }
}
BENCHMARK(foldOnce)->Iterations(10)->Unit(benchmark::kMillisecond);

void encodeOnce(benchmark::State& state) {
    for ([[maybe_unused]] auto iteration : state) {
        state.PauseTiming();
        StoredEntries entries;
        for (std::size_t number = 0; number < entryCount; ++number) entries.emplace_back(entry(number));
        state.ResumeTiming();
        for (const StoredEntry& stored : entries) benchmark::DoNotOptimize(stored.encoded().data());
    }
}
BENCHMARK(encodeOnce)->Iterations(10)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace nettlecap
