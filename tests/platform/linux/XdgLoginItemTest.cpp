#include "platform/linux/XdgLoginItem.h"

#include "platform/contracts/LoginItemContract.h"
#include "platform/linux/ChildProcess.h"
#include "platform/linux/DesktopEntry.h"
#include "platform/linux/Environment.h"
#include "platform/linux/PosixFileSystem.h"
#include "platform/linux/QtApplication.h"
#include "platform/linux/TemporaryFolder.h"

#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

namespace nettlecap {
namespace {

namespace fs = std::filesystem;

constexpr const char* entryName = "com.nettlecap.Nettlecap.desktop";

std::string contentsOf(const Path& path) {
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

Path makeProgram(const Path& path) {
    std::ofstream(path) << "#!/bin/sh\n";
    fs::permissions(path, fs::perms(0755));
    return path;
}

class XdgLoginItemHarness final : public LoginItemHarness {
public:
    XdgLoginItemHarness() { restart(); }

    LoginItem& loginItem() override { return *item_; }
    void restart() override { item_.emplace(files_, XdgLoginItem::Places{autostart_, program_}); }
    void forbid() override { std::ofstream(entry_, std::ios::app) << "Hidden=true\n"; }
    void allow() override {
        std::string entry = contentsOf(entry_);
        entry.resize(entry.find("Hidden="));
        std::ofstream(entry_) << entry;
    }
    void removeProgram() override { fs::remove(program_); }
    /// Where the user may not write: root, whom no mode binds, acts as somebody else.
    void whileChangesFail(const Task& task) override {
        const Path locked = fs::exists(autostart_) ? autostart_ : folder_.path();
        const auto mode = fs::status(locked).permissions();
        fs::permissions(locked, fs::perms(0555));
        const auto before = static_cast<uid_t>(::setfsuid(::geteuid() == 0 ? 65534 : ::geteuid()));
        task();
        ::setfsuid(before);
        fs::permissions(locked, mode);
    }

private:
    TemporaryFolder folder_;
    PosixFileSystem files_;
    Path autostart_ = folder_.path() / "autostart";
    Path entry_ = autostart_ / entryName;
    Path program_ = makeProgram(folder_.path() / "nettlecap");
    std::optional<XdgLoginItem> item_;
};

INSTANTIATE_TEST_SUITE_P(Xdg, LoginItemContract, testing::Values([]() -> std::unique_ptr<LoginItemHarness> {
                             return std::make_unique<XdgLoginItemHarness>();
                         }));

class XdgLoginItemTest : public testing::Test {
protected:
    XdgLoginItem item() { return itemFor(program); }
    XdgLoginItem itemFor(const Path& startable) {
        return XdgLoginItem(files, {.folder = folder, .program = startable});
    }
    LoginItemStatus statusWith(std::string_view lines) {
        fs::create_directories(folder);
        std::ofstream(entry) << "[Desktop Entry]\nType=Application\nName=Nettlecap\n" << lines;
        return item().status();
    }
    std::string runnable() const { return "Exec=" + program.string() + "\n"; }
    static unsigned mode(const Path& path) { return static_cast<unsigned>(fs::status(path).permissions()); }

    TemporaryFolder temporary;
    Path folder = temporary.path() / "config" / "autostart";
    Path entry = folder / entryName;
    Path program = makeProgram(temporary.path() / "nettlecap");
    PosixFileSystem files;
};

TEST_F(XdgLoginItemTest, WritesAnEntryThatStartsTheProgram) {
    ASSERT_TRUE(item().registerItem());

    EXPECT_EQ(contentsOf(entry),
              "[Desktop Entry]\nType=Application\nName=Nettlecap\nIcon=com.nettlecap.Nettlecap\n"
              "Exec=\"" +
                  program.string() + "\"\nTerminal=false\n");
    EXPECT_TRUE(DesktopEntry::parse(contentsOf(entry), MessageLocale()));
}

TEST_F(XdgLoginItemTest, EveryWayToSwitchItOffIsRespected) {
    for (const char* line : {"Hidden=true\n", "X-GNOME-Autostart-enabled=false\n",
                             "X-MATE-Autostart-enabled=false\n", "Hidden = true\n"}) {
        EXPECT_EQ(statusWith(runnable() + line), LoginItemStatus::requiresApproval) << line;
        const std::string before = contentsOf(entry);
        EXPECT_TRUE(item().registerItem());
        EXPECT_EQ(contentsOf(entry), before);
    }
}

TEST_F(XdgLoginItemTest, WhatIsSwitchedOnOrSaidElsewhereDoesNotSwitchItOff) {
    for (const char* line : {"Hidden=false\n", "X-GNOME-Autostart-enabled=true\n", "NoDisplay=true\n",
                             "#Hidden=true\n", "[Other]\nHidden=true\n"})
        EXPECT_EQ(statusWith(runnable() + line), LoginItemStatus::enabled) << line;
}

TEST_F(XdgLoginItemTest, SwitchedOffCountsAlsoWhereTheProgramIsGone) {
    EXPECT_EQ(statusWith("Exec=/nowhere/nettlecap\nHidden=true\n"), LoginItemStatus::requiresApproval);
}

TEST_F(XdgLoginItemTest, AnEntryThatStartsNothingIsNotFoundAndIsRepaired) {
    for (const std::string lines : {"", "Exec=\n", "Exec=/nowhere/nettlecap\n", "Exec=\"\n"}) {
        EXPECT_EQ(statusWith(lines), LoginItemStatus::notFound) << lines;

        EXPECT_TRUE(item().registerItem());

        EXPECT_EQ(item().status(), LoginItemStatus::enabled);
    }
}

TEST_F(XdgLoginItemTest, AnEntryThatTheUserChangedStaysEnabled) {
    EXPECT_EQ(statusWith("Exec=env LANG=pt_BR.UTF-8 nettlecap\n"), LoginItemStatus::enabled);
}

TEST_F(XdgLoginItemTest, AnyPathThatIsTextCanBeStarted) {
    for (const char* name : {"two words", "quo\"te", "back\\slash", "dol$lar`tick`", "100%", "%%u", "a=b",
                             "tab\tline\nreturn\r", "ação 📋", "semi;colon#"}) {
        auto strange = itemFor(makeProgram(temporary.path() / name));

        EXPECT_TRUE(strange.registerItem()) << name;

        EXPECT_EQ(strange.status(), LoginItemStatus::enabled) << name;
        const auto exec = DesktopEntry::valueOf("Exec", contentsOf(entry));
        EXPECT_EQ(DesktopEntry::executableOf(exec.value_or("")), temporary.path() / name);
    }
}

TEST_F(XdgLoginItemTest, GlibStartsTheProgramUnderAnyNameWithoutAPercentSign) {
    for (const char* name : {"two words", "quo\"te", "back\\slash", "dol$lar`tick`", "ação 📋"}) {
        const Path told = temporary.path() / "told";
        const Path strange = makeProgram(temporary.path() / name);
        std::ofstream(strange, std::ios::app) << ": > '" << told.string() << "'\n";
        ASSERT_TRUE(itemFor(strange).registerItem());

        // As most desktops do. Where the entry says %%, as it must, GLib looks for a file of that name.
        const int status = std::system(("gio launch '" + entry.string() + "' 2>/dev/null").c_str());

        EXPECT_EQ(status, 0) << name;
        EXPECT_TRUE(runMainLoopUntil([&] { return fs::exists(told); })) << name;
        fs::remove(told);
    }
}

TEST_F(XdgLoginItemTest, APathThatIsNoTextIsRefused) {
    auto strange = itemFor(makeProgram(temporary.path() / "n\xFFo"));

    const auto registered = strange.registerItem();

    ASSERT_FALSE(registered);
    EXPECT_EQ(registered.description(), "Invalid or incomplete multibyte or wide character");
    EXPECT_EQ(strange.status(), LoginItemStatus::notRegistered);
}

TEST_F(XdgLoginItemTest, LeavesTheRightsOfTheDesktopsFolderAsTheyAre) {
    fs::create_directories(folder);
    fs::permissions(folder, fs::perms(0755));

    ASSERT_TRUE(item().registerItem());

    EXPECT_EQ(mode(folder), 0755U);
    EXPECT_EQ(mode(entry), 0600U);
}

TEST_F(XdgLoginItemTest, LeavesNothingButTheEntry) {
    fs::create_directories(folder);
    std::ofstream(folder / ".nettlecap-1-1") << "half";

    ASSERT_TRUE(item().registerItem());

    EXPECT_EQ(std::distance(fs::directory_iterator(folder), {}), 1);
}

TEST_F(XdgLoginItemTest, ReadsAnEntryThatIsKeptElsewhere) {
    statusWith(runnable() + "Hidden=true\n");
    fs::rename(entry, temporary.path() / "kept");
    fs::create_symlink(temporary.path() / "kept", entry);

    EXPECT_EQ(item().status(), LoginItemStatus::requiresApproval);
}

TEST_F(XdgLoginItemTest, ALinkThatLeadsNowhereIsNoEntry) {
    fs::create_directories(folder);
    fs::create_symlink("/nowhere", entry);
    EXPECT_EQ(item().status(), LoginItemStatus::notRegistered);

    EXPECT_TRUE(item().unregisterItem());

    EXPECT_FALSE(fs::is_symlink(entry));
}

TEST_F(XdgLoginItemTest, WhatCannotBeReadIsUnknown) {
    fs::create_directories(entry);
    EXPECT_EQ(item().status(), LoginItemStatus::unknown);
    fs::remove(entry);

    EXPECT_EQ(statusWith(runnable() + std::string(256 * 1024, '\n')), LoginItemStatus::unknown);
}

TEST_F(XdgLoginItemTest, RemovesAnEntryThatIsThereAndNoOther) {
    ASSERT_TRUE(item().registerItem());
    std::ofstream(folder / "other.desktop") << "x";

    EXPECT_TRUE(item().unregisterItem());
    EXPECT_TRUE(item().unregisterItem());

    EXPECT_TRUE(fs::exists(folder / "other.desktop"));
    EXPECT_FALSE(fs::exists(entry));
}

TEST_F(XdgLoginItemTest, SaysTheSystemsOwnWordsForWhatWentWrong) {
    std::ofstream(temporary.path() / "config") << "no folder";

    const auto registered = item().registerItem();

    ASSERT_FALSE(registered);
    EXPECT_EQ(registered.description(), "Not a directory");
}

TEST_F(XdgLoginItemTest, AUserWithoutAHomeHasNone) {
    XdgLoginItem homeless(files, {.folder = std::nullopt, .program = program});

    EXPECT_EQ(homeless.status(), LoginItemStatus::notFound);
    EXPECT_FALSE(homeless.registerItem());
    EXPECT_TRUE(homeless.unregisterItem());
}

TEST_F(XdgLoginItemTest, IsInTheConfigurationFolderAndStartsThisVeryProgram) {
    const Environment configuration("XDG_CONFIG_HOME", temporary.path() / "mine");

    ASSERT_TRUE(XdgLoginItem(files).registerItem());

    const Path made = temporary.path() / "mine" / "autostart" / entryName;
    EXPECT_EQ(DesktopEntry::valueOf("Exec", contentsOf(made)),
              '"' + fs::read_symlink("/proc/self/exe").string() + '"');
}

}  // namespace
}  // namespace nettlecap
