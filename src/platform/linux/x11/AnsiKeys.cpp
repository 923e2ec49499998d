#include "platform/linux/x11/AnsiKeys.h"

#include <array>
#include <string_view>
#include <xkbcommon/xkbcommon-keysyms.h>

namespace nettlecap {

namespace {

/// A row of the ANSI keyboard, from left to right: its keys' labels and virtual key codes.
struct Row {
    const char* name;
    std::string_view labels;
    std::array<KeyCode, 10> codes;
};

constexpr Row rows[] = {{"AE", "1234567890", {18, 19, 20, 21, 23, 22, 26, 28, 25, 29}},
                        {"AD", "qwertyuiop", {12, 13, 14, 15, 17, 16, 32, 34, 31, 35}},
                        {"AC", "asdfghjkl", {0, 1, 2, 3, 5, 4, 38, 40, 37}},
                        {"AB", "zxcvbnm", {6, 7, 8, 9, 11, 45, 46}}};

}  // namespace

std::optional<AnsiKey> ansiKey(KeyCode code) {
    switch (code) {
    case 114: return AnsiKey{XKB_KEY_Insert, "INS"};  // Help on an ANSI keyboard
    case 123: return AnsiKey{XKB_KEY_Left, "LEFT"};
    case 124: return AnsiKey{XKB_KEY_Right, "RGHT"};
    case 125: return AnsiKey{XKB_KEY_Down, "DOWN"};
    case 126: return AnsiKey{XKB_KEY_Up, "UP"};
    default: break;
    }
    for (const Row& row : rows)
        for (std::size_t i = 0; i < row.labels.size(); ++i)
            if (row.codes[i] == code) {
                const std::string number = std::to_string(i + 1);  // AE01 to AE10
                return AnsiKey{static_cast<unsigned char>(row.labels[i]),
                               row.name + std::string(2 - number.size(), '0') + number};
            }
    return std::nullopt;
}

}  // namespace nettlecap
