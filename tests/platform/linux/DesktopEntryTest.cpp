#include "platform/linux/DesktopEntry.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace nettlecap {
namespace {

using testing::ElementsAre;

std::optional<DesktopEntry> parse(std::string_view file, std::string_view locale = "pt_BR.UTF-8") {
    return DesktopEntry::parse(file, MessageLocale(locale));
}

/// The name that an application with these lines has.
std::string nameOf(std::string_view lines, std::string_view locale = "pt_BR.UTF-8") {
    const auto entry = parse("[Desktop Entry]\nType=Application\n" + std::string(lines) + "\n", locale);
    return entry ? entry->name : "(absent)";
}

std::string programOf(std::string_view exec) {
    const auto entry = parse("[Desktop Entry]\nType=Application\nName=A\nExec=" + std::string(exec));
    return entry ? entry->program : "(absent)";
}

TEST(DesktopEntryTest, ReadsWhatAnApplicationSaysOfItself) {
    const auto entry = parse("# Terminal\n\n[Desktop Entry]\nVersion=1.0\nType=Application\n"
                             "Name=Xfce Terminal\nName[pt_BR]=Terminal Xfce\nExec=xfce4-terminal %u\n"
                             "Categories=GTK;System;TerminalEmulator;\nStartupWMClass=Xfce4-terminal\n");

    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "Terminal Xfce");
    EXPECT_EQ(entry->startupWindowClass, "Xfce4-terminal");
    EXPECT_EQ(entry->program, "xfce4-terminal");
    EXPECT_THAT(entry->categories, ElementsAre("GTK", "System", "TerminalEmulator"));
    EXPECT_TRUE(entry->isShown);
}

TEST(DesktopEntryTest, LeavesOutHiddenEntriesAndThoseThatAreNoApplication) {
    EXPECT_FALSE(parse("[Desktop Entry]\nType=Application\nName=A\nHidden=true\n"));
    EXPECT_FALSE(parse("[Desktop Entry]\nType=Link\nName=A\n"));
    EXPECT_FALSE(parse("[Desktop Entry]\nName=A\n"));
    EXPECT_FALSE(parse("[Desktop Entry]\nType=Application\nExec=a\n"));
    EXPECT_TRUE(parse("[Desktop Entry]\nType=Application\nName=A\nHidden=false\n"));
}

TEST(DesktopEntryTest, KeepsEntriesThatMenusDoNotShow) {
    const auto entry = parse("[Desktop Entry]\nType=Application\nName=A\nNoDisplay=true\n");

    ASSERT_TRUE(entry);
    EXPECT_FALSE(entry->isShown);
}

TEST(DesktopEntryTest, ReadsOnlyTheMainGroup) {
    EXPECT_FALSE(parse("[Other]\nType=Application\nName=A\n"));
    EXPECT_EQ(nameOf("Name=Editor\n\n[Desktop Action new]\nName=Nova janela"), "Editor");
    EXPECT_EQ(parse("Name=Antes\n[Desktop Entry]\nType=Application\nName=Depois\n")->name, "Depois");
}

TEST(DesktopEntryTest, TakesTheMostParticularLocale) {
    const std::string lines =
        "Name=plain\nName[sr]=l\nName[sr@Latn]=lm\nName[sr_YU]=lc\nName[sr_YU@Latn]=lcm\n";

    EXPECT_EQ(nameOf(lines, "sr_YU.UTF-8@Latn"), "lcm");
    EXPECT_EQ(nameOf(lines, "sr_YU"), "lc");
    EXPECT_EQ(nameOf(lines, "sr@Latn"), "lm");
    EXPECT_EQ(nameOf(lines, "sr_RS"), "l");
    EXPECT_EQ(nameOf(lines, "sr_RS@Latn"), "lm");
    EXPECT_EQ(nameOf(lines, "pt_BR"), "plain");
}

TEST(DesktopEntryTest, PrefersTheCountryToTheModifier) {
    EXPECT_EQ(nameOf("Name[sr@Latn]=modifier\nName[sr_YU]=country", "sr_YU@Latn"), "country");
}

TEST(DesktopEntryTest, IgnoresTheOrderOfTheKeysAndTheirEncoding) {
    EXPECT_EQ(nameOf("Name[pt_BR.UTF-8]=Navegador\nName[pt]=Navegador de rede\nName=Browser"), "Navegador");
    EXPECT_EQ(nameOf("Name[pt]=Navegador de rede\nName=Browser"), "Navegador de rede");
}

TEST(DesktopEntryTest, UsesThePlainNameInTheCLocale) {
    for (const char* locale : {"C", "C.UTF-8", "POSIX", "", ".UTF-8", "@euro"})
        EXPECT_EQ(nameOf("Name=Plain\nName[C]=c\nName[]=nothing\nName[pt_BR]=pt", locale), "Plain") << locale;
}

TEST(DesktopEntryTest, PassesOverAnEmptyTranslation) {
    EXPECT_EQ(nameOf("Name=Files\nName[pt_BR]="), "Files");
}

