#include "platform/linux/PosixFileSystem.h"

#include "platform/contracts/FileSystemContract.h"
#include "platform/linux/ChildProcess.h"
#include "platform/linux/TemporaryFolder.h"

#include <algorithm>
#include <fcntl.h>
#include <fstream>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace nettlecap {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> namesIn(const Path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
}

class PosixFileSystemHarness final : public FileSystemHarness {
public:
    FileSystem& files() override { return files_; }
    Path root() const override { return folder_.path(); }
    void leaveLeftover(const Path& folder) override {
        std::ofstream(folder / (".nettlecap-1-" + std::to_string(++leftovers_))) << "half";
    }
    int leftovers(const Path& folder) const override {
        return static_cast<int>(std::ranges::count_if(
            namesIn(folder), [](const auto& name) { return name.starts_with(".nettlecap-"); }));
    }

private:
    TemporaryFolder folder_;
    PosixFileSystem files_;
    int leftovers_ = 0;
};

INSTANTIATE_TEST_SUITE_P(Posix, FileSystemContract,
                         testing::Values([]() -> std::unique_ptr<FileSystemHarness> {
                             return std::make_unique<PosixFileSystemHarness>();
                         }));

class PosixFileSystemTest : public testing::Test {
protected:
    Result<Done> write(const Path& path, std::string_view contents) {
        const std::array pieces = {contents};
        return files.writeAtomically(path, pieces, folder);
    }
    std::string contents(const Path& path) const {
        const auto bytes = files.read(path);
        return bytes ? std::string(bytes->view()) : "(" + bytes.description() + ")";
    }
    static std::string said(const Result<Done>& result) { return result ? "done" : result.description(); }
    static unsigned mode(const Path& path) {
        struct stat status {};
        return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0U;
    }

    TemporaryFolder temporary;
    Path folder = temporary.path();
    Path file = folder / "history.json";
    PosixFileSystem files;
};

TEST_F(PosixFileSystemTest, WritesFilesThatNobodyElseMayRead) {
    const auto before = ::umask(0);
    const auto written = write(file, "x");
    ::umask(before);

    ASSERT_TRUE(written);
    EXPECT_EQ(mode(file), 0600U);
}

TEST_F(PosixFileSystemTest, TheMaskOfTheProcessDoesNotLockTheOwnerOut) {
    const Path nested = folder / "a" / "b";
    const auto answer = asOrdinaryUser([&] {
        ::umask(0777);
        const auto made = files.createDirectory(nested);
        const auto written = write(nested / "file", "x");
        return said(made) + ", " + said(written) + ", " + contents(nested / "file");
    });

    EXPECT_EQ(answer, "done, done, x");
    EXPECT_EQ(mode(folder / "a"), 0700U);
    EXPECT_EQ(mode(nested), 0700U);
    EXPECT_EQ(mode(nested / "file"), 0600U);
}

TEST_F(PosixFileSystemTest, ReplacesAFileThatOthersMightRead) {
    std::ofstream(file) << "old";
    ::chmod(file.c_str(), 0644);

    ASSERT_TRUE(write(file, "new"));

    EXPECT_EQ(mode(file), 0600U);
}

TEST_F(PosixFileSystemTest, TakesOthersRightsAwayFromItsOwnFolderOnly) {
    fs::create_directories(folder / "parent" / "Nettlecap");
    ::chmod((folder / "parent").c_str(), 0755);
    ::chmod((folder / "parent" / "Nettlecap").c_str(), 0755);

    ASSERT_TRUE(files.createDirectory(folder / "parent" / "Nettlecap"));

    EXPECT_EQ(mode(folder / "parent"), 0755U);
    EXPECT_EQ(mode(folder / "parent" / "Nettlecap"), 0700U);
}

TEST_F(PosixFileSystemTest, AFolderOfSomebodyElseServesAsItIs) {
    fs::create_directory(folder / "shared");
    ::chmod((folder / "shared").c_str(), 0777);

    const auto answer = asOrdinaryUser([&] { return said(files.createDirectory(folder / "shared")); });

    EXPECT_EQ(answer, "done");
}

