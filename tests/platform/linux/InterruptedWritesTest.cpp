#include "platform/linux/ChildProcess.h"
#include "platform/linux/PosixFileSystem.h"
#include "platform/linux/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <thread>
#include <unistd.h>

namespace nettlecap {
namespace {

namespace fs = std::filesystem;

/// Writes that meet a full disk, or a process that is killed.
class InterruptedWritesTest : public testing::Test {
protected:
    static Result<Done> write(const Path& path, std::string_view contents) {
        const std::array pieces = {contents};
        return PosixFileSystem().writeAtomically(path, pieces, path.parent_path());
    }
    static std::string contents(const Path& path) {
        const auto bytes = PosixFileSystem().read(path);
        return bytes ? std::string(bytes->view()) : "(" + bytes.description() + ")";
    }
    static std::string said(const Result<Done>& result) { return result ? "done" : result.description(); }
    static std::string names(const Path& folder) {
        std::string all;
        for (const auto& entry : fs::directory_iterator(folder))
            all += entry.path().filename().string() + " ";
        return all;
    }

    /// A volume of one mebibyte, for this process alone. False: the system has none to give.
    static bool mountSmallVolume(const Path& at) {
        if (::unshare(CLONE_NEWNS) != 0 && !becomeRootOfANamespace()) return false;
        return ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
               ::mount("tmpfs", at.c_str(), "tmpfs", 0, "size=1m") == 0;
    }
    static bool becomeRootOfANamespace() {
        const auto user = "0 " + std::to_string(::geteuid()) + " 1";
        const auto group = "0 " + std::to_string(::getegid()) + " 1";
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) return false;
        std::ofstream("/proc/self/setgroups") << "deny";
        std::ofstream("/proc/self/uid_map") << user;
        std::ofstream("/proc/self/gid_map") << group;
        return ::geteuid() == 0;
    }
    /// No file of this process may become larger than half a mebibyte.
    static void limitFileSize() {
        const rlimit limit{.rlim_cur = halfMebibyte, .rlim_max = halfMebibyte};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        (void)std::signal(SIGXFSZ, SIG_IGN);
    }

    static constexpr std::size_t halfMebibyte = 524'288;

    TemporaryFolder temporary;
    Path folder = temporary.path();
    Path file = folder / "history.json";
    std::string large = std::string(4 * halfMebibyte, 'x');
};

TEST_F(InterruptedWritesTest, AFullDiskLeavesTheOldFile) {
    const auto answer = inChild([&] {
        const bool isSmall = mountSmallVolume(folder);
        if (!isSmall) limitFileSize();
        (void)write(file, "old");
        const auto written = write(file, large);
        const auto expected = isSmall ? std::errc::no_space_on_device : std::errc::file_too_large;
        const bool saidWhy = said(written) == std::make_error_code(expected).message();
        return std::string(saidWhy ? "said why" : said(written)) + ", " + contents(file) + ", " +
               names(folder);
    });

    EXPECT_EQ(answer, "said why, old, history.json ");
}

TEST_F(InterruptedWritesTest, AWriteThatIsCutShortGoesOnUntilItFails) {
    const auto answer = inChild([&] {
        limitFileSize();
        (void)write(file, "old");
        const std::vector<std::string_view> pieces(20'000, "abcdefghijklmnopqrstuvwxyz 01234");
        const auto written = PosixFileSystem().writeAtomically(file, pieces, folder);
        return said(written) + ", " + contents(file) + ", " + names(folder);
    });

    EXPECT_EQ(answer, "File too large, old, history.json ");
}

TEST_F(InterruptedWritesTest, AFileAsLargeAsTheLimitIsWritten) {
    const auto answer = inChild([&] {
        limitFileSize();
        return said(write(file, std::string_view(large).substr(0, halfMebibyte)));
    });

    EXPECT_EQ(answer, "done");
    EXPECT_EQ(contents(file).size(), halfMebibyte);
}

TEST_F(InterruptedWritesTest, KeepsACopyOnAFullDisk) {
    const auto answer = inChild([&] {
        limitFileSize();
        std::ofstream(file) << std::string_view(large).substr(0, 300'000);
        const rlimit nothing{.rlim_cur = 0, .rlim_max = 0};
        ::setrlimit(RLIMIT_FSIZE, &nothing);
        return said(PosixFileSystem().keepCopy(file, folder / "kept"));
    });

    EXPECT_EQ(answer, "done");
    EXPECT_EQ(contents(folder / "kept").size(), 300'000U);
}

TEST_F(InterruptedWritesTest, KeepsACopyOnAVolumeThatCannotLinkToTheFile) {
    const Path other = fs::exists("/dev/shm") ? Path("/dev/shm") : folder;
    const Path from = other / ("nettlecap-test-" + std::to_string(::getpid()));
    std::ofstream(from) << "unreadable";

    const auto kept = PosixFileSystem().keepCopy(from, file);
    fs::remove(from);

    EXPECT_EQ(said(kept), "done");
    EXPECT_EQ(contents(file), "unreadable");
}

/// Waits until the child is in the middle of writing this much.
bool isWriting(const Path& folder, std::uintmax_t atLeast) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (std::chrono::steady_clock::now() < deadline) {
        std::error_code error;
        for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
            if (entry->path().filename().native().starts_with(".nettlecap-") &&
                entry->file_size(error) >= atLeast && !error)
                return true;
        std::this_thread::yield();
    }
    return false;
}

TEST_F(InterruptedWritesTest, AKilledProcessLeavesTheOldFileOrTheNewOne) {
    for (std::uintmax_t round = 0; round < 16; ++round) {
        ChildProcess writer([&](const ChildProcess::Say& say) {
            for (char letter = 'a';; letter = letter == 'a' ? 'b' : 'a')
                if (write(file, std::string(large.size(), letter)) && letter == 'a') say("a");
        });
        ASSERT_EQ(writer.readUntil('a'), "a");
        ASSERT_TRUE(isWriting(folder, round * 100'000));
        writer.kill();

        const auto found = contents(file);
        ASSERT_EQ(found.size(), large.size());
        ASSERT_TRUE(found == std::string(large.size(), found.front()));
    }

    PosixFileSystem().removeLeftovers(folder);
    EXPECT_EQ(names(folder), "history.json ");
}

}  // namespace
}  // namespace nettlecap
