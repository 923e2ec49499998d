#include "app/DiagnosticsFile.h"

#include "platform/fake/FakeFileSystem.h"
#include "platform/fake/FakeTime.h"

#include <gmock/gmock.h>

namespace nettlecap {
namespace {

class DiagnosticsFileTest : public testing::Test {
protected:
    void write(const std::vector<DiagnosticsFile::Line>& lines = {}) {
        DiagnosticsFile::write({.files = files, .clock = time}, "notas.txt", lines);
    }
    std::string written() const { return files.contents(folder / "notas.txt").value_or("none"); }
    std::string writtenAt(double secondsSince2001) {
        time.setNow({secondsSince2001});
        write();
        return written();
    }

    const Path folder = "/home/ana/.local/share/Nettlecap";
    FakeFileSystem files;
    FakeTime time;
};

TEST_F(DiagnosticsFileTest, HoldsTheTimeAndThenTheLinesWithoutAFinalLineFeed) {
    time.setNow({0.5});

    write({{"status", "enabled"}, {"error", "a=b"}, {"empty", ""}});

    EXPECT_EQ(written(), "timestamp=978307200.5\nstatus=enabled\nerror=a=b\nempty=");
}

TEST_F(DiagnosticsFileTest, WritesTheTimeInTheShortestTextThatReadsBackTheSame) {
    EXPECT_EQ(writtenAt(0), "timestamp=978307200.0");
    EXPECT_EQ(writtenAt(800'000'000), "timestamp=1778307200.0");
    EXPECT_EQ(writtenAt(800'000'000.789), "timestamp=1778307200.789");
    EXPECT_EQ(writtenAt(21'692'800), "timestamp=1000000000.0");
    EXPECT_EQ(writtenAt(-978'307'200), "timestamp=0.0");
    EXPECT_EQ(writtenAt(-978'307'201.5), "timestamp=-1.5");
}

TEST_F(DiagnosticsFileTest, MakesTheFolder) {
    ASSERT_FALSE(files.hasFolder(folder));

    write();

    EXPECT_THAT(files.names(folder), testing::ElementsAre("notas.txt"));
}

TEST_F(DiagnosticsFileTest, ReplacesTheWholeFile) {
    files.put(folder / "notas.txt", std::string(1000, 'x'));

    EXPECT_EQ(writtenAt(0), "timestamp=978307200.0");
    EXPECT_EQ(files.writes(folder / "notas.txt"), 1);
}

TEST_F(DiagnosticsFileTest, IsNotThereWhereTheSystemHasNoPlaceForIt) {
    files.setApplicationSupportDirectory(std::nullopt);

    write();

    EXPECT_EQ(files.writes(), 0);
}

TEST_F(DiagnosticsFileTest, LeavesTheOldFileWhenItCannotBeWritten) {
    files.put(folder / "notas.txt", "antes");
    files.fail(FileOperation::write, "No space left on device");

    write();

    EXPECT_EQ(written(), "antes");
}

TEST_F(DiagnosticsFileTest, DoesWithoutAFolderThatCannotBeMade) {
    files.fail(FileOperation::createDirectory, "Permission denied");

    write();

    EXPECT_EQ(written(), "none");
}

}  // namespace
}  // namespace nettlecap
