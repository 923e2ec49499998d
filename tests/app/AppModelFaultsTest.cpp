#include "app/AppModelFixture.h"
#include "app/FaultyFileSystem.h"
#include "model/HistoryDocument.h"

#include <algorithm>

namespace nettlecap {
namespace {

using Fault = FaultyFileSystem::Fault;

constexpr std::array faults{Fault::fails, Fault::leavesHalf, Fault::succeedsAndSaysItFailed, Fault::allFail};

/// A model whose disk is bad.
class FaultyMachine {
public:
    static constexpr const char* text = "public.utf8-plain-text";

    FaultyMachine() {
        AppPreferences preferences;
        preferences.maxHistoryItems = 10;
        preferences.save(system.defaults);
    }

    void start() {
        const Platform whole = system.platform();
        const Platform platform{.clock = whole.clock,
                                .scheduler = whole.scheduler,
                                .background = whole.background,
                                .identifiers = whole.identifiers,
                                .files = files,
                                .defaults = whole.defaults,
                                .pasteboard = whole.pasteboard,
                                .images = whole.images,
                                .text = whole.text,
                                .workspace = whole.workspace,
                                .events = whole.events,
                                .hotKeys = whole.hotKeys,
                                .keyboard = whole.keyboard,
                                .application = whole.application};
        model.reset();
        model = std::make_unique<AppModel>(
            platform,
            AppModel::Windows{.hud = std::make_unique<FakeNavigationHUD>(windows),
                              .searchPanel = std::make_unique<FakeSearchPanel>(windows)},
            AppModel::Services{});
        model->start();
    }

    void copy(std::string_view type, std::string bytes) {
        system.pasteboard.copyFromOutside({{PasteboardType(type), Bytes(std::move(bytes))}});
        system.time.advance(1ms);
    }
    void copyPicture(const std::string& name) { copy("public.png", "\x89PNG\r\n\x1a\n" + name); }
    void copyTIFF(const std::string& name) {
        copy("public.tiff", "TIFF:" + name);
        system.background.runNext();
        system.time.advance(0s);
    }
    /// Ten entries, the oldest a picture, and a saved text.
    void fill() {
        start();
        copyPicture("velha");
        for (int n = 1; n <= 8; ++n) copy(text, "texto " + std::to_string(n));
        copyPicture("nova");
        model->store().toggleFavorite(*model->store().entries()->at(3));
        model->store().addSnippet("Saudação", "Olá");
    }

    const StoredEntries& entries() const { return *model->store().entries(); }
    std::string error() const { return model->store().persistenceError()->value_or("none"); }
    std::optional<PersistedState> onDisk() const {
        const auto contents = system.files.contents(folder / "history.json");
        if (!contents) return PersistedState();
        const auto state = HistoryDocument::decode(Bytes(*contents));
        return state ? std::optional(*state) : std::nullopt;
    }
    bool isSaved() const {
        const auto disk = onDisk();
        return disk && std::ranges::equal(disk->entries, entries(),
                                          [](const auto& a, const auto& b) { return a == *b; });
    }
    /// Of the entries whose pictures are not whole.
    std::size_t lostPictures() const {
        return static_cast<std::size_t>(std::ranges::count_if(entries(), [&](const StoredEntry& entry) {
            const auto file = model->store().imageFile(*entry);
            return file && !system.files.contents(*file);
        }));
    }

