#include "durability/Found.h"
#include "durability/Scenarios.h"
#include "platform/linux/FileUserDefaults.h"
#include "platform/linux/TemporaryFolder.h"

#include <algorithm>
#include <random>

namespace nettlecap {
namespace {

/// The power fails at every moment of a change and after it; every disk that may come of
/// that is loaded.
class PowerCuts {
public:
    PowerCuts(Path root, Path folder)
        : root_(std::move(root)), folder_(std::move(folder)), disk_(root_),
          before_(startOn(contentsBelow(root_), folder_)) {}

    void during(const std::function<void()>& change, bool mayForget = false) {
        const DiskContents first = contentsBelow(root_);
        {
            const WatchedSystemCalls watched(root_, disk_);
            change();
        }
        const Found afterwards = startOn(contentsBelow(root_), folder_);
        for (const DiskContents& left : disk_.afterAnyPowerCut()) {
            const Found found = startOn(left, folder_);
            EXPECT_TRUE(found.hasSameHistory(before_) || found.hasSameHistory(afterwards));
            expectPictures(found, folder_, before_, afterwards);
            expectNothingLeft(found, first);
            if (before_.error && !mayForget) expectDamagedDocument(found, folder_);
            if (!isGood(left)) return;
        }
        for (const DiskContents& left : disk_.afterPowerCut()) {
            const Found found = startOn(left, folder_);
            EXPECT_TRUE(found.hasSameHistory(afterwards));
            EXPECT_EQ(names(found.files), names(afterwards.files));
            if (!isGood(left)) return;
        }
        before_ = afterwards;
    }

    const Found& now() const { return before_; }
    int disks() const { return disks_; }
    int moments() const { return static_cast<int>(disk_.moments()); }

private:
    bool isGood(const DiskContents& disk) {
        ++disks_;
        EXPECT_FALSE(testing::Test::HasFailure()) << names(disk);
        return !testing::Test::HasFailure();
    }

    /// Of what is in no history nothing is left but a picture that has only just come.
    void expectNothingLeft(const Found& found, const DiskContents& first) const {
        for (const auto& [path, contents] : found.files) {
            EXPECT_FALSE(path.filename().native().starts_with('.')) << path;
            if (path.parent_path() == folder_ / "Images" && first.contains(path)) {
                EXPECT_TRUE(found.namesPicture(path)) << path << " is left";
            }
        }
    }

    Path root_;
    Path folder_;
    Disk disk_;
    Found before_;
    int disks_ = 0;
};

class PowerCutTest : public testing::TestWithParam<Scenario> {
protected:
    TemporaryFolder temporary;
    Path folder = temporary.path() / "Nettlecap";
};

TEST_P(PowerCutTest, LeavesTheOldHistoryOrTheNewOne) {
    const Scenario& scenario = GetParam();
    scenario.prepare(folder);
    Program program(folder);
    scenario.before(program);
    PowerCuts cuts(temporary.path(), folder);

    cuts.during([&] { scenario.act(program); }, scenario.name.starts_with("Purge"));

    EXPECT_EQ(cuts.now().entries, *program.store->entries());
    EXPECT_EQ(cuts.now().snippets, *program.store->snippets());
    RecordProperty("moments", cuts.moments());
    RecordProperty("disks", cuts.disks());
}

INSTANTIATE_TEST_SUITE_P(Every, PowerCutTest, testing::ValuesIn(scenarios()),
                         [](const auto& test) { return test.param.name; });

class PowerCutsInALongRunTest : public testing::TestWithParam<unsigned> {
protected:
    std::size_t upTo(std::size_t most) { return random() % (most + 1); }

