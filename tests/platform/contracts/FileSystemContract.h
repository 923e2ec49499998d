#pragma once

#include "platform/Files.h"

#include <array>
#include <future>
#include <gtest/gtest.h>
#include <system_error>
#include <vector>

namespace nettlecap {

/// A file system to be tested, and an empty folder in it.
class FileSystemHarness {
public:
    virtual ~FileSystemHarness() = default;

    virtual FileSystem& files() = 0;
    virtual Path root() const = 0;
    virtual void leaveLeftover(const Path& folder) = 0;  ///< as a process killed in the middle of a write
    virtual int leftovers(const Path& folder) const = 0;
};

/// What every FileSystem does. Instantiate it with a function that makes the harness.
class FileSystemContract : public testing::TestWithParam<std::unique_ptr<FileSystemHarness> (*)()> {
protected:
    Result<Done> write(const Path& path, std::string_view contents) {
        const std::array pieces = {contents};
        return files.writeAtomically(path, pieces, root);
    }
    std::string contents(const Path& path) const {
        const auto bytes = files.read(path);
        return bytes ? std::string(bytes->view()) : "(" + bytes.description() + ")";
    }
    static std::string words(std::errc error) { return std::make_error_code(error).message(); }

    std::unique_ptr<FileSystemHarness> harness = GetParam()();
    FileSystem& files = harness->files();
    Path root = harness->root();
    Path file = root / "history.json";
};

TEST_P(FileSystemContract, ReadsBackWhatItWrote) {
    ASSERT_TRUE(write(file, "um"));

    EXPECT_EQ(contents(file), "um");
    EXPECT_EQ(files.size(file), 2);
}

TEST_P(FileSystemContract, WritesThePiecesOneAfterTheOther) {
    const std::string large(300'000, 'x');
    const std::array<std::string_view, 5> pieces = {"[", large, "", ",", "]"};

    ASSERT_TRUE(files.writeAtomically(file, pieces, root));

    EXPECT_EQ(contents(file), "[" + large + ",]");
}

TEST_P(FileSystemContract, WritesThousandsOfSmallPieces) {
    const std::vector<std::string_view> pieces(20'000, "abcdefghijklmnopqrstuvwxyz 01234");

    ASSERT_TRUE(files.writeAtomically(file, pieces, root));

    EXPECT_EQ(files.size(file), 640'000);
    EXPECT_TRUE(contents(file).ends_with("wxyz 01234"));
}

TEST_P(FileSystemContract, WritesAnEmptyFile) {
    ASSERT_TRUE(files.writeAtomically(file, {}, root));

    EXPECT_EQ(files.size(file), 0);
    EXPECT_EQ(contents(file), "");
}

TEST_P(FileSystemContract, KeepsEveryByte) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);

    ASSERT_TRUE(write(file, all));

    EXPECT_EQ(contents(file), all);
}

TEST_P(FileSystemContract, ReplacesAFile) {
    ASSERT_TRUE(write(file, "a longer text"));
    ASSERT_TRUE(write(file, "short"));

    EXPECT_EQ(contents(file), "short");
}

TEST_P(FileSystemContract, WhatWasReadOutlivesALaterWrite) {
    ASSERT_TRUE(write(file, "old"));
    const auto before = files.read(file);

    ASSERT_TRUE(write(file, "new"));

    EXPECT_EQ(before->view(), "old");
}

TEST_P(FileSystemContract, WhatWasOpenedIsReadAsItWas) {
    ASSERT_TRUE(write(file, "old"));
    const auto opened = files.open(file);
    ASSERT_TRUE(opened);

    ASSERT_TRUE(write(file, "newer"));
    EXPECT_EQ((*opened)()->view(), "old");

    ASSERT_TRUE(files.remove(file));
    EXPECT_EQ((*opened)()->view(), "old");
}

TEST_P(FileSystemContract, WhatWasOpenedCanBeReadBySeveralAtOnce) {
    const std::string large(300'000, 'x');
    ASSERT_TRUE(write(file, large));
    const auto opened = files.open(file);
    ASSERT_TRUE(opened);

    std::array<std::future<bool>, 4> readings;
    for (auto& reading : readings)
        reading = std::async(std::launch::async, [&] { return (*opened)()->view() == large; });

    for (auto& reading : readings) EXPECT_TRUE(reading.get());
}

TEST_P(FileSystemContract, MayKeepItsTemporaryFileInAnotherFolder) {
    const Path images = root / "Images";
    ASSERT_TRUE(files.createDirectory(images));
    const std::array<std::string_view, 1> pieces = {"png"};

    ASSERT_TRUE(files.writeAtomically(images / "a.png", pieces, root));

    EXPECT_EQ(contents(images / "a.png"), "png");
}

TEST_P(FileSystemContract, AWriteLeavesNoOtherFileBehind) {
    ASSERT_TRUE(write(file, "123"));
    ASSERT_TRUE(write(file, "12345"));

    EXPECT_EQ(files.sizeOfFilesIn(root), 5);
}

TEST_P(FileSystemContract, DoesNotWriteIntoAFolderThatIsNotThere) {
    const auto written = write(root / "nowhere" / "history.json", "x");

    ASSERT_FALSE(written);
    EXPECT_EQ(written.description(), words(std::errc::no_such_file_or_directory));
}

TEST_P(FileSystemContract, DoesNotWriteWithoutItsTemporaryFolder) {
    const std::array<std::string_view, 1> pieces = {"x"};
    const auto written = files.writeAtomically(file, pieces, root / "nowhere");

    ASSERT_FALSE(written);
    EXPECT_EQ(written.description(), words(std::errc::no_such_file_or_directory));
    EXPECT_FALSE(files.size(file));
}

TEST_P(FileSystemContract, DoesNotWriteOverAFolder) {
    ASSERT_TRUE(files.createDirectory(file));

    const auto written = write(file, "x");

    ASSERT_FALSE(written);
    EXPECT_EQ(written.description(), words(std::errc::is_a_directory));
}

TEST_P(FileSystemContract, SaysThatThereIsNothingToRead) {
    const auto bytes = files.read(file);

    ASSERT_FALSE(bytes);
    EXPECT_EQ(bytes.description(), words(std::errc::no_such_file_or_directory));
    EXPECT_EQ(files.open(file).description(), words(std::errc::no_such_file_or_directory));
    EXPECT_EQ(files.size(file), std::nullopt);
}

TEST_P(FileSystemContract, DoesNotReadAFolder) {
    const auto bytes = files.read(root);

    ASSERT_FALSE(bytes);
    EXPECT_EQ(bytes.description(), words(std::errc::is_a_directory));
    EXPECT_EQ(files.open(root).description(), words(std::errc::is_a_directory));
    EXPECT_EQ(files.size(root), std::nullopt);
}

TEST_P(FileSystemContract, MakesAFolderWithItsParents) {
    ASSERT_TRUE(files.createDirectory(root / "a" / "b" / "c"));

    EXPECT_TRUE(write(root / "a" / "b" / "c" / "file", "x"));
    EXPECT_TRUE(write(root / "a" / "file", "x"));
}

TEST_P(FileSystemContract, AFolderThatIsThereAlreadyIsNoError) {
    ASSERT_TRUE(files.createDirectory(root / "Images"));
    ASSERT_TRUE(write(root / "Images" / "file", "x"));

    EXPECT_TRUE(files.createDirectory(root / "Images"));
    EXPECT_EQ(contents(root / "Images" / "file"), "x");
}

TEST_P(FileSystemContract, DoesNotMakeAFolderInPlaceOfAFile) {
    ASSERT_TRUE(write(file, "x"));

    const auto made = files.createDirectory(file);
    const auto inside = files.createDirectory(file / "Images");

    ASSERT_FALSE(made);
    EXPECT_EQ(made.description(), words(std::errc::file_exists));
    ASSERT_FALSE(inside);
    EXPECT_EQ(inside.description(), words(std::errc::not_a_directory));
    EXPECT_EQ(contents(file), "x");
}

TEST_P(FileSystemContract, RemovesAFile) {
    ASSERT_TRUE(write(file, "x"));

    EXPECT_TRUE(files.remove(file));

    EXPECT_FALSE(files.size(file));
}

TEST_P(FileSystemContract, SaysThatThereIsNothingToRemove) {
    const auto removed = files.remove(file);

    ASSERT_FALSE(removed);
    EXPECT_EQ(removed.description(), words(std::errc::no_such_file_or_directory));
}

TEST_P(FileSystemContract, DoesNotRemoveAFolder) {
    ASSERT_TRUE(files.createDirectory(root / "Images"));

    const auto removed = files.remove(root / "Images");

    ASSERT_FALSE(removed);
    EXPECT_EQ(removed.description(), words(std::errc::is_a_directory));
    EXPECT_TRUE(write(root / "Images" / "file", "x"));
}

TEST_P(FileSystemContract, AKeptCopyDoesNotFollowLaterWrites) {
    ASSERT_TRUE(write(file, "unreadable"));

    ASSERT_TRUE(files.keepCopy(file, root / "kept"));
    ASSERT_TRUE(write(file, "fresh"));

    EXPECT_EQ(contents(root / "kept"), "unreadable");
    EXPECT_EQ(contents(file), "fresh");
}

TEST_P(FileSystemContract, AKeptCopyReplacesTheOneBefore) {
    ASSERT_TRUE(write(file, "new"));
    ASSERT_TRUE(write(root / "kept", "older"));

    ASSERT_TRUE(files.keepCopy(file, root / "kept"));

    EXPECT_EQ(contents(root / "kept"), "new");
    EXPECT_EQ(contents(file), "new");
}

TEST_P(FileSystemContract, KeepsTheSameFileTwiceWithoutATrace) {
    ASSERT_TRUE(write(file, "123"));

    ASSERT_TRUE(files.keepCopy(file, root / "kept"));
    ASSERT_TRUE(files.keepCopy(file, root / "kept"));
    ASSERT_TRUE(files.remove(file));

    EXPECT_EQ(contents(root / "kept"), "123");
    EXPECT_EQ(files.sizeOfFilesIn(root), 3);
}

TEST_P(FileSystemContract, KeepsNothingOfWhatIsNoFile) {
    const auto missing = files.keepCopy(file, root / "kept");
    const auto folder = files.keepCopy(root, root / "kept");

    ASSERT_FALSE(missing);
    EXPECT_EQ(missing.description(), words(std::errc::no_such_file_or_directory));
    ASSERT_FALSE(folder);
    EXPECT_EQ(folder.description(), words(std::errc::is_a_directory));
    EXPECT_FALSE(files.size(root / "kept"));
}

TEST_P(FileSystemContract, KeepsNothingInAFolderThatIsNotThere) {
    ASSERT_TRUE(write(file, "x"));

    const auto kept = files.keepCopy(file, root / "nowhere" / "kept");

    ASSERT_FALSE(kept);
    EXPECT_EQ(kept.description(), words(std::errc::no_such_file_or_directory));
}

TEST_P(FileSystemContract, SumsUpTheFilesOfAFolderAndItsSubfolders) {
    ASSERT_TRUE(files.createDirectory(root / "Images" / "deeper"));
    ASSERT_TRUE(write(root / "Images" / "a", "1"));
    ASSERT_TRUE(write(root / "Images" / "deeper" / "b", "22"));
    ASSERT_TRUE(write(root / "outside", "4444"));

    EXPECT_EQ(files.sizeOfFilesIn(root / "Images"), 3);
}

TEST_P(FileSystemContract, LeavesHiddenFilesAndFoldersOutOfTheSum) {
    ASSERT_TRUE(files.createDirectory(root / ".hidden" / "deeper"));
    ASSERT_TRUE(write(root / ".hidden" / "deeper" / "a", "1"));
    ASSERT_TRUE(write(root / ".b", "22"));
    ASSERT_TRUE(write(root / "c", "4444"));

    EXPECT_EQ(files.sizeOfFilesIn(root), 4);
    EXPECT_EQ(files.sizeOfFilesIn(root / ".hidden" / "deeper"), 1);
}

TEST_P(FileSystemContract, AFolderThatCannotBeListedSumsUpToZero) {
    ASSERT_TRUE(write(file, "x"));

    EXPECT_EQ(files.sizeOfFilesIn(root / "nowhere"), 0);
    EXPECT_EQ(files.sizeOfFilesIn(file), 0);
}

TEST_P(FileSystemContract, RemovesLeftoversAndNothingElse) {
    ASSERT_TRUE(write(file, "x"));
    ASSERT_TRUE(write(root / ".somebody", "x"));
    harness->leaveLeftover(root);
    harness->leaveLeftover(root);

    files.removeLeftovers(root);

    EXPECT_EQ(contents(file), "x");
    EXPECT_EQ(contents(root / ".somebody"), "x");
    EXPECT_EQ(harness->leftovers(root), 0);
}

TEST_P(FileSystemContract, FindsNoLeftoversInAFolderThatIsNotThere) {
    files.removeLeftovers(root / "nowhere");

    EXPECT_EQ(files.sizeOfFilesIn(root), 0);
}

}  // namespace nettlecap