TEST(DesktopEntryTest, ResolvesEscapes) {
    EXPECT_EQ(nameOf(R"(Name=a\sb\nc\td\re\\f\qg\)"), "a b\nc\td\re\\f\\qg\\");
}

TEST(DesktopEntryTest, AllowsSpacesAroundTheEqualsSignAndForeignLineEnds) {
    const auto entry = parse("[Desktop Entry]\r\nType = Application\r\nName[pt_BR] \t=  Bloco de notas \r\n");

    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, "Bloco de notas");
}

TEST(DesktopEntryTest, PassesOverValuesThatAreNoText) {
    EXPECT_EQ(nameOf("Name=Texto\nName[pt_BR]=\xFF\xFE"), "Texto");
    EXPECT_EQ(nameOf(std::string("Name=Texto\nName[pt_BR]=a\0b", 27)), "Texto");
    EXPECT_EQ(nameOf("Name=Calculadora \xF0\x9F\xA7\xAE"), "Calculadora \xF0\x9F\xA7\xAE");
}

TEST(DesktopEntryTest, TakesANameOf1024BytesAndNoLongerOne) {
    EXPECT_EQ(nameOf("Name=" + std::string(1024, 'n')), std::string(1024, 'n'));
    EXPECT_EQ(nameOf("Name=" + std::string(1025, 'n')), "(absent)");
}

TEST(DesktopEntryTest, SurvivesJunk) {
    EXPECT_FALSE(parse(""));
    EXPECT_FALSE(parse("[Desktop Entry]"));
    EXPECT_FALSE(parse("=\n[\n]\n[]\n==\nName\n"));
    EXPECT_FALSE(parse(std::string(100'000, '[')));
    EXPECT_FALSE(parse(std::string("\0\0\x7F"
                                   "ELF\n\xFF",
                                   9)));
}

TEST(DesktopEntryTest, NamesTheProgramThatExecRuns) {
    EXPECT_EQ(programOf("/usr/bin/featherpad --standalone %U"), "featherpad");
    EXPECT_EQ(programOf("\"/opt/Meu Programa/programa\" %f"), "programa");
    EXPECT_EQ(programOf(R"("/opt/a\\"b/run" x)"), "run");
    EXPECT_EQ(programOf(""), "");
    EXPECT_EQ(programOf("\""), "");
}

TEST(DesktopEntryTest, LooksThroughEnv) {
    EXPECT_EQ(programOf("env BAMF_DESKTOP_FILE_HINT=/a/b.desktop /snap/bin/firefox %u"), "firefox");
    EXPECT_EQ(programOf("/usr/bin/env -u LANG -i GDK_BACKEND=x11 gimp-2.10"), "gimp-2.10");
    EXPECT_EQ(programOf("env A=1 env B=2 kate"), "kate");
    EXPECT_EQ(programOf("env A=1"), "");
}

TEST(DesktopEntryTest, KnowsThatProgramsThatRunOthersTellNothingOfAWindow) {
    EXPECT_EQ(programOf("sh -c \"exec something\""), "");
    EXPECT_EQ(programOf("/usr/bin/python3 /usr/share/app/main.py"), "");
    EXPECT_EQ(programOf("flatpak run org.example.App"), "");
}

TEST(DesktopEntryTest, TellsWhatAFileSaysUnderAKeyWhateverItsKind) {
    constexpr std::string_view file =
        "[Desktop Entry]\nHidden = true\nExec=a\\sb\n#Exec=c\n[Other]\nIcon=x\n";

    EXPECT_EQ(DesktopEntry::valueOf("Hidden", file), "true");
    EXPECT_EQ(DesktopEntry::valueOf("Exec", file), "a b");
    EXPECT_EQ(DesktopEntry::valueOf("Icon", file), std::nullopt);
    EXPECT_EQ(DesktopEntry::valueOf("Hidden", ""), std::nullopt);
}

TEST(DesktopEntryTest, TellsWhatACommandLineStarts) {
    EXPECT_EQ(DesktopEntry::executableOf("/usr/bin/nettlecap --option"), "/usr/bin/nettlecap");
    EXPECT_EQ(DesktopEntry::executableOf("\"/opt/100%% \\$ure/run\" %u"), "/opt/100% $ure/run");
    EXPECT_EQ(DesktopEntry::executableOf(""), "");
}

TEST(DesktopEntryTest, TakesTheLocaleFromTheFirstVariableThatIsSet) {
    ::setenv("LC_ALL", "", 1);
    ::setenv("LC_MESSAGES", "pt_PT.UTF-8", 1);
    ::setenv("LANG", "en_US.UTF-8", 1);
    EXPECT_EQ(MessageLocale::ofEnvironment().rank("pt_PT"), 1U);

    ::setenv("LC_ALL", "de_DE.UTF-8", 1);
    EXPECT_EQ(MessageLocale::ofEnvironment().rank("de"), 2U);
    EXPECT_EQ(MessageLocale::ofEnvironment().rank("pt_PT"), std::nullopt);

    ::unsetenv("LC_ALL");
    ::unsetenv("LC_MESSAGES");
    EXPECT_EQ(MessageLocale::ofEnvironment().rank("en"), 2U);
}

}  // namespace
}  // namespace nettlecap