    void act() {
        const double at = upTo(9) == 0 ? static_cast<double>(upTo(100)) : ++now;
        const StoredEntries entries = *program.store->entries();
        const auto any = [&] { return *entries[upTo(entries.size() - 1)]; };
        switch (upTo(9)) {
        case 0:
        case 1:
        case 2: return program.copy("texto " + std::to_string(upTo(15)), at);
        case 3:
        case 4:
        case 5: return static_cast<void>(program.copyImage("imagem " + std::to_string(upTo(9)), at));
        case 6: return entries.empty() ? void() : program.store->remove(any());
        case 7: return entries.empty() ? void() : program.store->toggleFavorite(any());
        case 8: return upTo(5) == 0 ? program.store->clearNonFavorites() : program.store->addSnippet("", "x");
        default: static_cast<void>(program.start());
        }
    }

    std::mt19937 random{GetParam()};
    TemporaryFolder temporary;
    Program program{temporary.path() / "Nettlecap"};
    double now = 100;
};

TEST_P(PowerCutsInALongRunTest, LoseNothingThatWasSavedAndLeaveNothingBehind) {
    program.start();
    PowerCuts cuts(temporary.path(), program.folder);

    for (int step = 0; step < 40 && !HasFailure(); ++step) {
        SCOPED_TRACE("step " + std::to_string(step));
        cuts.during([&] { act(); });
        EXPECT_EQ(cuts.now().entries, *program.store->entries());
    }
    RecordProperty("moments", cuts.moments());
    RecordProperty("disks", cuts.disks());
}

INSTANTIATE_TEST_SUITE_P(Seeds, PowerCutsInALongRunTest, testing::Range(1U, 11U));

TEST(PowerCutOfPreferencesTest, LeavesTheOldRecordOrTheNewOne) {
    TemporaryFolder temporary;
    const Path file = temporary.path() / "Nettlecap" / "chave";
    PosixFileSystem files;
    FileUserDefaults defaults(files, file.parent_path());
    defaults.setData("chave", Bytes("velho"));

    Disk disk(temporary.path());
    {
        const WatchedSystemCalls watched(temporary.path(), disk);
        defaults.setData("chave", Bytes("novo"));
    }

    for (const DiskContents& left : disk.afterAnyPowerCut())
        EXPECT_TRUE(left.at(file) == "velho" || left.at(file) == "novo") << left.at(file);
    EXPECT_EQ(disk.afterPowerCut(), (std::set<DiskContents>{{{file, "novo"}}}));
}

/// As if the program had never flushed a file, or a folder.
class UnflushedDisk final : public SystemCallWatcher {
public:
    UnflushedDisk(const Path& root, SystemCall forgotten) : disk_(root), forgotten_(forgotten) {}

    void after(const DiskCall& call) override {
        if (call.call != forgotten_) disk_.after(call);
    }
    std::set<DiskContents> afterPowerCut() const { return disk_.afterPowerCut(); }

private:
    Disk disk_;
    SystemCall forgotten_;
};

/// What a start may find after a saved copy when this was never done.
std::set<std::string> foundWithout(SystemCall forgotten) {
    TemporaryFolder temporary;
    Program program(temporary.path());
    program.start();
    program.copy("velho", 1);
    UnflushedDisk disk(temporary.path(), forgotten);
    {
        const WatchedSystemCalls watched(temporary.path(), disk);
        program.copy("novo", 2);
    }
    std::set<std::string> found;
    for (const DiskContents& left : disk.afterPowerCut()) {
        const Found start = startOn(left, temporary.path());
        found.insert(start.error ? "damaged" : *start.entries.front()->text);
    }
    return found;
}

TEST(PowerCutModelTest, WouldFindWhatWasNotFlushed) {
    EXPECT_EQ(foundWithout(SystemCall::changeMode), (std::set<std::string>{"novo"}));
    EXPECT_EQ(foundWithout(SystemCall::flushFile), (std::set<std::string>{"damaged", "novo"}));
    EXPECT_EQ(foundWithout(SystemCall::flushFolder), (std::set<std::string>{"novo", "velho"}));
}

}  // namespace
}  // namespace nettlecap
