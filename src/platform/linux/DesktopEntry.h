#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nettlecap {

/// The language of a program's messages, as the keys of a desktop entry name it: pt_BR, ca@valencia.
class MessageLocale {
public:
    MessageLocale() = default;                        ///< no language: only the plain keys
    explicit MessageLocale(std::string_view locale);  ///< lang_COUNTRY.ENCODING@MODIFIER

    static MessageLocale ofEnvironment();  ///< LC_ALL, else LC_MESSAGES, else LANG

    /// How well a key in this locale fits, 1 the best. Absent: not at all.
    std::optional<std::size_t> rank(std::string_view keyLocale) const;

private:
    std::vector<std::string> keys_;  // the most particular first
};

/// What an application says of itself in its .desktop file. Every text is valid UTF-8.
struct DesktopEntry {
    std::string identifier;  ///< path below `applications` without the ending; '-' for each '/'
    std::string name;        ///< in the user's language
    std::string startupWindowClass;
    std::string program;  ///< base name of what Exec runs; empty where it tells nothing of the window
    std::vector<std::string> categories;
    bool isShown = true;  ///< false: menus leave it out

    bool operator==(const DesktopEntry&) const = default;

    /// Reads any bytes at all; lines that make no sense are passed over. Absent: hidden, no
    /// application, or nameless. The identifier stays empty, since the file does not know it.
    static std::optional<DesktopEntry> parse(std::string_view file, const MessageLocale& locale);

    /// What the file itself says under the key, whatever kind of entry it is.
    static std::optional<std::string> valueOf(std::string_view key, std::string_view file);
    /// What the value of Exec starts, by name or path.
    static std::string executableOf(std::string_view exec);
};

}  // namespace nettlecap
