#pragma once

#include "app/editor/view/CanvasTextLayout.h"
#include "platform/base/MainQueue.h"
#include "platform/imaging/drawing/TextBlock.h"

#include <QTextEdit>

#include <functional>
#include <optional>

namespace sorrel {

class Canvas;
class EditorModel;

/// The text watermark under the user's hands, on the canvas, where and how the file will have it, but fully
/// opaque and without its shadow. Each key press reaches the model at once, also what an input method still
/// composes, so an end at any moment loses nothing.
///
/// The widget takes the events; what it shows the canvas paints, in display space, by paint().
class CanvasTextEditor : public QTextEdit {
 public:
  /// Two texts of one style look alike.
  using StyleKey = platform::TextStyle;

  /// Takes the focus, with the caret at the text's end. `onCommit` is called when the user ends the editing,
  /// perhaps more than once.
  CanvasTextEditor(EditorModel& model, Canvas& canvas, std::function<void()> onCommit);
  ~CanvasTextEditor() override;

  /// How large the field for a text is, without its padding, in the unit of the style's lengths.
  [[nodiscard]] static QSizeF measure(const QString& text, const StyleKey& style);
  /// In display units; it rests while an input method composes.
  [[nodiscard]] QSizeF sizeThatFits() const { return lastSize; }

  /// The document, the font or the picture's place on the canvas may have changed.
  void follow();
  /// The painter's unit is a display unit. `scale`: points of the screen for one of them.
  void paint(QPainter& painter, double scale) const;

  [[nodiscard]] QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

 protected:
  void paintEvent(QPaintEvent*) override {}
  void resizeEvent(QResizeEvent*) override {}
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;

 private:
  /// With what is being composed, which the document doesn't have.
  [[nodiscard]] QString text() const;
  [[nodiscard]] bool isComposing() const;
  [[nodiscard]] bool isLate(const QInputMethodEvent& event);
  /// What is composed becomes text of the document.
  void keepComposition();
  void setText(const QString& next);
  void changed();
  void layOut();
  void place();
  void showCaret();
  void blink(bool isOn);

  [[nodiscard]] static QColor selectionColor();
  [[nodiscard]] double unit() const;  // of the layout, in display units
  [[nodiscard]] QRectF box() const;
  [[nodiscard]] QRectF caret() const;
  [[nodiscard]] QMouseEvent inLayout(const QMouseEvent& event) const;
  void paintLines(QPainter& painter) const;
  void paintCaret(QPainter& painter, double scale) const;

  EditorModel& model;
  Canvas& canvas;
  const std::function<void()> onCommit;
  StyleKey lastStyle;
  CanvasTextLayout* const layout;  // the document's
  QString shownText;
  std::optional<platform::TextBlock> block;
  QSizeF lastSize;
  QRectF lastBlock;                       // when nothing was being composed
  QPointF topLeft;                        // of the block; like all places, in display space
  QRectF shown;                           // all that is painted
  std::optional<int> composingCaret = 0;  // within what is being composed; none shows none
  bool isCaretOn = true;
  bool isSettingText = false;
  QString kept;  // of a composition, and perhaps still to be handed over by the input method
  platform::WorkItem blinking;
};

}  // namespace sorrel
