#pragma once

#include "app/shell/AppColors.h"

/// The colours that all views share, besides the program's own.
namespace sorrel::LookColors {

/// Texts, from the plainest to what explains it.
inline constexpr platform::Color label{0xe0000000, 0xe8ffffff};
inline constexpr platform::Color secondaryLabel{0xad000000, 0xb3ffffff};

}  // namespace sorrel::LookColors
