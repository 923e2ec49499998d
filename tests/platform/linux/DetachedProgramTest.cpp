#include "platform/linux/DetachedProgram.h"

#include "platform/linux/Environment.h"
#include "platform/linux/QtApplication.h"
#include "platform/linux/TemporaryFolder.h"

#include <cerrno>
#include <fstream>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace nettlecap {
namespace {

namespace fs = std::filesystem;

class DetachedProgramTest : public testing::Test {
protected:
    Path makeProgram(const Path& path, const std::string& script = "") const {
        fs::create_directories(path.parent_path());
        std::ofstream(path) << "#!/bin/sh\n" << script;
        fs::permissions(path, fs::perms(0755));
        return path;
    }
    std::string told() const {
        std::ifstream file(folder / "told");
        return {std::istreambuf_iterator<char>(file), {}};
    }

    TemporaryFolder temporary;
    Path folder = temporary.path();
};

TEST_F(DetachedProgramTest, FindsANameInThePath) {
    makeProgram(folder / "second" / "tool");
    makeProgram(folder / "third" / "tool");
    const Environment path("PATH", (folder / "first").string() + "::" + (folder / "second").string() + ":" +
                                       (folder / "third").string());

    EXPECT_EQ(detachedProgram::find("tool"), folder / "second" / "tool");
    EXPECT_EQ(detachedProgram::find("other"), std::nullopt);
    EXPECT_EQ(detachedProgram::find(""), std::nullopt);
}

TEST_F(DetachedProgramTest, TakesAPathAsItStands) {
    const Path program = makeProgram(folder / "tool");

    EXPECT_EQ(detachedProgram::find(program), program);
    EXPECT_EQ(detachedProgram::find(folder / "other"), std::nullopt);
}

TEST_F(DetachedProgramTest, PassesOverWhatNobodyCanRun) {
    std::ofstream(folder / "data") << "x";
    fs::create_directory(folder / "directory");

    EXPECT_EQ(detachedProgram::find(folder / "data"), std::nullopt);
    EXPECT_EQ(detachedProgram::find(folder / "directory"), std::nullopt);
}

TEST_F(DetachedProgramTest, DoesNotLookWhereverWeHappenToBe) {
    const Path before = fs::current_path();
    makeProgram(folder / "tool");
    fs::current_path(folder);
    const Environment path("PATH", ".::");

    EXPECT_EQ(detachedProgram::find("tool"), std::nullopt);
    fs::current_path(before);
}

TEST_F(DetachedProgramTest, StartsItWithItsArgumentsAndNeverHasToWaitForIt) {
    const Path program =
        makeProgram(folder / "tool", "printf '%s|' \"$@\" > \"$1/half\"; mv \"$1/half\" \"$1/told\"\n");

    EXPECT_TRUE(detachedProgram::start(program, {folder, "two words", "\"$HOME\""}));

    EXPECT_TRUE(runMainLoopUntil([&] { return fs::exists(folder / "told"); }));
    EXPECT_EQ(told(), folder.string() + "|two words|\"$HOME\"|");
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

TEST_F(DetachedProgramTest, ItHasThePermissionsMaskOfTheSession) {
    const mode_t session = ::umask(077);
    const Path program = makeProgram(folder / "tool", "umask > \"$1/half\"; mv \"$1/half\" \"$1/told\"\n");

    EXPECT_TRUE(detachedProgram::start(program, {folder}));

    EXPECT_TRUE(runMainLoopUntil([&] { return fs::exists(folder / "told"); }));
    EXPECT_EQ(std::stoul(told(), nullptr, 8), session);
    ::umask(session);
}

TEST_F(DetachedProgramTest, ItHasTheEnvironmentButNotWhatQtIsToldInThisProcess) {
    const auto value = [](const char* name) -> std::string {
        const char* found = std::getenv(name);
        return found ? found : "none";
    };
    const Path program =
        makeProgram(folder / "tool",
                    "printf '%s|' \"$OTHER\" \"${QT_QPA_PLATFORM-none}\" \"${QT_QPA_UPDATE_IDLE_TIME-none}\""
                    " > \"$1/half\"; mv \"$1/half\" \"$1/told\"\n");
    const std::string atStart = value("QT_QPA_PLATFORM") + "|" + value("QT_QPA_UPDATE_IDLE_TIME") + "|";
    const Environment other("OTHER", "kept");
    const Environment platform("QT_QPA_PLATFORM", "ours");
    const Environment idleTime("QT_QPA_UPDATE_IDLE_TIME", "0");

    EXPECT_TRUE(detachedProgram::start(program, {folder}));

    EXPECT_TRUE(runMainLoopUntil([&] { return fs::exists(folder / "told"); }));
    EXPECT_EQ(told(), "kept|" + atStart);
}

TEST_F(DetachedProgramTest, SaysThatItCannotBeStarted) {
    EXPECT_FALSE(detachedProgram::start(folder / "other", {}));
}

}  // namespace
}  // namespace nettlecap
