#pragma once

#include "platform/desktop/Appearance.h"

#include <QFont>

class QLabel;

namespace sorrel {

/// How a line of text looks: the system font in device-independent pixels, as the panel's layout is.
struct TextStyle {
  int size = 12;
  QFont::Weight weight = QFont::Normal;
  platform::Color color;
};

[[nodiscard]] QFont fontOf(const TextStyle& style);
/// Gives the label that look, in the colour of its parent's present appearance: set it anew when that
/// changes.
void applyStyle(QLabel& label, const TextStyle& style);

}  // namespace sorrel
