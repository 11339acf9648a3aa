#pragma once

#include "app/shell/AppColors.h"

/// The colours that all views share, besides the program's own.
namespace sorrel::LookColors {

/// Texts, from the plainest to what explains it.
inline constexpr platform::Color label{0xe0000000, 0xe8ffffff};
inline constexpr platform::Color secondaryLabel{0xad000000, 0xb3ffffff};
/// Text and marks on `AppColors::accent`.
inline constexpr auto onAccent = platform::Color::lightDark(0xffffff, 0x14170f);
/// The sheet that menus and tooltips lie on, and the line around it.
inline constexpr auto popup = platform::Color::lightDark(0xf6f3ee, 0x363430);
inline constexpr platform::Color popupBorder{0x2e000000, 0x30ffffff};

}  // namespace sorrel::LookColors
