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
/// What the groups of a form lie on, the groups, and the lines around them.
inline constexpr auto ground = platform::Color::lightDark(0xf3f0e9, 0x272a26);
inline constexpr auto group = platform::Color::lightDark(0xfefcf8, 0x333630);
inline constexpr platform::Color groupBorder{0x1c000000, 0x1affffff};
/// Text that warns.
inline constexpr auto warning = platform::Color::lightDark(0xa8560a, 0xf0a54a);

/// What a control without an accent lies on.
inline constexpr platform::Color control{0x14000000, 0x1cffffff};
inline constexpr platform::Color controlHovered{0x20000000, 0x2cffffff};
inline constexpr platform::Color controlPressed{0x30000000, 0x3effffff};
/// A field to write in, and the line around it.
inline constexpr platform::Color field{0xffffffff, 0x40000000};
inline constexpr platform::Color fieldBorder{0x38000000, 0x38ffffff};
inline constexpr platform::Color fieldBorderHovered{0x5c000000, 0x5cffffff};
/// What a slider's handle or a switch's knob moves in, and these.
inline constexpr platform::Color trough{0x38000000, 0x40ffffff};
inline constexpr platform::Color troughHovered{0x4c000000, 0x54ffffff};
inline constexpr auto knob = platform::Color::lightDark(0xffffff, 0xf2f0ec);
/// Text of a button that throws something away.
inline constexpr auto destructive = platform::Color::lightDark(0xb3261e, 0xff8a7d);

}  // namespace sorrel::LookColors
