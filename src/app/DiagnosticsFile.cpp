#include "app/DiagnosticsFile.h"

#include <array>
#include <charconv>

namespace nettlecap {

namespace {

constexpr double secondsFrom1970To2001 = 978'307'200;

/// The shortest decimal text that reads back as the same number, never without a fraction.
std::string decimalText(double number) {
    std::array<char, 400> buffer;  // the longest double has 309 digits before its point
    const auto written =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::fixed);
    std::string text(buffer.data(), written.ptr);
    if (text.find('.') == std::string::npos) text += ".0";
    return text;
}

}  // namespace

void DiagnosticsFile::write(Ports ports, std::string_view name, const std::vector<Line>& lines) {
    const auto applicationSupport = ports.files.applicationSupportDirectory();
    if (!applicationSupport) return;
    std::string text = "timestamp=" + decimalText(ports.clock.now().secondsSince2001 + secondsFrom1970To2001);
    for (const Line& line : lines) text.append("\n").append(line.key).append("=").append(line.value);

    const Path folder = *applicationSupport / "Nettlecap";
    const std::array pieces{std::string_view(text)};
    static_cast<void>(ports.files.createDirectory(folder));
    static_cast<void>(ports.files.writeAtomically(folder / name, pieces, folder));
}

}  // namespace nettlecap
