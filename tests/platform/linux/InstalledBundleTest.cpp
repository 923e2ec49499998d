#include "platform/linux/InstalledBundle.h"

#include "platform/contracts/BundleInfoContract.h"
#include "platform/linux/PosixFileSystem.h"
#include "platform/linux/TemporaryFolder.h"

#include <fstream>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

namespace fs = std::filesystem;

class InstalledBundleHarness final : public BundleInfoHarness {
public:
    InstalledBundleHarness() { install(); }

    const BundleInfo& bundle() override { return *bundle_; }
    void setFlag(const std::string& key, bool isOn) override {
        flags_ += "<key>" + key + "</key>" + (isOn ? "<true/>" : "<false/>");
        install();
    }

private:
    void install() {
        fs::create_directories(share_);
        std::ofstream(share_ / "Info.plist")
            << "<plist version=\"1.0\"><dict>" << flags_ << "</dict></plist>";
        bundle_.emplace(files_, folder_.path() / "bin/nettlecap");
    }

    TemporaryFolder folder_;
    Path share_ = folder_.path() / "share/nettlecap";
    PosixFileSystem files_;
    std::string flags_ = "<key>CFBundleName</key><string>Nettlecap</string>";
    std::optional<InstalledBundle> bundle_;
};

INSTANTIATE_TEST_SUITE_P(Installed, BundleInfoContract,
                         testing::Values([]() -> std::unique_ptr<BundleInfoHarness> {
                             return std::make_unique<InstalledBundleHarness>();
                         }));

class InstalledBundleTest : public testing::Test {
protected:
    void install(std::string_view info) const {
        fs::create_directories(share);
        std::ofstream(share / "Info.plist") << info;
    }
    InstalledBundle bundle() const { return InstalledBundle(files, program); }
    static std::string saying(std::string_view value) {
        return "<plist version=\"1.0\"><dict><key>NettlecapUpdatesEnabled</key>" + std::string(value) +
               "</dict></plist>";
    }

    static constexpr std::string_view key = "NettlecapUpdatesEnabled";

    TemporaryFolder temporary;
    Path program = temporary.path() / "usr/bin/nettlecap";
    Path share = temporary.path() / "usr/share/nettlecap";
    PosixFileSystem files;
};

TEST_F(InstalledBundleTest, IsTheDataFolderBesideTheProgram) {
    install(saying("<true/>"));

    EXPECT_EQ(bundle().path(), share);
    EXPECT_EQ(bundle().flag(key), true);
}

TEST_F(InstalledBundleTest, TellsOffFromMissing) {
    install(saying("<false/>"));

    EXPECT_EQ(bundle().flag(key), false);
    EXPECT_EQ(bundle().flag("Another"), std::nullopt);
}

TEST_F(InstalledBundleTest, AValueThatIsNoBooleanIsAbsent) {
    for (const char* value : {"<string>true</string>", "<integer>1</integer>", "<true>1</true>", ""}) {
        install(saying(value));
        EXPECT_EQ(bundle().flag(key), std::nullopt) << value;
        EXPECT_EQ(bundle().path(), share);
    }
}

TEST_F(InstalledBundleTest, AProgramThatWasNotInstalledIsItsOwnBundle) {
    EXPECT_EQ(bundle().path(), program);
    EXPECT_EQ(bundle().flag(key), std::nullopt);
}

TEST_F(InstalledBundleTest, ReadsUpTo64KibibytesAndNoMore) {
    constexpr std::size_t limit = 65'536;
    std::string info = saying("<true/>");
    info.insert(0, "<!--" + std::string(limit - info.size() - 7, 'x') + "-->");
    ASSERT_EQ(info.size(), limit);

    install(info);
    EXPECT_EQ(bundle().flag(key), true);

    install(info + '\n');
    EXPECT_EQ(bundle().flag(key), std::nullopt);
}

TEST_F(InstalledBundleTest, WhatIsNoRegularFileSaysNothing) {
    fs::create_directories(share / "Info.plist");
    EXPECT_EQ(bundle().flag(key), std::nullopt);

    fs::remove_all(share);
    fs::create_directories(share);
    fs::create_symlink("/dev/zero", share / "Info.plist");
    EXPECT_EQ(bundle().flag(key), std::nullopt);
}

TEST_F(InstalledBundleTest, IsAskedOfTheRunningProgramOtherwise) {
    EXPECT_EQ(InstalledBundle(files).path(), fs::read_symlink("/proc/self/exe"));
}

}  // namespace
}  // namespace nettlecap
