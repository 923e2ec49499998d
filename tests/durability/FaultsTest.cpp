#include "durability/Found.h"
#include "durability/Scenarios.h"
#include "platform/linux/FileUserDefaults.h"
#include "platform/linux/TemporaryFolder.h"

#include <algorithm>
#include <array>

namespace nettlecap {
namespace {

using Course = SystemCallWatcher::Course;

/// One call goes wrong, or all from that one on.
class Fault final : public SystemCallWatcher {
public:
    struct Kind {
        const char* name;
        Course course;
        bool isLasting = false;
    };

    Fault(Kind kind, int at) : kind_(kind), at_(at) {}

    Course before(const DiskCall& call) override {
        ++calls_;
        if (calls_ != at_ && !(kind_.isLasting && calls_ > at_)) return Course::asUsual;
        if (kind_.course == Course::writesHalf && call.call != SystemCall::write) return Course::asUsual;
        if (kind_.course == Course::writesHalf && calls_ != at_) return Course::fails;
        happened_.insert(call.call);
        return kind_.course;
    }

    int calls() const { return calls_; }
    bool happenedTo(SystemCall call) const { return happened_.contains(call); }
    bool happened() const { return !happened_.empty(); }

private:
    Kind kind_;
    int at_;
    int calls_ = 0;
    std::set<SystemCall> happened_;
};

constexpr std::array<Fault::Kind, 7> kinds{{
    {"fails", Course::fails},
    {"is over quota", Course::isOverQuota},
    {"succeeds and says it failed", Course::succeedsAndSaysItFailed},
    {"writes half", Course::writesHalf},
    {"writes half, the rest fails", Course::writesHalf, true},
    {"all fail from then on", Course::fails, true},
    {"all are over quota from then on", Course::isOverQuota, true},
}};

class FaultsTest : public testing::TestWithParam<Scenario> {
protected:
    struct Machine {
        Machine() {
            GetParam().prepare(folder);
            SystemCallWatcher nothing;  // spares the flushes
            act(GetParam().before, nothing);
        }

        void act(const std::function<void(Program&)>& work, SystemCallWatcher& watcher) {
            const WatchedSystemCalls watched(temporary.path(), watcher);
            work(program);
        }

        Found start() const { return startOn(contentsBelow(temporary.path()), folder); }
        bool isOn(const Found& found) const {
            return found.entries == *program.store->entries() && found.snippets == *program.store->snippets();
        }

        TemporaryFolder temporary;
        Path folder = temporary.path() / "Nettlecap";
        Program program{folder};
    };

    /// What was on the disk is there, or what the program has; and what it says of it is true.
    static void expectNothingLost(Machine& machine, const Found& before, const Found& usual,
                                  const Fault& fault) {
        const Found found = machine.start();
        const bool isSaved = machine.isOn(found);
        EXPECT_TRUE(isSaved || found.hasSameHistory(before) || found.hasSameHistory(usual));
        const bool isUnread = fault.happenedTo(SystemCall::openFile);
        if (!isUnread && !before.error && !isSaved) {
            EXPECT_TRUE(machine.program.error().starts_with("Não foi possível ")) << machine.program.error();
        }
        const Found memory{.entries = *machine.program.store->entries()};
        expectPictures(found, machine.folder, before, memory);
        if (before.error && !mayForget()) expectDamagedDocument(found, machine.folder);
    }

    /// With the next copy everything is saved, without a restart.
    static void expectRecovery(Machine& machine, const Found& before, const Fault& fault) {
        SystemCallWatcher nothing;
        machine.act([](Program& program) { program.copy("depois", 30); }, nothing);

        EXPECT_EQ(machine.program.error(), "none");
        const Found found = machine.start();
        EXPECT_EQ(found.entries, *machine.program.store->entries());
        EXPECT_EQ(found.snippets, *machine.program.store->snippets());
        expectPictures(found, machine.folder, {}, {});
        if (before.error && !mayForget()) expectDamagedDocument(found, machine.folder);
        if (fault.happenedTo(SystemCall::openFile)) {
            expectKept(machine, before);
        } else if (!before.error && GetParam().name != "PurgeTheCopyOfADamagedFile") {
            EXPECT_FALSE(found.files.contains(machine.folder / "history.unreadable.json"));
        }
        if (!fault.happenedTo(SystemCall::remove)) expectNothingLeft(found, machine.folder);
    }

