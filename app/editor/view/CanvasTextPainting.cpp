// How the text looks while it is edited.

#include "app/editor/view/CanvasTextEditor.h"
#include "app/shell/AppColors.h"
#include "platform/imaging/drawing/TextLines.h"

#include <QPainter>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace sorrel {

namespace TextLines = platform::TextLines;

namespace {

QColor accent(float opacity) {
  QColor color = AppColors::accent.resolved(platform::Appearance::Dark);
  color.setAlphaF(opacity);
  return color;
}

void paintField(QPainter& painter, const QRectF& field) {
  constexpr double radius = 6, border = 1.5, inset = border / 2;
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor::fromRgbF(0, 0, 0, 0.32F));
  painter.drawRoundedRect(field, radius, radius);
  painter.setPen(QPen(accent(0.9F), border));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(field.adjusted(inset, inset, -inset, -inset), radius - inset, radius - inset);
}

}  // namespace

QColor CanvasTextEditor::selectionColor() {
  return accent(0.55F);
}

void CanvasTextEditor::paint(QPainter& painter, double scale) const {
  paintField(painter, box());
  paintLines(painter);
  block->draw(painter, topLeft);
  if (isCaretOn && composingCaret && hasFocus())
    paintCaret(painter, scale);
}

/// What is below the glyphs: the selection, and the lines under what is being composed.
void CanvasTextEditor::paintLines(QPainter& painter) const {
  painter.save();
  painter.translate(topLeft);
  painter.scale(unit(), unit());
  painter.setPen(Qt::transparent);
  const QTextCursor cursor = textCursor();
  QTextLayout::FormatRange selected;
  selected.format.setForeground(Qt::transparent);
  selected.format.setBackground(selectionColor());
  for (QTextBlock line = document()->begin(); line.isValid(); line = line.next()) {
    selected.start = std::max(cursor.selectionStart() - line.position(), 0);
    selected.length = std::min(cursor.selectionEnd() - line.position(), line.length()) - selected.start;
    const bool isSelected = cursor.hasSelection() && selected.length > 0;
    if (isSelected || !line.layout()->preeditAreaText().isEmpty())
      line.layout()->draw(&painter, {}, isSelected ? QList{selected} : QList<QTextLayout::FormatRange>());
    if (isSelected && selected.start + selected.length == line.length()) {  // with the line's break
      const QTextLine only = line.layout()->lineAt(0);
      painter.fillRect(QRectF(only.cursorToX(line.length() - 1), line.layout()->position().y(),
                              TextLines::fontSize / 5.0, only.height()),
                       selectionColor());
    }
  }
  painter.restore();
}

/// On whole pixels of the device.
void CanvasTextEditor::paintCaret(QPainter& painter, double scale) const {
  const QTransform toDevice = painter.deviceTransform();
  const double ratio = toDevice.m11() / scale;
  QRectF place = toDevice.mapRect(caret());
  const double width = std::max(std::round(1.5 * ratio), std::round(place.height() / 24));
  place = QRectF(std::round(place.left() - width / 2), std::round(place.top()), width,
                 std::round(place.height()));
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  painter.fillRect(toDevice.inverted().mapRect(place), Qt::white);
  painter.restore();
}

}  // namespace sorrel
