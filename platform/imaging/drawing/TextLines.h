#pragma once

#include "platform/imaging/drawing/TextBlock.h"

#include <QFont>
#include <QStringList>

#include <vector>

class QTextLayout;

/// How the lines of a text stand, the same for what draws a text and for what lets it be edited: each in a
/// layout of its own, at one large size without hinting, which is scaled to the size wanted.
namespace platform::TextLines {

/// The pixel size of every layout: large, so that what the layout rounds (to 1/64 pixel) can't be seen at any
/// size.
inline constexpr int fontSize = 256;

/// What each line consists of, without the breaks, of whatever kind they are.
[[nodiscard]] QStringList split(const QString& text);
/// With a line feed for each break.
[[nodiscard]] QString withPlainBreaks(const QString& text);
/// In the layouts' size.
[[nodiscard]] QFont font(const TextStyle& style);
/// Makes the layout one line.
void layOut(QTextLayout& line);
/// Puts lines that were laid out below each other and aligns them: a layout's position gives its line's top,
/// and the line's own its left. Returns the size of all, as wide as the widest.
QSizeF arrange(const std::vector<QTextLayout*>& lines, const TextStyle& style);

}  // namespace platform::TextLines