    /// A history that could not be read stands under the other name.
    static void expectKept(const Machine& machine, const Found& before) {
        const DiskContents disk = contentsBelow(machine.folder);
        const auto kept = disk.find(machine.folder / "history.unreadable.json");
        if (before.error || before.entries.empty()) return;
        ASSERT_NE(kept, disk.end());
        const auto state = HistoryDocument::decode(Bytes(kept->second));
        EXPECT_TRUE(state && state->entries.size() >= before.entries.size());
    }

    static void expectNothingLeft(const Found& found, const Path& folder) {
        if (found.files.contains(folder / "history.unreadable.json")) return;  // it may name them
        for (const auto& [path, contents] : found.files)
            if (path.parent_path() == folder / "Images") {
                EXPECT_TRUE(found.namesPicture(path)) << path.filename() << " is left";
            }
    }

    static bool mayForget() { return GetParam().name.starts_with("Purge"); }
};

TEST_P(FaultsTest, LoseNothingAndAreOverWithTheirCause) {
    Machine ideal;
    const Found before = ideal.start();
    Fault none({"none", Course::asUsual}, 0);
    ideal.act(GetParam().act, none);
    const Found usual = ideal.start();
    int faults = 0;

    for (const Fault::Kind& kind : kinds)
        for (int at = 1; at <= none.calls() && !HasFailure(); ++at) {
            SCOPED_TRACE(kind.name + std::string(" at call ") + std::to_string(at));
            Machine machine;
            Fault fault(kind, at);
            machine.act(GetParam().act, fault);
            if (!fault.happened()) continue;
            ++faults;
            expectNothingLost(machine, before, usual, fault);
            expectRecovery(machine, before, fault);
        }
    RecordProperty("faults", faults);
}

INSTANTIATE_TEST_SUITE_P(Every, FaultsTest, testing::ValuesIn(scenarios()),
                         [](const auto& test) { return test.param.name; });

/// The disk is full, or the user's part of it: told in the same words, and over with its cause.
class FullDiskTest : public testing::Test {
protected:
    class Refusing final : public SystemCallWatcher {
    public:
        explicit Refusing(Course course) : course_(course) {}
        Course before(const DiskCall& call) override {
            return call.call == SystemCall::write ? course_ : Course::asUsual;
        }

    private:
        Course course_;
    };

    std::string errorAfterACopy(Course course) {
        Refusing watcher(course);
        const WatchedSystemCalls watched(temporary.path(), watcher);
        program.copy("durante", 2);
        return program.error();
    }

    TemporaryFolder temporary;
    Path folder = temporary.path() / "Nettlecap";
    Program program{folder};
};

TEST_F(FullDiskTest, IsToldInTheSystemsWordsAndIsOverWithItsCause) {
    program.start();
    program.copy("antes", 1);
    const std::string failed = "Não foi possível salvar o histórico: ";

    EXPECT_EQ(errorAfterACopy(Course::fails), failed + "No space left on device");
    EXPECT_EQ(errorAfterACopy(Course::isOverQuota), failed + "Disk quota exceeded");
    EXPECT_EQ(startOn(contentsBelow(temporary.path()), folder).entries.size(), 1U);

    program.copy("depois", 3);
    EXPECT_EQ(program.error(), "none");
    EXPECT_EQ(startOn(contentsBelow(temporary.path()), folder).entries, *program.store->entries());
}

TEST(FaultsOfPreferencesTest, LeaveTheOldRecordOrTheNewOne) {
    int faults = 0;
    for (const Fault::Kind& kind : kinds)
        for (int at = 1, calls = 1; at <= calls; ++at) {
            SCOPED_TRACE(kind.name + std::string(" at call ") + std::to_string(at));
            TemporaryFolder temporary;
            PosixFileSystem files;
            FileUserDefaults defaults(files, temporary.path() / "Nettlecap");
            defaults.setData("chave", Bytes("velho"));
            Fault fault(kind, at);
            {
                const WatchedSystemCalls watched(temporary.path(), fault);
                defaults.setData("chave", Bytes("novo"));
            }
            calls = fault.calls();
            faults += fault.happened() ? 1 : 0;

            const auto found = defaults.data("chave");
            ASSERT_TRUE(found);
            EXPECT_TRUE(found->view() == "velho" || found->view() == "novo");
            defaults.setData("chave", Bytes("depois"));
            EXPECT_EQ(defaults.data("chave"), Bytes("depois"));
        }
    RecordProperty("faults", faults);
}

}  // namespace
}  // namespace nettlecap
