#include "durability/Scenarios.h"
#include "durability/SystemCalls.h"
#include "platform/linux/ChildProcess.h"
#include "platform/linux/FileUserDefaults.h"
#include "platform/linux/TemporaryFolder.h"

#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace nettlecap {
namespace {

namespace fs = std::filesystem;

/// What somebody else may have done to the folders of the program.
class HostileFolderTest : public testing::Test {
protected:
    HostileFolderTest() { put(outside, "alheio"); }

    static void put(const Path& path, std::string_view contents) {
        fs::create_directories(path.parent_path());
        std::ofstream(path) << contents;
    }
    static std::string contents(const Path& path) {
        std::ifstream file(path);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    static unsigned mode(const Path& path) {
        struct stat status {};
        return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 0777U : 0U;
    }
    std::vector<std::string> textsOnDisk() const {
        const auto state = HistoryDocument::decode(Bytes(contents(document)));
        std::vector<std::string> texts;
        if (state)
            for (const ClipboardEntry& entry : state->entries) texts.push_back(entry.text.value_or("imagem"));
        return texts;
    }

    TemporaryFolder temporary;
    Path outside = temporary.path() / "alheio.txt";
    Path folder = temporary.path() / "Nettlecap";
    Path images = folder / "Images";
    Path document = folder / "history.json";
    Program program{folder};
};

using Texts = std::vector<std::string>;

TEST_F(HostileFolderTest, ALinkInPlaceOfTheStateFileIsReplacedAndNotFollowed) {
    fs::create_directories(folder);
    fs::create_symlink(outside, document);

    program.start();
    program.copy("a", 1);

    EXPECT_EQ(contents(outside), "alheio");
    EXPECT_FALSE(fs::is_symlink(document));
    EXPECT_EQ(textsOnDisk(), Texts{"a"});
}

/// Remembers the name of the last file that was made.
class LastCreated final : public SystemCallWatcher {
public:
    void after(const DiskCall& call) override {
        if (call.call == SystemCall::create) path = call.path;
    }

