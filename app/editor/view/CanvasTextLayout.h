#pragma once

#include "platform/imaging/drawing/TextBlock.h"

#include <QAbstractTextDocumentLayout>

namespace sorrel {

/// Gives the lines of a text that is being edited the places that they have in the file. Each of the
/// document's blocks is a line; lengths are in the unit of platform::TextLines. It draws nothing.
///
/// A change of style is no change of the document: neither the selection nor what can be taken back knows of
/// it.
class CanvasTextLayout : public QAbstractTextDocumentLayout {
 public:
  /// `document` owns it.
  CanvasTextLayout(QTextDocument* document, const platform::TextStyle& initial);

  void setStyle(const platform::TextStyle& next);

  void draw(QPainter* painter, const PaintContext& context) override;
  [[nodiscard]] int hitTest(const QPointF& point, Qt::HitTestAccuracy accuracy) const override;
  [[nodiscard]] int pageCount() const override { return 1; }
  [[nodiscard]] QSizeF documentSize() const override { return size; }
  [[nodiscard]] QRectF frameBoundingRect(QTextFrame* frame) const override;
  [[nodiscard]] QRectF blockBoundingRect(const QTextBlock& block) const override;

 protected:
  void documentChanged(int from, int removed, int added) override;

 private:
  void layOut(QTextBlock from, const QTextBlock& end);

  platform::TextStyle style;
  QSizeF size;
};

}  // namespace sorrel
