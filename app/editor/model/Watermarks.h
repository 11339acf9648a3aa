#pragma once

#include "platform/imaging/drawing/TextBlock.h"

#include <QImage>
#include <QPointF>
#include <QSizeF>
#include <QString>

namespace sorrel {

/// The white text over the picture; it shows while it isn't blank. Lengths are in display points, tracking
/// and lineSpacing at scale 1.
struct TextWatermark {
  QString text;
  QPointF center;
  double scale = 1.0;  // of 30 points
  double opacity = 0.85;
  double tracking = 0.0;
  double lineSpacing = 0.0;
  platform::TextAlignment alignment = platform::TextAlignment::centre;

  /// A new document's: no text, its place low in the middle.
  [[nodiscard]] static TextWatermark initial(const QSizeF& displaySize);
  /// Only white space, or nothing: not drawn.
  [[nodiscard]] bool isBlank() const;
  /// How the text looks where one display point measures `factor`; an empty family stands for the bold system
  /// font.
  [[nodiscard]] platform::TextStyle style(double factor, const QString& fontFamily) const;

  bool operator==(const TextWatermark&) const = default;
};

/// A picture over the picture, a quarter of the display's width wide at scale 1.
struct LogoWatermark {
  QImage image;
  QPointF center;  // in display space
  double scale = 1.0;
  double opacity = 0.85;

  bool operator==(const LogoWatermark&) const = default;
};

}  // namespace sorrel
