#pragma once

#include "platform/desktop/Appearance.h"

/// The colours of the editor's frame, which is dark on every desktop.
namespace sorrel::EditorPalette {

constexpr platform::Color always(QRgb color) {
  return {color, color};
}

inline constexpr platform::Color windowBG = always(0xff212124);
inline constexpr platform::Color railBG = always(0xff1a1a1c);
inline constexpr platform::Color popoverBG = always(0xff2b2b30);
inline constexpr platform::Color icon = always(0xd9ffffff);
inline constexpr platform::Color iconDim = always(0x66ffffff);
/// Between a section's groups of controls.
inline constexpr platform::Color divider = always(0x14ffffff);

}  // namespace sorrel::EditorPalette
