// A desktop entry file (freedesktop.org, Desktop Entry Specification 1.5): groups of
// key=value lines under [headers], the application in the group "Desktop Entry". A key may
// carry a locale, Name[pt_BR]. Values escape \s \n \t \r \\, lists separate with ';'.
#include "platform/linux/DesktopEntry.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <limits>

namespace nettlecap {
namespace {

constexpr std::string_view mainGroup = "[Desktop Entry]";
constexpr std::size_t longestName = 1024;  // in bytes; real ones stay under a hundred

// Their windows are those of whatever they run, so they stand for no application.
constexpr std::array<std::string_view, 16> runners{
    "bash", "electron", "env",    "exo-open", "flatpak", "gjs",  "java", "node",
    "perl", "pkexec",   "python", "python3",  "sh",      "snap", "wine", "xdg-open",
};

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

/// Cuts off and returns what stands before the separator, or everything.
std::string_view takeUntil(std::string_view& rest, char separator) {
    const auto end = rest.find(separator);
    const auto head = rest.substr(0, end);
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    return head;
}

bool isText(std::string_view bytes) {
    const auto* data = reinterpret_cast<const std::uint8_t*>(bytes.data());
    const auto length = static_cast<std::int64_t>(bytes.size());
    for (std::int64_t at = 0; at < length;) {
        UChar32 character = 0;
        U8_NEXT(data, at, length, character);
        if (character <= 0) return false;
    }
    return true;
}

std::string unescaped(std::string_view value) {
    std::string text;
    text.reserve(value.size());
    for (std::size_t i = 0; i < value.size(); ++i) {
        if (value[i] != '\\' || i + 1 == value.size()) {
            text += value[i];
            continue;
        }
        switch (value[++i]) {
        case 's': text += ' '; break;
        case 'n': text += '\n'; break;
        case 't': text += '\t'; break;
        case 'r': text += '\r'; break;
        case '\\': text += '\\'; break;
        default: (text += '\\') += value[i];
        }
    }
    return text;
}

/// The next argument of a command line, with Exec's double quotes taken off.
std::string takeArgument(std::string_view& line) {
    line = trimmed(line);
    std::string argument;
    bool quoted = false;
    std::size_t at = 0;
    for (; at < line.size() && (quoted || (line[at] != ' ' && line[at] != '\t')); ++at) {
        if (line[at] == '"') {
            quoted = !quoted;
        } else {
            if (quoted && line[at] == '\\' && at + 1 < line.size()) ++at;
            argument += line[at];
        }
    }
    line.remove_prefix(at);
    return argument;
}

std::string baseName(std::string_view path) {
    return std::string(path.substr(path.find_last_of('/') + 1));  // npos + 1 is 0
}

std::string programOf(std::string_view commandLine) {
    auto program = baseName(takeArgument(commandLine));
    while (program == "env") {
        auto argument = takeArgument(commandLine);
        while (argument.starts_with('-') || argument.find('=') != std::string::npos) {
            if (argument == "-u") takeArgument(commandLine);
            argument = takeArgument(commandLine);
        }
        program = baseName(argument);
    }
    if (std::ranges::find(runners, program) != runners.end()) return {};
    return program;
}

/// Calls for the lines of the main group, comments left out.
template <class Call>
void forEachLine(std::string_view file, Call call) {
    bool inMainGroup = false;
    while (!file.empty()) {
        const auto line = trimmed(takeUntil(file, '\n'));
        if (line.starts_with('[')) {
            if (inMainGroup) break;  // the groups after it are its actions
            inMainGroup = line == mainGroup;
        } else if (inMainGroup && !line.starts_with('#')) {
            call(line);
        }
    }
}

std::vector<std::string> listOf(std::string_view value) {
    std::vector<std::string> items;
    while (!value.empty())
        if (const auto item = takeUntil(value, ';'); !item.empty()) items.push_back(unescaped(item));
    return items;
}

/// Gathers the keys of the main group, line by line.
class Reader {
public:
    explicit Reader(const MessageLocale& locale) : locale_(locale) {}