TEST_F(PosixFileSystemTest, WritesInAFolderBehindASymbolicLink) {
    fs::create_directory(folder / "elsewhere");
    fs::create_directory_symlink(folder / "elsewhere", folder / "Nettlecap");

    ASSERT_TRUE(files.createDirectory(folder / "Nettlecap"));
    ASSERT_TRUE(write(folder / "Nettlecap" / "file", "x"));

    EXPECT_EQ(contents(folder / "elsewhere" / "file"), "x");
    EXPECT_EQ(files.sizeOfFilesIn(folder / "Nettlecap"), 1);
}

TEST_F(PosixFileSystemTest, DoesNotReadThroughASymbolicLink) {
    std::ofstream(folder / "secret") << "secret";
    fs::create_symlink(folder / "secret", file);

    EXPECT_FALSE(files.read(file));
    EXPECT_FALSE(files.open(file));
    EXPECT_EQ(files.size(file), std::nullopt);
    EXPECT_EQ(files.sizeOfFilesIn(folder), 6);
}

TEST_F(PosixFileSystemTest, ReplacesASymbolicLinkAndNotItsTarget) {
    std::ofstream(folder / "target") << "untouched";
    fs::create_symlink(folder / "target", file);

    ASSERT_TRUE(write(file, "x"));

    EXPECT_EQ(contents(folder / "target"), "untouched");
    EXPECT_FALSE(fs::is_symlink(file));
}

TEST_F(PosixFileSystemTest, DoesNotFollowASymbolicLinkToAFolderWhenItSumsUp) {
    fs::create_directory(folder / "Images");
    std::ofstream(folder / "outside") << "12345";
    fs::create_directory_symlink(folder, folder / "Images" / "loop");

    EXPECT_EQ(files.sizeOfFilesIn(folder / "Images"), 0);
}

TEST_F(PosixFileSystemTest, RemovesASymbolicLinkAndNotItsTarget) {
    std::ofstream(folder / "target") << "x";
    fs::create_symlink(folder / "target", file);

    ASSERT_TRUE(files.remove(file));

    EXPECT_EQ(namesIn(folder), std::vector<std::string>{"target"});
}

TEST_F(PosixFileSystemTest, DoesNotWaitForTheWriterOfAFifo) {
    ASSERT_EQ(::mkfifo(file.c_str(), 0600), 0);

    EXPECT_FALSE(files.read(file));
    EXPECT_FALSE(files.open(file));
    EXPECT_EQ(files.size(file), std::nullopt);
    EXPECT_EQ(files.sizeOfFilesIn(folder), 0);
}

