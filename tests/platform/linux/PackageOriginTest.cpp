#include "platform/linux/PackageOrigin.h"

#include "platform/linux/TemporaryFolder.h"

#include <fstream>
#include <gtest/gtest.h>

namespace nettlecap {
namespace {

namespace fs = std::filesystem;

class PackageOriginTest : public testing::Test {
protected:
    bool isOurs(const Path& program) const {
        return isFromPackage("nettlecap", {.program = program, .lists = folder.path()});
    }
    void install(const std::string& name, const std::string& files) const {
        std::ofstream(folder.path() / (name + ".list")) << files;
    }

    TemporaryFolder folder;
};

TEST_F(PackageOriginTest, APackageBringsTheFilesOfItsList) {
    install("nettlecap", "/.\n/usr\n/usr/bin\n/usr/bin/nettlecap\n/usr/share\n");

    EXPECT_TRUE(isOurs("/usr/bin/nettlecap"));
}

TEST_F(PackageOriginTest, AnotherCopyIsNotFromThePackageThatIsInstalledToo) {
    install("nettlecap", "/.\n/usr\n/usr/bin\n/usr/bin/nettlecap\n");

    for (const char* program : {"/usr/local/bin/nettlecap", "/home/ana/build/nettlecap", "/nettlecap", ""})
        EXPECT_FALSE(isOurs(program)) << program;
}

TEST_F(PackageOriginTest, AFileOfAnotherPackageIsNotFromThisOne) {
    install("other", "/usr/bin/nettlecap\n");

    EXPECT_FALSE(isOurs("/usr/bin/nettlecap"));
}

TEST_F(PackageOriginTest, WhereNothingIsKnownOfPackagesNothingIsFromOne) {
    EXPECT_FALSE(isFromPackage("nettlecap", {.program = "/usr/bin/nettlecap", .lists = "/nowhere"}));
}

TEST(PackageOriginOfProcessTest, AsksForTheRunningProgramInTheListsOfDpkg) {
    const auto places = PackagePlaces::ofProcess();

    EXPECT_EQ(places.program, fs::read_symlink("/proc/self/exe"));
    EXPECT_EQ(places.lists, "/var/lib/dpkg/info");
}

}  // namespace
}  // namespace nettlecap
