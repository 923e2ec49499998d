#pragma once

#include <cstdint>

namespace nettlecap {

using KeyCode = std::uint32_t;        ///< virtual key code, by ANSI position
using ModifierFlags = std::uint64_t;  ///< bits of `modifier`

namespace modifier {
inline constexpr ModifierFlags shift = 1U << 17;
inline constexpr ModifierFlags control = 1U << 18;
inline constexpr ModifierFlags option = 1U << 19;
inline constexpr ModifierFlags command = 1U << 20;
inline constexpr ModifierFlags all = shift | control | option | command;
}  // namespace modifier

namespace keyCode {
inline constexpr KeyCode x = 7;
inline constexpr KeyCode c = 8;
inline constexpr KeyCode v = 9;
}  // namespace keyCode

}  // namespace nettlecap