    void read(std::string_view line) {
        const auto key = trimmed(takeUntil(line, '='));
        const auto value = trimmed(line);
        if (!isText(value)) return;
        if (key == "Type") isApplication_ = value == "Application";
        if (key == "Hidden") isHidden_ = value == "true";
        if (key == "NoDisplay") entry_.isShown = value != "true";
        if (key == "StartupWMClass") entry_.startupWindowClass = unescaped(value);
        if (key == "Exec") entry_.program = programOf(unescaped(value));
        if (key == "Categories") entry_.categories = listOf(value);
        if (key == "Name") takeName(value, plainRank);
        if (key.starts_with("Name[") && key.ends_with(']'))
            if (const auto rank = locale_.rank(key.substr(5, key.size() - 6))) takeName(value, *rank);
    }

    std::optional<DesktopEntry> entry() && {
        if (!isApplication_ || isHidden_ || entry_.name.empty()) return std::nullopt;
        return std::move(entry_);
    }

private:
    static constexpr std::size_t plainRank = std::numeric_limits<std::size_t>::max() - 1;

    void takeName(std::string_view value, std::size_t rank) {
        if (value.empty() || value.size() > longestName || rank >= rankOfName_) return;
        entry_.name = unescaped(value);
        rankOfName_ = rank;
    }

    const MessageLocale& locale_;
    DesktopEntry entry_;
    bool isApplication_ = false;
    bool isHidden_ = false;
    std::size_t rankOfName_ = plainRank + 1;
};

/// The locale without its encoding, which says nothing about the language.
std::string withoutEncoding(std::string_view locale) {
    const auto modifier = std::min(locale.find('@'), locale.size());
    const auto encoding = std::min(locale.find('.'), modifier);
    return std::string(locale.substr(0, encoding)).append(locale.substr(modifier));
}

}  // namespace

MessageLocale::MessageLocale(std::string_view locale) {
    const auto plain = withoutEncoding(locale);
    const auto modifier = std::min(plain.find('@'), plain.size());
    const auto country = std::min(plain.find('_'), modifier);
    const auto language = plain.substr(0, country);
    if (language.empty() || language == "C" || language == "POSIX") return;

    const bool hasCountry = country < modifier;
    const bool hasModifier = modifier < plain.size();
    if (hasCountry && hasModifier) keys_.push_back(plain);
    if (hasCountry) keys_.push_back(plain.substr(0, modifier));
    if (hasModifier) keys_.push_back(language + plain.substr(modifier));
    keys_.push_back(language);
}

MessageLocale MessageLocale::ofEnvironment() {
    for (const char* variable : {"LC_ALL", "LC_MESSAGES", "LANG"})
        if (const char* value = std::getenv(variable); value && *value) return MessageLocale(value);
    return {};
}

std::optional<std::size_t> MessageLocale::rank(std::string_view keyLocale) const {
    const auto key = std::ranges::find(keys_, withoutEncoding(keyLocale));
    if (key == keys_.end()) return std::nullopt;
    return static_cast<std::size_t>(key - keys_.begin()) + 1;
}

std::optional<DesktopEntry> DesktopEntry::parse(std::string_view file, const MessageLocale& locale) {
    Reader reader(locale);
    forEachLine(file, [&](std::string_view line) { reader.read(line); });
    return std::move(reader).entry();
}

std::optional<std::string> DesktopEntry::valueOf(std::string_view key, std::string_view file) {
    std::optional<std::string> found;
    forEachLine(file, [&](std::string_view line) {
        if (trimmed(takeUntil(line, '=')) != key) return;
        if (const auto value = trimmed(line); isText(value)) found = unescaped(value);
    });
    return found;
}

std::string DesktopEntry::executableOf(std::string_view exec) {
    auto executable = takeArgument(exec);
    for (std::size_t at = 0; (at = executable.find("%%", at)) != std::string::npos; ++at)
        executable.erase(at, 1);
    return executable;
}

}  // namespace nettlecap
