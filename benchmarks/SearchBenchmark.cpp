#include "Beside.h"
#include "Grid.h"

#include "model/Text.h"
#include "ui/HistoryFilter.h"
#include "ui/RowList.h"

#include <cstdlib>
#include <cstring>

// One key in the search field, once the texts have been folded, which goes on while nobody
// types. Floor: one pass of memmem over the same bytes.

namespace nettlecap {
namespace {

constexpr const char* found = "Zebra";  // in every hundredth text, behind all the rest

StoredEntries entriesOf(const HistoryShape& shape) {
    StoredEntries entries;
    std::size_t number = 0;
    for (ClipboardEntry& entry : sampleHistory(shape).entries) {
        if (++number % 100 == 0 && entry.text) *entry.text += found;
        entries.emplace_back(std::move(entry));
    }
    return entries;
}

std::vector<Uuid> idsOf(const StoredEntries& entries) {
    std::vector<Uuid> ids;
    ids.reserve(entries.size());
    for (const StoredEntry& entry : entries) ids.push_back(entry->id);
    return ids;
}

/// Every place where the query stands, so that the pass goes to the end.
std::size_t pass(std::string_view all, std::string_view query) {
    std::size_t places = 0;
    while (const void* place = ::memmem(all.data(), all.size(), query.data(), query.size())) {
        ++places;
        all.remove_prefix(static_cast<std::size_t>(static_cast<const char*>(place) - all.data()) + 1);
    }
    return places;
}

/// To the new list, and, where `toRows`, on to the rows that the view shows.
void search(benchmark::State& state, bool toRows) {
    const StoredEntries entries = entriesOf(shapeOf(state));
    std::string all;
    for (const StoredEntry& entry : entries) all += text::folded(entry->searchableText(true));
    HistoryFilter filter;
    filter.setEntries(entries);
    for (const StoredEntry& entry : entries) filter.fold(entry, true);
    const std::string query = text::folded(found);
    const FoldedQuery typed(found);
    RowList rows([](const RowKey&) -> std::unique_ptr<QObject> { std::abort(); });
    runBeside(
        state, [&] { benchmark::DoNotOptimize(pass(all, query)); },
        [&] {
            const StoredEntries matching = filter.matching(typed, true);
            benchmark::DoNotOptimize(matching.data());
            if (toRows) rows.setRows(idsOf(matching));
        },
        [&] {
            if (toRows) rows.setRows(idsOf(entries));
        });
}

void searchToList(benchmark::State& state) { search(state, false); }
BENCHMARK(searchToList)->Apply(overEveryHistory);

void searchToRows(benchmark::State& state) { search(state, true); }
BENCHMARK(searchToRows)->Apply(overEveryHistory);

}  // namespace
}  // namespace nettlecap
