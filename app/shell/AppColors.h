#pragma once

#include "platform/desktop/Appearance.h"

namespace sorrel::AppColors {

inline constexpr auto accent = platform::Color::lightDark(0x3B6B2F, 0x6FAE4E);
inline constexpr auto amberFill = platform::Color::lightDark(0xE9C046, 0xF2D35B);
/// Text on `amberFill`.
inline constexpr auto inkOnAmber = platform::Color::lightDark(0x10261A, 0x10261A);
/// Hairlines, and the faintest of texts: the text's colour let through to these degrees.
inline constexpr platform::Color separator{0x1a000000, 0x1affffff};
inline constexpr platform::Color tertiaryLabel{0x8c000000, 0x8cffffff};

}  // namespace sorrel::AppColors
