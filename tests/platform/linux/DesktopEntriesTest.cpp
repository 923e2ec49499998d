#include "platform/linux/DesktopEntries.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <cstdlib>
#include <fstream>

namespace nettlecap {
namespace {

using testing::ElementsAre;

class DesktopEntriesTest : public testing::Test {
protected:
    DesktopEntriesTest() {
        std::filesystem::create_directories(user() / "applications");
        std::filesystem::create_directories(system() / "applications");
    }
    ~DesktopEntriesTest() override { std::filesystem::remove_all(room_); }

    Path user() const { return room_ / "user"; }
    Path system() const { return room_ / "system"; }

    static void write(const Path& file, const std::string& contents) {
        std::filesystem::create_directories(file.parent_path());
        std::ofstream(file) << contents;
    }
    /// An application in the system's folder.
    void install(const std::string& identifier, const std::string& lines) const {
        write(system() / "applications" / (identifier + ".desktop"),
              "[Desktop Entry]\nType=Application\n" + lines);
    }
    /// The identifier of what a window belongs to.
    std::string find(const std::string& instance, const std::string& name) {
        const auto entry = entries_.find({instance, name});
        return entry ? entry->identifier : "(unknown)";
    }

    std::string nameOf(const std::string& instance) {
        const auto entry = entries_.find({instance, ""});
        return entry ? entry->name : "(unknown)";
    }

    static Path makeRoom() {
        std::string name = testing::TempDir() + "desktop-entries.XXXXXX";
        return ::mkdtemp(name.data());
    }

