#pragma once

#include <QColor>
#include <QPixmap>

class QPainter;

namespace platform {

/// How a symbol is tinted. Either colour may be translucent.
struct SymbolColors {
  QColor ink;
  /// For what lies on a filled shape, as the cross of "xmark.circle.fill" does. If not given, it is cut out.
  QColor mark = Qt::transparent;
};

/// A symbol of the program's family, square, as sharp as `ratio` device pixels a point allow. `side`: in
/// device-independent pixels; made whole in device pixels, so at a broken ratio the pixmap's own size may
/// differ by less than one of them. Null if the family has no symbol of that name. Main thread only.
[[nodiscard]] QPixmap symbolPixmap(const QString& name, qreal side, qreal ratio, const SymbolColors& colors);

/// Draws a symbol in the middle of `bounds`, as large as fits, on whole device pixels, whatever the painter's
/// scale and offset. Answers false, and draws nothing, if the family has no symbol of that name.
bool drawSymbol(QPainter& painter, const QRectF& bounds, const QString& name, const SymbolColors& colors);

}  // namespace platform
