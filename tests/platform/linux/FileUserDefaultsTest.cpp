#include "platform/linux/FileUserDefaults.h"

#include "platform/contracts/UserDefaultsContract.h"
#include "platform/linux/ChildProcess.h"
#include "platform/linux/PosixFileSystem.h"
#include "platform/linux/TemporaryFolder.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <gmock/gmock.h>
#include <pwd.h>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace nettlecap {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

/// As on a full disk: no file of this process may grow.
void withoutRoom(const Task& task) {
    rlimit before{};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit nothing{.rlim_cur = 0, .rlim_max = before.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &nothing);
    task();
    ::setrlimit(RLIMIT_FSIZE, &before);
    (void)std::signal(SIGXFSZ, handler);
}

class FileUserDefaultsHarness final : public UserDefaultsHarness {
public:
    FileUserDefaultsHarness() { restart(); }

    UserDefaults& defaults() override { return *defaults_; }
    void restart() override { defaults_.emplace(files_, folder_.path() / "Nettlecap"); }
    void whileWritesFail(const Task& task) override { withoutRoom(task); }

private:
    TemporaryFolder folder_;
    PosixFileSystem files_;
    std::optional<FileUserDefaults> defaults_;
};

INSTANTIATE_TEST_SUITE_P(File, UserDefaultsContract,
                         testing::Values([]() -> std::unique_ptr<UserDefaultsHarness> {
                             return std::make_unique<FileUserDefaultsHarness>();
                         }));

