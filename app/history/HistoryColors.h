#pragma once

#include "app/shell/AppColors.h"
#include "platform/desktop/FocusablePanel.h"

/// The colours of the history panel besides the program's own.
namespace sorrel::HistoryColors {

inline constexpr platform::Color background{0xfffaf6ef, 0xff2b2e2a};
/// What the panel is filled with: it lets something through where that is blurred.
[[nodiscard]] inline QColor backgroundOf(const QWidget& view) {
  QColor color = background.resolved();
  if (platform::isBackdropBlurred(view))
    color.setAlphaF(0.88F);
  return color;
}
/// The title bar: bottle glass, dark in both appearances, so that its white marks always stand out.
inline constexpr platform::Color titleBar{0xff24402f, 0xff18271d};
inline constexpr platform::Color onTitleBar{0xffffffff, 0xffffffff};
inline constexpr platform::Color onTitleBarSecondary{0xb3ffffff, 0xb3ffffff};
/// A line around the panel, which keeps it apart from windows of its own colour.
inline constexpr platform::Color border{0x2e000000, 0x2effffff};
/// Behind a thumbnail.
inline constexpr platform::Color well{0x1f000000, 0x1f000000};
/// Behind the buttons that float on a picture.
inline constexpr platform::Color veil{0x8c000000, 0x8c000000};

}  // namespace sorrel::HistoryColors