    Path path;
};

TEST_F(HostileFolderTest, LinksUnderTheNamesOfTemporaryFilesAreNotFollowed) {
    program.start();
    LastCreated last;
    {
        const WatchedSystemCalls watched(folder, last);
        program.copy("a", 1);
    }
    const std::string name = last.path.filename();
    const auto number = name.rfind('-') + 1;
    for (int n = 1; n <= 100; ++n)
        fs::create_symlink(
            outside, folder / (name.substr(0, number) + std::to_string(std::stoi(name.substr(number)) + n)));

    program.copy("b", 2);
    program.copyImage("png", 3);

    EXPECT_EQ(program.error(), "none");
    EXPECT_EQ(contents(outside), "alheio");
    EXPECT_EQ(textsOnDisk(), (Texts{"imagem", "b", "a"}));
    program.start();
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 2);
}

TEST_F(HostileFolderTest, ALinkInPlaceOfThePreferencesIsReplacedAndNotFollowed) {
    fs::create_directories(folder);
    fs::create_symlink(outside, folder / "chave");
    FileUserDefaults defaults(program.files, folder);
    EXPECT_FALSE(defaults.data("chave"));

    defaults.setData("chave", Bytes("meu"));

    EXPECT_EQ(contents(outside), "alheio");
    EXPECT_EQ(defaults.data("chave"), Bytes("meu"));
}

TEST_F(HostileFolderTest, ALinkInPlaceOfAPictureIsNeitherReadNorIsItsTargetRemoved) {
    program.start();
    program.copyImage("png", 1);
    const Path picture = images / *program.store->entries()->front()->imageFilename;
    fs::remove(picture);
    fs::create_symlink(outside, picture);

    EXPECT_FALSE(program.files.read(picture));
    program.store->clearNonFavorites();

    EXPECT_EQ(contents(outside), "alheio");
    EXPECT_FALSE(fs::is_symlink(picture));
}

TEST_F(HostileFolderTest, APictureCopiedAgainReplacesALinkThatTookItsPlace) {
    program.start();
    program.copyImage("png", 1);
    const Path picture = images / *program.store->entries()->front()->imageFilename;
    fs::remove(picture);
    fs::create_symlink(outside, picture);

    program.copyImage("png", 2);

    EXPECT_EQ(contents(outside), "alheio");
    EXPECT_EQ(contents(picture), "png");
    EXPECT_FALSE(fs::is_symlink(picture));
}

TEST_F(HostileFolderTest, AHistoryNeverReachesFilesOutsideItsFolder) {
    ClipboardEntry entry = imageEntry(1, "../../alheio.txt", "alheio", 1);
    put(document, HistoryDocument::encode(PersistedState{.entries = {entry}, .snippets = {}}));

    program.start();
    program.copyImage("alheio", 2);
    program.store->clearNonFavorites();

    EXPECT_EQ(contents(outside), "alheio");
}

TEST_F(HostileFolderTest, AFolderOfSomebodyElseIsRefusedInClearWords) {
    fs::create_directories(folder);
    ::chmod(folder.c_str(), 0755);

    const auto said = asOrdinaryUser([&] {
        if (::access(folder.c_str(), W_OK) == 0) ::chmod(folder.c_str(), 0555);  // no root made it
        program.start();
        const std::string first = program.error();
        program.copy("a", 1);
        return first + "; " + program.error() + "; " + *program.store->entries()->front()->text;
    });
    ::chmod(folder.c_str(), 0755);

    EXPECT_EQ(said, "Não foi possível preparar o armazenamento: Permission denied; "
                    "Não foi possível salvar o histórico: Permission denied; a");
}

/// A link in place of a folder, made by this process and tried by an ordinary user. Who is no
/// root plants none in the eyes of others: it is followed then.
class LinkedFolderTest : public HostileFolderTest {
protected:
    static constexpr uid_t nobody = 65534;
    static constexpr uid_t administrator = 0;
    static constexpr uid_t somebodyElse = 1;

    LinkedFolderTest() {
        fs::create_directories(elsewhere);
        ::chmod(elsewhere.c_str(), 0777);
    }

    static void give(const Path& path, uid_t user) {
        if (isRoot()) {
            ASSERT_EQ(::lchown(path.c_str(), user, user), 0);
        }
    }
    static bool isRoot() { return ::geteuid() == 0; }
    /// What is said at the start, after a text, after a picture; and how much there is elsewhere.
    std::string said() {
        return asOrdinaryUser([&] {
            program.start();
            std::string all = program.error();
            program.copy("a", 1);
            all += "; " + program.error();
            program.copyImage("png", 2);
            all += "; " + program.error() + "; ";
            const auto files = fs::directory_iterator(elsewhere);
            return all + std::to_string(std::distance(files, fs::directory_iterator()));
        });
    }