class FileUserDefaultsTest : public testing::Test {
protected:
    FileUserDefaults makeDefaults() { return {files, folder}; }
    /// By somebody else's hand.
    void put(const std::string& name, std::string_view contents, fs::perms mode) const {
        fs::create_directories(folder);
        std::ofstream(folder / name) << contents;
        fs::permissions(folder / name, mode);
    }
    static std::string text(const std::optional<Bytes>& data) {
        return data ? std::string(data->view()) : "(none)";
    }
    static std::string contents(const Path& path) {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static std::vector<std::string> namesIn(const Path& path) {
        std::vector<std::string> names;
        for (const auto& entry : fs::directory_iterator(path)) names.push_back(entry.path().filename());
        std::ranges::sort(names);
        return names;
    }
    static unsigned mode(const Path& path) {
        return static_cast<unsigned>(fs::symlink_status(path).permissions());
    }

    static constexpr std::string_view key = "Nettlecap.preferences.v1";

    TemporaryFolder temporary;
    Path folder = temporary.path() / "config" / "Nettlecap";
    Path file = folder / key;
    PosixFileSystem files;
};

TEST_F(FileUserDefaultsTest, KeepsAValueInAFileThatIsNamedByItsKey) {
    auto defaults = makeDefaults();

    defaults.setData(key, Bytes("{\"autoPaste\":true}"));

    EXPECT_EQ(contents(file), "{\"autoPaste\":true}");
    EXPECT_THAT(namesIn(folder), ElementsAre("Nettlecap.preferences.v1"));
}

TEST_F(FileUserDefaultsTest, ReadsWhatSomebodyElseWrote) {
    put("Nettlecap.preferences.v1", "{}", fs::perms(0600));

    EXPECT_EQ(text(makeDefaults().data(key)), "{}");
}

TEST_F(FileUserDefaultsTest, FolderAndFilesAreForThisUserAlone) {
    const auto before = ::umask(0);
    makeDefaults().setData(key, Bytes("x"));
    ::umask(before);

    EXPECT_EQ(mode(folder), 0700U);
    EXPECT_EQ(mode(file), 0600U);
}

TEST_F(FileUserDefaultsTest, ClosesAnOpenFolderAtTheStart) {
    put("Nettlecap.preferences.v1", "x", fs::perms(0644));
    fs::permissions(folder, fs::perms(0755));
    fs::permissions(folder.parent_path(), fs::perms(0755));

    const auto defaults = makeDefaults();

    EXPECT_EQ(mode(folder), 0700U);
    EXPECT_EQ(mode(folder.parent_path()), 0755U);
    EXPECT_EQ(text(defaults.data(key)), "x");
}

TEST_F(FileUserDefaultsTest, ClosesAnOpenFileWithTheNextChange) {
    put("Nettlecap.preferences.v1", "old", fs::perms(0644));

    makeDefaults().setData(key, Bytes("new"));

    EXPECT_EQ(contents(file), "new");
    EXPECT_EQ(mode(file), 0600U);
}

TEST_F(FileUserDefaultsTest, RemovesWhatAKilledWriteLeft) {
    put("Nettlecap.preferences.v1", "x", fs::perms(0600));
    put(".nettlecap-1-1", "half", fs::perms(0600));

    const auto defaults = makeDefaults();

    EXPECT_THAT(namesIn(folder), ElementsAre("Nettlecap.preferences.v1"));
}

TEST_F(FileUserDefaultsTest, AFailedWriteLeavesNoTrace) {
    auto defaults = makeDefaults();

    withoutRoom([&] { defaults.setData(key, Bytes("x")); });

    EXPECT_THAT(namesIn(folder), IsEmpty());
}

TEST_F(FileUserDefaultsTest, AFolderThatIsReadOnlyKeepsTheOldValue) {
    const auto answer = asOrdinaryUser([&] {
        auto defaults = makeDefaults();
        defaults.setData(key, Bytes("old"));
        fs::permissions(folder, fs::perms(0500));
        defaults.setData(key, Bytes("new"));
        defaults.setData("other", Bytes("new"));
        const auto kept = text(defaults.data(key)) + ", " + text(defaults.data("other"));
        fs::permissions(folder, fs::perms(0700));
        return kept;
    });

    EXPECT_EQ(answer, "old, (none)");
}

TEST_F(FileUserDefaultsTest, WithoutAFolderNothingIsKept) {
    const auto answer = asOrdinaryUser([&] {
        fs::create_directory(folder.parent_path());
        fs::permissions(folder.parent_path(), fs::perms(0500));
        auto defaults = makeDefaults();
        defaults.setData(key, Bytes("x"));
        fs::permissions(folder.parent_path(), fs::perms(0700));
        const auto before = text(defaults.data(key));
        defaults.setData(key, Bytes("y"));
        return before + ", " + text(defaults.data(key));
    });

    EXPECT_EQ(answer, "(none), y");
}

TEST_F(FileUserDefaultsTest, MakesItsFolderAgain) {
    auto defaults = makeDefaults();
    fs::remove_all(folder);

    defaults.setData(key, Bytes("x"));

    EXPECT_EQ(text(defaults.data(key)), "x");
    EXPECT_EQ(mode(folder), 0700U);
}

TEST_F(FileUserDefaultsTest, AUserWithoutAHomeHasNoValues) {
    FileUserDefaults defaults(files, std::nullopt);

    defaults.setData(key, Bytes("x"));

    EXPECT_EQ(text(defaults.data(key)), "(none)");
    EXPECT_THAT(namesIn(temporary.path()), IsEmpty());
}

TEST_F(FileUserDefaultsTest, RefusesAKeyThatIsNoPlainFileName) {
    auto defaults = makeDefaults();
    std::ofstream(temporary.path() / "config" / "outside") << "untouched";
    const std::string absolute = temporary.path() / "config" / "outside";

    for (const std::string& wrong :
         {std::string(), std::string("."), std::string(".."), std::string("../outside"), std::string("a/b"),
          std::string("/"), absolute, std::string("a\0b", 3), std::string(".nettlecap-1"),
          std::string(".hidden")}) {
        defaults.setData(wrong, Bytes("x"));
        EXPECT_EQ(text(defaults.data(wrong)), "(none)") << wrong;
    }

    EXPECT_THAT(namesIn(folder), IsEmpty());
    EXPECT_THAT(namesIn(temporary.path() / "config"), ElementsAre("Nettlecap", "outside"));
    EXPECT_EQ(contents(absolute), "untouched");
}

TEST_F(FileUserDefaultsTest, AKeyTooLongForAFileNameKeepsNothing) {
    auto defaults = makeDefaults();
    const std::string tooLong(256, 'x');

    defaults.setData(tooLong, Bytes("x"));

    EXPECT_EQ(text(defaults.data(tooLong)), "(none)");
    EXPECT_THAT(namesIn(folder), IsEmpty());
}

TEST_F(FileUserDefaultsTest, WhatIsNoRegularFileIsNoValue) {
    fs::create_directories(folder / "folder");
    std::ofstream(temporary.path() / "secret") << "secret";
    fs::create_symlink(temporary.path() / "secret", folder / "link");
    auto defaults = makeDefaults();

    EXPECT_EQ(text(defaults.data("folder")), "(none)");
    EXPECT_EQ(text(defaults.data("link")), "(none)");

    defaults.setData("link", Bytes("x"));
    EXPECT_EQ(contents(temporary.path() / "secret"), "secret");
    EXPECT_EQ(text(defaults.data("link")), "x");
}

TEST_F(FileUserDefaultsTest, AKilledProcessLeavesTheOldValueOrTheNewOne) {
    constexpr std::size_t size = 1'000'000;
    for (int round = 0; round < 8; ++round) {
        ChildProcess writer([&](const ChildProcess::Say& say) {
            auto defaults = makeDefaults();
            for (char letter = 'a';; letter = letter == 'a' ? 'b' : 'a') {
                defaults.setData(key, Bytes(std::string(size, letter)));
                if (letter == 'a') say("a");
            }
        });
        ASSERT_EQ(writer.readUntil('a'), "a");
        writer.kill();

        const auto defaults = makeDefaults();
        const auto found = text(defaults.data(key));
        ASSERT_EQ(found.size(), size);
        ASSERT_EQ(found, std::string(size, found.front()));
        ASSERT_THAT(namesIn(folder), ElementsAre("Nettlecap.preferences.v1"));
    }
}

class FolderOfUserTest : public testing::Test {
protected:
    /// In an environment of these two alone; absent: not set.
    static std::string folder(const char* configHome, const char* home) {
        return inChild([=]() -> std::string {
            ::clearenv();
            if (configHome) ::setenv("XDG_CONFIG_HOME", configHome, 1);
            if (home) ::setenv("HOME", home, 1);
            return FileUserDefaults::folderOfUser().value_or("absent");
        });
    }
};

TEST_F(FolderOfUserTest, IsWhereTheEnvironmentSays) {
    EXPECT_EQ(folder("/config/ana", "/home/ana"), "/config/ana/Nettlecap");
}

TEST_F(FolderOfUserTest, IsInTheHomeFolderOtherwise) {
    EXPECT_EQ(folder(nullptr, "/home/ana"), "/home/ana/.config/Nettlecap");
    EXPECT_EQ(folder("", "/home/ana"), "/home/ana/.config/Nettlecap");
    EXPECT_EQ(folder("relative/path", "/home/ana"), "/home/ana/.config/Nettlecap");
}

TEST_F(FolderOfUserTest, AsksForTheHomeFolderWhereTheEnvironmentDoesNotSay) {
    const passwd* user = ::getpwuid(::geteuid());
    ASSERT_NE(user, nullptr);

    EXPECT_EQ(folder(nullptr, nullptr), std::string(user->pw_dir) + "/.config/Nettlecap");
}

}  // namespace
}  // namespace nettlecap