    const Path room_ = makeRoom();
    DesktopEntries entries_{{user(), system()}, MessageLocale("pt_BR")};
};

TEST_F(DesktopEntriesTest, FindsByStartupWindowClass) {
    install("org.mozilla.firefox", "Name=Firefox\nExec=x\nStartupWMClass=Navigator\n");
    install("navigator", "Name=Outro\n");

    EXPECT_EQ(find("Navigator", "firefox-esr"), "org.mozilla.firefox");
    EXPECT_EQ(find("x11", "Navigator"), "org.mozilla.firefox");
}

TEST_F(DesktopEntriesTest, PrefersTheSameLettersToTheSameInAnotherCase) {
    install("a", "Name=A\nStartupWMClass=GIMP\n");
    install("b", "Name=B\nStartupWMClass=Gimp\n");

    EXPECT_EQ(find("", "Gimp"), "b");
    EXPECT_EQ(find("", "GIMP"), "a");
    EXPECT_EQ(find("", "gimp"), "a");
}

TEST_F(DesktopEntriesTest, FindsByIdentifier) {
    install("xfce4-terminal", "Name=Terminal Xfce\n");
    install("org.gnome.TextEditor", "Name=Editor de texto\n");

    EXPECT_EQ(find("xfce4-terminal", "Xfce4-terminal"), "xfce4-terminal");
    EXPECT_EQ(find("x", "org.gnome.TextEditor"), "org.gnome.TextEditor");
}

TEST_F(DesktopEntriesTest, PrefersTheLastPartOfAnIdentifierToTheProgramThatRuns) {
    install("org.xfce.mousepad-settings", "Name=Ajustes\nExec=mousepad --preferences\n");
    install("org.xfce.mousepad", "Name=Mousepad\nExec=mousepad %U\n");

    EXPECT_EQ(find("mousepad", "Mousepad"), "org.xfce.mousepad");
}

TEST_F(DesktopEntriesTest, FindsByTheProgramThatRuns) {
    install("org.xfce.mousepad", "Name=Mousepad\nExec=mousepad %U\n");

    EXPECT_EQ(find("mousepad", "Mousepad"), "org.xfce.mousepad");
    EXPECT_EQ(find("", "Mousepad"), "org.xfce.mousepad");
}

TEST_F(DesktopEntriesTest, AsksWindowClassThenIdentifierThenProgram) {
    install("by-program", "Name=P\nExec=paint\n");
    EXPECT_EQ(find("paint", "Paint"), "by-program");

    install("paint", "Name=I\n");
    EXPECT_EQ(find("paint", "Paint"), "paint");

    install("by-class", "Name=C\nStartupWMClass=paint\n");
    EXPECT_EQ(find("paint", "Paint"), "by-class");
}

TEST_F(DesktopEntriesTest, TakesTheInstanceBeforeTheClass) {
    install("chromium", "Name=Chromium\nStartupWMClass=Chromium\n");
    install("chrome-abc-Default", "Name=Planilhas\nStartupWMClass=crx_abc\n");

    EXPECT_EQ(find("crx_abc", "Chromium"), "chrome-abc-Default");
    EXPECT_EQ(find("chromium", "Chromium"), "chromium");
}

TEST_F(DesktopEntriesTest, RanksEntriesThatMenusDoNotShowBehindTheOthers) {
    install("a-helper", "Name=A\nExec=viewer\nNoDisplay=true\n");
    EXPECT_EQ(find("viewer", "Viewer"), "a-helper");

    install("z-viewer", "Name=Z\nExec=viewer\n");
    EXPECT_EQ(find("viewer", "Viewer"), "z-viewer");
}

TEST_F(DesktopEntriesTest, KnowsNothingOfWindowsWithoutAClass) {
    install("a", "Name=A\n");

    EXPECT_EQ(find("", ""), "(unknown)");
}

TEST_F(DesktopEntriesTest, MakesIdentifiersOfSubfolders) {
    install("kde4/office/kword", "Name=KWord\nStartupWMClass=kword\n");

    EXPECT_EQ(find("kword", "Kword"), "kde4-office-kword");
}

TEST_F(DesktopEntriesTest, LetsTheFirstFolderWin) {
    install("editor", "Name=Do sistema\n");
    write(user() / "applications/editor.desktop", "[Desktop Entry]\nType=Application\nName=Do usuário\n");

    EXPECT_EQ(nameOf("editor"), "Do usuário");
}

TEST_F(DesktopEntriesTest, LetsAHiddenEntryHideTheOneOfALaterFolder) {
    install("editor", "Name=Editor\n");
    write(user() / "applications/editor.desktop", "[Desktop Entry]\nType=Application\nName=E\nHidden=true\n");
    install("reader", "Name=Reader\n");
    std::filesystem::create_symlink("/dev/null", user() / "applications/reader.desktop");

    EXPECT_EQ(find("editor", "Editor"), "(unknown)");
    EXPECT_EQ(find("reader", "Reader"), "(unknown)");
}

TEST_F(DesktopEntriesTest, SeesApplicationsInstalledRemovedAndRenamedMeanwhile) {
    EXPECT_EQ(find("notes", "Notes"), "(unknown)");

    install("notes", "Name=Notas\n");
    EXPECT_EQ(nameOf("notes"), "Notas");

    install("notes.new", "Name=Anotações\n");
    std::filesystem::rename(system() / "applications/notes.new.desktop",
                            system() / "applications/notes.desktop");
    EXPECT_EQ(nameOf("notes"), "Anotações");

    std::filesystem::remove(system() / "applications/notes.desktop");
    EXPECT_EQ(find("notes", "Notes"), "(unknown)");
}

TEST_F(DesktopEntriesTest, SeesAFileEditedInItsPlaceWhenANewClassTurnsUp) {
    install("notes", "Name=Notas\n");
    EXPECT_EQ(find("notes", ""), "notes");

    install("notes", "Name=Notas\nStartupWMClass=Caderno\n");

    EXPECT_EQ(find("", "Caderno"), "notes");
}

TEST_F(DesktopEntriesTest, SeesFoldersThatAppearLater) {
    DesktopEntries later({room_ / "later"}, MessageLocale());
    EXPECT_FALSE(later.find({"a", "A"}));

    write(room_ / "later/applications/sub/a.desktop",
          "[Desktop Entry]\nType=Application\nName=A\nStartupWMClass=a\n");

    EXPECT_EQ(later.find({"a", "A"})->identifier, "sub-a");
}

TEST_F(DesktopEntriesTest, FollowsLinksToFilesAndFoldersButNotInCircles) {
    write(room_ / "elsewhere/linked.desktop", "[Desktop Entry]\nType=Application\nName=L\nExec=linked\n");
    std::filesystem::create_symlink(room_ / "elsewhere", system() / "applications/more");
    std::filesystem::create_symlink("..", system() / "applications/circle");
    std::filesystem::create_symlink("self.desktop", system() / "applications/self.desktop");
    std::filesystem::create_symlink("nowhere", system() / "applications/broken.desktop");

    EXPECT_EQ(find("linked", "Linked"), "more-linked");
}

TEST_F(DesktopEntriesTest, PassesOverPipesFoldersAndWhatItMayNotRead) {
    ASSERT_EQ(::mkfifo((system() / "applications/pipe.desktop").c_str(), 0600), 0);
    std::filesystem::create_directory(system() / "applications/folder.desktop");
    std::filesystem::create_symlink("/dev/zero", system() / "applications/endless.desktop");
    std::filesystem::create_symlink("/proc/self/mem", system() / "applications/forbidden.desktop");
    install("good", "Name=Bom\n");

    EXPECT_EQ(find("good", "Good"), "good");
    EXPECT_EQ(find("pipe", "Pipe"), "(unknown)");
}

TEST_F(DesktopEntriesTest, ReadsAFileOf256KiBAndNoLargerOne) {
    const std::string lines = "Name=Grande\n#";
    const std::size_t head = std::string("[Desktop Entry]\nType=Application\n").size() + lines.size();

    install("large", lines + std::string(256 * 1024 - head, 'x'));
    install("too-large", lines + std::string(256 * 1024 - head + 1, 'x'));

    EXPECT_EQ(find("large", ""), "large");
    EXPECT_EQ(find("too-large", ""), "(unknown)");
}

TEST_F(DesktopEntriesTest, CopesWithThousandsOfFiles) {
    for (int i = 0; i < 3000; ++i)
        install("app" + std::to_string(i), "Name=Programa " + std::to_string(i) + "\n");

    EXPECT_EQ(find("app2999", ""), "app2999");
}

TEST_F(DesktopEntriesTest, StopsAtFoldersEightDeep) {
    Path folder = "a/a/a/a/a/a/a/a";
    install((folder / "deep").string(), "Name=F\nExec=deep\n");
    install((folder / "a/deeper").string(), "Name=F\nExec=deeper\n");

    EXPECT_EQ(find("deep", ""), "a-a-a-a-a-a-a-a-deep");
    EXPECT_EQ(find("deeper", ""), "(unknown)");
}

TEST(DesktopEntriesFoldersTest, ComeFromTheEnvironment) {
    ::setenv("HOME", "/home/ana", 1);
    ::unsetenv("XDG_DATA_HOME");
    ::setenv("XDG_DATA_DIRS", "", 1);
    EXPECT_THAT(DesktopEntries::dataFoldersOfEnvironment(),
                ElementsAre("/home/ana/.local/share", "/usr/local/share", "/usr/share"));

    ::setenv("XDG_DATA_HOME", "/dados", 1);
    ::setenv("XDG_DATA_DIRS", "relative:/a::/b", 1);
    EXPECT_THAT(DesktopEntries::dataFoldersOfEnvironment(), ElementsAre("/dados", "/a", "/b"));
}

}  // namespace
}  // namespace nettlecap
