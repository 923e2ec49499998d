#include "platform/linux/AutostartSettings.h"

#include "platform/linux/Environment.h"
#include "platform/linux/QtApplication.h"
#include "platform/linux/TemporaryFolder.h"

#include <fstream>
#include <gmock/gmock.h>

namespace nettlecap {

void PrintTo(const CommandLine& line, std::ostream* out) {
    *out << line.program;
    for (const auto& argument : line.arguments) *out << ' ' << argument;
}

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

CommandLine line(std::string program, std::vector<std::string> arguments = {}) {
    return {.program = std::move(program), .arguments = std::move(arguments)};
}

TEST(AutostartSettingsTest, EachDesktopHasItsOwn) {
    EXPECT_THAT(autostartSettings("XFCE"), ElementsAre(line("xfce4-session-settings")));
    EXPECT_THAT(autostartSettings("KDE"),
                ElementsAre(line("kcmshell6", {"kcm_autostart"}), line("kcmshell5", {"kcm_autostart"})));
    EXPECT_THAT(autostartSettings("MATE"), ElementsAre(line("mate-session-properties")));
    EXPECT_THAT(autostartSettings("X-Cinnamon"), ElementsAre(line("cinnamon-settings", {"startup"})));
    EXPECT_THAT(autostartSettings("LXQt"), ElementsAre(line("lxqt-config-session")));
}

TEST(AutostartSettingsTest, TheFirstNameOfADesktopGoesFirst) {
    EXPECT_THAT(autostartSettings("Unity:XFCE"),
                ElementsAre(line("gnome-session-properties"), line("xfce4-session-settings")));
}

TEST(AutostartSettingsTest, AnUnknownDesktopHasNone) {
    EXPECT_THAT(autostartSettings(""), IsEmpty());
    EXPECT_THAT(autostartSettings(":"), IsEmpty());
    EXPECT_THAT(autostartSettings("xfce:Sway"), IsEmpty());
}

class OpenAutostartSettingsTest : public testing::Test {
protected:
    /// A program of that name, which notes that it was started.
    void install(const std::string& name) const {
        fs::create_directory(bin);
        std::ofstream(bin / name) << "#!/bin/sh\n{ echo \"${0##*/}\" \"$@\"; } > '" << told.string()
                                  << ".half'\n/bin/mv '" << told.string() << ".half' '" << told.string()
                                  << "'\n";
        fs::permissions(bin / name, fs::perms(0755));
    }
    std::string started() const {
        if (!runMainLoopUntil([this] { return fs::exists(told); })) return "(nothing)";
        std::string words;
        std::getline(std::ifstream(told), words);
        return words;
    }

    TemporaryFolder temporary;
    Path bin = temporary.path() / "bin";
    Path told = temporary.path() / "told";
    Path folder = temporary.path() / "autostart";
    Environment path{"PATH", bin};
    Environment desktop{"XDG_CURRENT_DESKTOP", "KDE"};
};

TEST_F(OpenAutostartSettingsTest, OpensThoseOfTheDesktop) {
    install("kcmshell6");
    install("kcmshell5");
    install("xdg-open");

    openAutostartSettings(folder);

    EXPECT_EQ(started(), "kcmshell6 kcm_autostart");
}

TEST_F(OpenAutostartSettingsTest, OpensTheNextWhereOneIsNotInstalled) {
    install("kcmshell5");

    openAutostartSettings(folder);

    EXPECT_EQ(started(), "kcmshell5 kcm_autostart");
}

TEST_F(OpenAutostartSettingsTest, OpensTheFolderWhereTheDesktopHasNone) {
    install("xfce4-session-settings");
    install("xdg-open");

    openAutostartSettings(folder);

    EXPECT_EQ(started(), "xdg-open " + folder.string());
}

}  // namespace
}  // namespace nettlecap
