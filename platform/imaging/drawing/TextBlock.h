#pragma once

#include <QColor>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <memory>
#include <optional>

class QPainter;

namespace platform {

enum class TextAlignment { left = 0, centre = 1, right = 2 };

/// What a text's own alpha becomes under it: moved by `offset` (y down), softened and coloured.
struct TextShadow {
  QColor colour;
  /// Twice the standard deviation of the gaussian that softens it.
  double blurRadius = 0;
  QPointF offset;

  bool operator==(const TextShadow&) const = default;
};

/// How a text looks. All lengths are in the unit of the space that it is drawn in.
struct TextStyle {
  /// A family, of which the regular weight is taken, or the full name of one font, such as "DejaVu Sans Bold"
  /// or "DejaVuSans-Bold". Empty or unknown: the bold system font.
  QString font;
  double fontSize = 0;
  double tracking = 0;     // added behind each character
  double lineSpacing = 0;  // added between lines
  TextAlignment alignment = TextAlignment::centre;
  QColor colour;
  std::optional<TextShadow> shadow;

  bool operator==(const TextStyle&) const = default;
};

/// A text of one or more lines, laid out once and drawn at any size. Lines break only where the text does,
/// and the alignment acts between the lines, in the width of the widest.
///
/// The layout is that of one large size without hinting, scaled: a block measured at one font size has, at
/// another, exactly the proportional measures, and its glyphs stand in the same places. y grows downwards.
/// Needs a QGuiApplication.
class TextBlock {
 public:
  TextBlock(const QString& text, const TextStyle& style);
  ~TextBlock();
  TextBlock(TextBlock&&) noexcept;
  TextBlock& operator=(TextBlock&&) noexcept;

  /// From the first line's top to the last one's bottom, as wide as the widest. Ink may reach beyond.
  [[nodiscard]] QSizeF size() const;

  /// What draw() touches at most, seen from the block's top left corner.
  [[nodiscard]] QRectF inkRect() const;

  /// Draws the block with its top left corner at `topLeft`, the shadow below it. The painter may be scaled
  /// but not turned.
  void draw(QPainter& painter, const QPointF& topLeft) const;

 private:
  struct Layout;
  void drawShadow(QPainter& painter) const;

  std::unique_ptr<const Layout> layout;
  TextStyle style;
};

}  // namespace platform