    const Path folder = "/home/ana/.local/share/Nettlecap";
    FakePlatform system;
    FaultyFileSystem files{system.files};
    SeenWindows windows;
    std::unique_ptr<AppModel> model;
};

struct Step {
    std::string name;
    std::function<void(FaultyMachine&)> act;
    bool isStart = false;
};

void PrintTo(const Step& step, std::ostream* out) { *out << step.name; }

std::vector<Step> steps() {
    return {
        {"Start", [](auto& machine) { machine.start(); }, true},
        {"CopyText", [](auto& machine) { machine.copy(FaultyMachine::text, "novo"); }},
        {"CopyTextAgain", [](auto& machine) { machine.copy(FaultyMachine::text, "texto 1"); }},
        {"CopyPicture", [](auto& machine) { machine.copyPicture("novíssima"); }},
        {"CopyPictureAgain", [](auto& machine) { machine.copyPicture("velha"); }},
        {"CopyAndConvertPicture", [](auto& machine) { machine.copyTIFF("novíssima"); }},
        {"PutPictureBack", [](auto& machine) { machine.model->copy(*machine.entries().back()); }},
        {"ToggleFavorite", [](auto& machine) { machine.model->toggleFavorite(*machine.entries().front()); }},
        {"RemovePicture",
         [](auto& machine) { machine.model->store().remove(ClipboardEntry(*machine.entries().back())); }},
        {"ChangePreferences",
         [](auto& machine) {
             machine.model->updatePreferences([](auto& preferences) { preferences.autoPaste = true; });
         }},
        {"Purge", [](auto& machine) { machine.model->purgeHistory(); }},
        {"AddSnippet", [](auto& machine) { machine.model->store().addSnippet("t", "c"); }},
        {"RemoveSnippet",
         [](auto& machine) {
             machine.model->store().removeSnippet(SavedSnippet(machine.model->store().snippets()->front()));
         }},
    };
}

class AppModelFaultsTest : public testing::TestWithParam<Step> {};

TEST_P(AppModelFaultsTest, LoseNothingAndAreOverWithTheirCause) {
    int injected = 0;
    for (const Fault fault : faults)
        for (int at = 1, calls = 1; at <= calls && !HasFailure(); ++at, ++injected) {
            SCOPED_TRACE("fault " + std::to_string(static_cast<int>(fault)) + " at call " +
                         std::to_string(at));
            FaultyMachine machine;
            machine.fill();
            const auto before = machine.onDisk();
            machine.files.plan(fault, at);

            GetParam().act(machine);
            calls = machine.files.calls();
            EXPECT_EQ(machine.lostPictures(), 0U);
            const auto disk = machine.onDisk();
            ASSERT_TRUE(disk);
            // What could not be read at the start is empty without a word.
            if (!machine.isSaved() && !GetParam().isStart) {
                EXPECT_EQ(*disk, *before);
                EXPECT_EQ(machine.error(),
                          std::string("Não foi possível salvar o histórico: ") + FaultyFileSystem::words);
            }

            machine.files.plan(Fault::none, 0);
            machine.copy(FaultyMachine::text, "depois");
            EXPECT_EQ(machine.error(), "none");
            EXPECT_TRUE(machine.isSaved());
            EXPECT_EQ(machine.entries().front()->text, "depois");
            EXPECT_EQ(machine.lostPictures(), 0U);
        }
    RecordProperty("faults", injected);
}

INSTANTIATE_TEST_SUITE_P(Every, AppModelFaultsTest, testing::ValuesIn(steps()),
                         [](const auto& test) { return test.param.name; });

TEST(AppModelOnABadDiskTest, SaysThatAPictureCouldNotBeSavedAndTakesItTheNextTime) {
    FaultyMachine machine;
    machine.start();
    machine.files.plan(Fault::allFail, 1);
    machine.copyTIFF("flor");
    EXPECT_EQ(machine.error(), std::string("Não foi possível salvar a imagem: ") + FaultyFileSystem::words);
    EXPECT_TRUE(machine.entries().empty());

    machine.files.plan(Fault::none, 0);
    machine.copyTIFF("flor");

    EXPECT_EQ(machine.entries().size(), 1U);
    EXPECT_TRUE(machine.isSaved());
    EXPECT_EQ(machine.error(), "none");
}

TEST(AppModelOnABadDiskTest, LeavesThePasteboardAloneWhereAPictureCannotBeRead) {
    FaultyMachine machine;
    machine.fill();
    const auto before = machine.system.pasteboard.changeCount();
    machine.files.plan(Fault::fails, 1);

    machine.model->copy(*machine.entries().back());

    EXPECT_EQ(machine.model->statusMessage()->value_or(""), "Não foi possível recuperar este item");
    EXPECT_EQ(machine.system.pasteboard.changeCount(), before);
}

}  // namespace
}  // namespace nettlecap
