#include "app/editor/view/CanvasTextLayout.h"

#include "platform/imaging/drawing/TextLines.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

namespace sorrel {

namespace TextLines = platform::TextLines;

CanvasTextLayout::CanvasTextLayout(QTextDocument* document, const platform::TextStyle& initial)
    : QAbstractTextDocumentLayout(document), style(initial) {
  document->setDefaultFont(TextLines::font(style));
}

void CanvasTextLayout::setStyle(const platform::TextStyle& next) {
  style = next;
  document()->setDefaultFont(TextLines::font(style));
  layOut(document()->begin(), document()->end());
}

/// The canvas does, at its own scale.
void CanvasTextLayout::draw(QPainter*, const PaintContext&) {
}

int CanvasTextLayout::hitTest(const QPointF& point, Qt::HitTestAccuracy accuracy) const {
  if (accuracy == Qt::ExactHit && !QRectF({}, size).contains(point))
    return -1;
  QTextBlock hit = document()->begin();
  while (hit.next().isValid() && point.y() >= blockBoundingRect(hit.next()).top())
    hit = hit.next();
  return hit.position() + hit.layout()->lineAt(0).xToCursor(point.x());
}

QRectF CanvasTextLayout::frameBoundingRect(QTextFrame*) const {
  return {{}, size};
}

QRectF CanvasTextLayout::blockBoundingRect(const QTextBlock& block) const {
  const QTextLayout* const layout = block.layout();
  if (!block.isValid() || layout->lineCount() == 0)
    return {};
  return {0, layout->position().y(), size.width(), layout->lineAt(0).height()};
}

void CanvasTextLayout::documentChanged(int from, int, int added) {
  const QTextBlock last = document()->findBlock(from + added);
  layOut(document()->findBlock(from), last.isValid() ? last.next() : document()->end());
}

/// Lines without a change keep their glyphs, and may move.
void CanvasTextLayout::layOut(QTextBlock from, const QTextBlock& end) {
  for (; from.isValid() && from != end; from = from.next())
    TextLines::layOut(*from.layout());
  std::vector<QTextLayout*> lines;
  for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
    if (block.layout()->lineCount() == 0)
      TextLines::layOut(*block.layout());
    lines.push_back(block.layout());
  }
  size = TextLines::arrange(lines, style);
  Q_EMIT documentSizeChanged(size);
  Q_EMIT update();
}

}  // namespace sorrel