TEST_F(PosixFileSystemTest, DoesNotReadADeviceOrASocket) {
    const int server = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
    file.native().copy(address.sun_path, sizeof address.sun_path - 1);
    ASSERT_EQ(::bind(server, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);

    EXPECT_FALSE(files.read(file));
    EXPECT_FALSE(files.read("/dev/zero"));
    ::close(server);
}

TEST_F(PosixFileSystemTest, DoesNotOpenWhatCannotBeRead) {
    const auto opened = files.open("/proc/self/mem");  // which opens, and has nothing at its beginning

    ASSERT_FALSE(opened);
    EXPECT_EQ(opened.description(), std::make_error_code(std::errc::io_error).message());
}

TEST_F(PosixFileSystemTest, ReadsWhatIsLeftOfAFileThatWasCutShortSinceItWasOpened) {
    std::ofstream(file) << "um longo texto";
    const auto opened = files.open(file);
    ASSERT_TRUE(opened);

    ASSERT_EQ(::truncate(file.c_str(), 2), 0);

    EXPECT_EQ((*opened)()->view(), "um");
}

TEST_F(PosixFileSystemTest, RefusesToReadMoreThanTwoGibibytes) {
    std::ofstream(file) << "x";
    ASSERT_EQ(::truncate(file.c_str(), (off_t{2} << 30) + 1), 0);

    const auto bytes = files.read(file);

    ASSERT_FALSE(bytes);
    EXPECT_EQ(bytes.description(), std::make_error_code(std::errc::file_too_large).message());
    EXPECT_EQ(files.open(file).description(), bytes.description());
    EXPECT_EQ(files.size(file), (std::int64_t{2} << 30) + 1);
}

TEST_F(PosixFileSystemTest, DoesNotReadWhatTheUserMayNotRead) {
    std::ofstream(file) << "x";
    ::chmod(file.c_str(), 0600);

    const auto answer = asOrdinaryUser([&] {
        ::chmod(file.c_str(), 0);  // where the user is the owner
        return contents(file);
    });

    EXPECT_EQ(answer, "(Permission denied)");
}

TEST_F(PosixFileSystemTest, SaysThatAFolderIsReadOnly) {
    fs::create_directory(folder / "locked");
    ::chmod((folder / "locked").c_str(), 0555);

    const auto answer = asOrdinaryUser([&] {
        const std::array<std::string_view, 1> pieces = {"x"};
        const auto written = files.writeAtomically(folder / "locked" / "file", pieces, folder / "locked");
        const auto made = files.createDirectory(folder / "locked" / "Images");
        return said(written) + ", " + said(made);
    });

    EXPECT_EQ(answer, "Permission denied, Permission denied");
}

TEST_F(PosixFileSystemTest, SaysThatAFolderHasVanished) {
    ASSERT_TRUE(files.createDirectory(folder / "Nettlecap"));
    fs::remove(folder / "Nettlecap");

    const std::array<std::string_view, 1> pieces = {"x"};
    const auto written = files.writeAtomically(folder / "Nettlecap" / "file", pieces, folder / "Nettlecap");

    EXPECT_EQ(said(written), "No such file or directory");
    EXPECT_TRUE(namesIn(folder).empty());
}

TEST_F(PosixFileSystemTest, KeepsACopyOfAFileThatCannotBeRead) {
    const auto answer = asOrdinaryUser([&] {
        (void)write(file, "unreadable");
        ::chmod(file.c_str(), 0);
        const auto kept = files.keepCopy(file, folder / "kept");
        ::chmod((folder / "kept").c_str(), 0600);
        return said(kept) + ", " + contents(folder / "kept");
    });

    EXPECT_EQ(answer, "done, unreadable");
}

TEST_F(PosixFileSystemTest, ACopyIsNobodyElsesToRead) {
    std::ofstream(file) << "x";
    ::chmod(file.c_str(), 0644);

    ASSERT_TRUE(files.keepCopy(file, folder / "kept"));

    EXPECT_EQ(mode(folder / "kept"), 0600U);
}

TEST_F(PosixFileSystemTest, KeepsASymbolicLinkAsOne) {
    std::ofstream(folder / "target") << "x";
    ::chmod((folder / "target").c_str(), 0644);
    fs::create_symlink(folder / "target", file);

    ASSERT_TRUE(files.keepCopy(file, folder / "kept"));

    EXPECT_TRUE(fs::is_symlink(folder / "kept"));
    EXPECT_EQ(mode(folder / "target"), 0644U);
}

TEST_F(PosixFileSystemTest, RemovesNoFolderThatLooksLikeALeftover) {
    fs::create_directory(folder / ".nettlecap-1-1");

    files.removeLeftovers(folder);

    EXPECT_TRUE(fs::exists(folder / ".nettlecap-1-1"));
}

TEST_F(PosixFileSystemTest, LeavesNoOpenFilesBehind) {
    const auto openFiles = [] { return namesIn("/proc/self/fd").size(); };
    const auto before = openFiles();

    (void)write(file, "x");
    (void)write(folder / "nowhere" / "file", "x");
    (void)files.read(file);
    (void)files.read(folder);
    (void)files.keepCopy(file, folder / "kept");
    (void)files.createDirectory(folder / "a" / "b");
    (void)files.sizeOfFilesIn(folder);
    files.removeLeftovers(folder);

    EXPECT_EQ(openFiles(), before);
}

}  // namespace
}  // namespace nettlecap