    Path elsewhere = temporary.path() / "elsewhere";
    const std::string unprepared = "Não foi possível preparar o armazenamento: Permission denied; ";
    const std::string unsaved = "Não foi possível salvar o histórico: Permission denied; ";
    const std::string unsavedPicture = "Não foi possível salvar a imagem: Permission denied; ";
};

TEST_F(LinkedFolderTest, IsFollowedWhereLinkAndFolderAreTheUsers) {
    fs::create_directory_symlink(elsewhere, folder);
    give(folder, nobody);
    give(elsewhere, nobody);

    EXPECT_EQ(said(), "none; none; none; 2");
}

TEST_F(LinkedFolderTest, IsFollowedWhereTheAdministratorPutTheLink) {
    fs::create_directory_symlink(elsewhere, folder);
    give(folder, administrator);
    give(elsewhere, nobody);

    EXPECT_EQ(said(), "none; none; none; 2");
}

TEST_F(LinkedFolderTest, IsRefusedWhereTheLinkIsSomebodyElses) {
    fs::create_directory_symlink(elsewhere, folder);
    give(folder, somebodyElse);
    give(elsewhere, nobody);

    EXPECT_EQ(said(), isRoot() ? unprepared + unsaved + unsavedPicture + "0" : "none; none; none; 2");
}

TEST_F(LinkedFolderTest, IsRefusedWhereTheFolderBehindItIsSomebodyElses) {
    fs::create_directory_symlink(elsewhere, folder);
    give(folder, nobody);

    EXPECT_EQ(said(), isRoot() ? unprepared + unsaved + unsavedPicture + "0" : "none; none; none; 2");
}

TEST_F(LinkedFolderTest, CostsPicturesOnlyWhereItIsInPlaceOfTheirs) {
    fs::create_directories(folder);
    give(folder, nobody);
    fs::create_directory_symlink(elsewhere, images);
    give(images, somebodyElse);
    give(elsewhere, nobody);

    EXPECT_EQ(said(), isRoot() ? unprepared + "none; " + unsavedPicture + "0" : "none; none; none; 1");
}

TEST_F(HostileFolderTest, AFolderThatOthersMightEnterIsClosed) {
    program.start();
    program.copy("a", 1);
    for (const Path& open : {folder, images}) ::chmod(open.c_str(), 0777);
    ::chmod(document.c_str(), 0666);

    program.start();
    program.copy("b", 2);

    EXPECT_EQ(mode(folder), 0700U);
    EXPECT_EQ(mode(images), 0700U);
    EXPECT_EQ(mode(document), 0600U);
}

TEST_F(HostileFolderTest, WhateverTheMaskFilesAreTheUsersAlone) {
    for (const mode_t mask : {0000U, 0077U, 0777U}) {
        const auto modes = asOrdinaryUser([&] {
            ::umask(mask);
            Program other(temporary.path() / std::to_string(mask) / "Nettlecap");
            other.start();
            other.copy("a", 1);
            other.copyImage("png", 2);
            const auto picture = other.store->imageFile(*other.store->entries()->front());
            std::string all;
            for (const Path& path :
                 {other.folder, other.folder / "Images", other.folder / "history.json", picture.value_or("")})
                all += std::to_string(mode(path)) + " ";
            return all;
        });
        EXPECT_EQ(modes, std::to_string(0700) + " " + std::to_string(0700) + " " + std::to_string(0600) +
                             " " + std::to_string(0600) + " ");
    }
}

TEST_F(HostileFolderTest, AFolderThatVanishedIsMadeAgainAndHoldsTheWholeHistory) {
    program.start();
    program.copy("a", 1);
    program.copyImage("png", 2);
    fs::remove_all(folder);

    program.copy("b", 3);
    EXPECT_EQ(program.error(), "none");
    EXPECT_EQ(textsOnDisk(), (Texts{"b", "imagem", "a"}));
    EXPECT_EQ(mode(folder), 0700U);

    program.copyImage("png", 4);
    const auto picture = program.store->imageFile(*program.store->entries()->front());
    EXPECT_EQ(contents(picture.value_or("")), "png");
}

TEST_F(HostileFolderTest, AFolderThatAppearsAfterTheStartLosesNothing) {
    Program earlier(temporary.path() / "volume");
    earlier.start();
    earlier.copy("de ontem", 1);
    program.start();
    program.copy("de hoje", 2);

    // As when a volume is mounted late.
    fs::remove_all(folder);
    fs::rename(temporary.path() / "volume", folder);
    program.copy("de agora", 3);

    EXPECT_EQ(textsOnDisk(), (Texts{"de agora", "de hoje"}));
    const auto kept = HistoryDocument::decode(Bytes(contents(folder / "history.unreadable.json")));
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->entries.front().text, "de ontem");
}

}  // namespace
}  // namespace nettlecap
