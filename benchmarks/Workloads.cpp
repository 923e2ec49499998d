#include "Histories.h"

#include "app/AppFakes.h"
#include "app/AppModel.h"
#include "model/SensitiveContentDetector.h"
#include "ui/HistoryFilter.h"
#include "ui/RowList.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>

// Fixed pieces of work, so that check-instructions can count what is executed in each; the one
// that the argument names is done once. Nothing here depends on the time, on chance or on where
// something lies in memory.

namespace nettlecap {

namespace {

const HistoryShape shape{.entries = 5000, .bytes = 1000, .hasPictures = true};
constexpr int secretTexts = 3;
constexpr FakeHotKeyService::Shortcut previous{18, hotKeyModifier::command};

/// Of a hundred bytes or a little more each.
std::vector<std::string> textsToClassify() {
    std::vector<std::string> texts;
    for (const std::string_view word :
         {"a sala do cafe fica no fim ", "reunião às três, opção ", "aB3xQ9_k", "15/03 17:30 482 ",
          "1234567 12345678 ", "123456789012345 ", "1-2-3 4 ", "pasta_1/arquivo-2.txt/", "漢字",
          "https://exemplo.com.br/Pagina1?", "Ana.Silva2024@exemplo.com.br"}) {
        std::string& text = texts.emplace_back();
        while (text.size() < 100) text += word;
    }
    return texts;
}

void expect(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "nettlecap_workloads: %s\n", what);
    std::exit(EXIT_FAILURE);
}

/// A started model over that history, on a system in memory.
struct ModelOnFakes {
    ModelOnFakes() {
        const Path folder = ClipboardStore::defaultBaseDirectory(system.files);
        const std::string document = HistoryDocument::encode(sampleHistory(shape));
        const std::string_view pieces[] = {document};
        expect(static_cast<bool>(system.files.createDirectory(folder)), "no folder");
        expect(static_cast<bool>(system.files.writeAtomically(folder / "history.json", pieces, folder)),
               "no file");
        AppPreferences preferences;
        preferences.maxHistoryItems = static_cast<std::int64_t>(shape.entries);
        preferences.save(system.defaults);
        app = std::make_unique<AppModel>(
            system.platform(),
            AppModel::Windows{.hud = std::make_unique<FakeNavigationHUD>(windows),
                              .searchPanel = std::make_unique<FakeSearchPanel>(windows)},
            AppModel::Services{});
        app->start();
    }

    FakePlatform system;
    SeenWindows windows;
    std::unique_ptr<AppModel> app;
};

}  // namespace

// What is counted is what happens within these.
namespace workload {

[[gnu::noinline]] ClipboardStore load(DiskHistory& disk) { return disk.open(); }

[[gnu::noinline]] void capture(FullHistory& history) { history.captureAnother(); }

[[gnu::noinline]] int classify(const std::vector<std::string>& texts) {
    int sensitive = 0;
    for (const std::string& text : texts) sensitive += SensitiveContentDetector::classify(text).has_value();
    return sensitive;
}

[[gnu::noinline]] StoredEntries search(HistoryFilter& filter, const char* typed) {
    return filter.matching(FoldedQuery(typed), true);
}

[[gnu::noinline]] void updateRows(RowList& rows, const std::vector<Uuid>& ids) { rows.setRows(ids); }

[[gnu::noinline]] void navigate(ModelOnFakes& model) {
    model.system.hotKeys.press(previous);
    model.system.time.advance(Seconds(0));
}

}  // namespace workload

namespace {

void load() {
    DiskHistory disk(shape);
    expect(workload::load(disk).entries()->size() == shape.entries, "not all was loaded");
}

void capture() {
    DiskHistory disk(shape);
    FullHistory history(disk.files, disk.folder.path(), shape);
    workload::capture(history);
    expect(history.newest() == sampleText(shape.entries + 1, shape.bytes), "nothing was captured");
}

void classify() { expect(workload::classify(textsToClassify()) == secretTexts, "other texts are secrets"); }

void search() {
    StoredEntries entries;
    for (ClipboardEntry& entry : sampleHistory(shape).entries) entries.emplace_back(std::move(entry));
    HistoryFilter filter;
    filter.setEntries(entries);
    for (const StoredEntry& entry : entries) filter.fold(entry, true);
    expect(workload::search(filter, "Número 12").size() > 10, "nothing was found");
}

void updateRows() {
    RowList rows([](const RowKey&) { return std::unique_ptr<QObject>(); });
    std::vector<Uuid> ids;
    for (const ClipboardEntry& entry : sampleHistory(shape).entries) ids.push_back(entry.id);
    rows.setRows(ids);
    std::rotate(ids.begin(), ids.end() - 1, ids.end());  // the last one goes to the top
    ids.pop_back();
    workload::updateRows(rows, ids);
    expect(rows.keys().front().id == ids.front() && rows.keys().size() == ids.size(), "the rows are others");
}

void navigate() {
    ModelOnFakes model;
    workload::navigate(model);
    expect(model.windows.card && model.windows.card->position == 2, "no card");
}

}  // namespace

}  // namespace nettlecap

int main(int count, char** arguments) {
    using namespace nettlecap;
    const std::map<std::string_view, void (*)()> workloads = {
        {"load", load},     {"capture", capture},       {"classify", classify},
        {"search", search}, {"updateRows", updateRows}, {"navigate", navigate}};
    const auto chosen = count == 2 ? workloads.find(arguments[1]) : workloads.end();
    expect(chosen != workloads.end(), "no such workload");
    chosen->second();
    return EXIT_SUCCESS;
}
