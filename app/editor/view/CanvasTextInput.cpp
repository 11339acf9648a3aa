// What input methods, the keyboard and the pointer do to the text.

#include "app/editor/view/Canvas.h"
#include "app/editor/view/CanvasTextEditor.h"
#include "platform/imaging/drawing/TextLines.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QTextBlock>
#include <QTextLayout>

namespace sorrel {
namespace {

/// Looks like the text but for its underline. Glyphs are painted from outlines.
QTextCharFormat composed() {
  QTextCharFormat format;
  format.setForeground(Qt::transparent);
  format.setFontUnderline(true);
  format.setUnderlineColor(Qt::white);
  return format;
}

/// Those that don't end the editing: the user will be back.
bool isPassing(Qt::FocusReason reason) {
  return reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason ||
         reason == Qt::MenuBarFocusReason;
}

}  // namespace

QVariant CanvasTextEditor::inputMethodQuery(Qt::InputMethodQuery query) const {
  if (query != Qt::ImCursorRectangle && query != Qt::ImAnchorRectangle)
    return QTextEdit::inputMethodQuery(query);
  const QRectF place = caret();
  const QPointF top = canvas.fit().toCanvas(place.topLeft()) - pos();
  constexpr double width = 1;  // the toolkit places no candidates at a caret of none
  return QRectF(top, QSizeF(width, place.height() * canvas.canvasScale()));
}

/// Some input methods underline and some highlight; a part of what is composed that they set apart stays so.
void CanvasTextEditor::inputMethodEvent(QInputMethodEvent* event) {
  if (isLate(*event))
    return;
  using Attribute = QInputMethodEvent::Attribute;
  const int length = int(event->preeditString().size());
  composingCaret = length;
  QList<Attribute> attributes;
  for (Attribute one : event->attributes()) {
    if (one.type == QInputMethodEvent::Cursor)
      composingCaret = one.length ? std::optional(one.start) : std::nullopt;
    if (one.type == QInputMethodEvent::TextFormat) {
      const auto given = qvariant_cast<QTextFormat>(one.value);
      QTextCharFormat format = composed();
      if (one.length < length && given.hasProperty(QTextFormat::BackgroundBrush))
        format.setBackground(selectionColor());
      one.value = format;
    }
    attributes.append(one);
  }
  attributes.prepend({QInputMethodEvent::TextFormat, 0, length, composed()});
  QInputMethodEvent dressed(event->preeditString(), attributes);
  dressed.setCommitString(event->commitString(), event->replacementStart(), event->replacementLength());
  QTextEdit::inputMethodEvent(&dressed);
  event->setAccepted(dressed.isAccepted());
  changed();
}

/// Whether the input method only now hands over what has been kept.
bool CanvasTextEditor::isLate(const QInputMethodEvent& event) {
  if (!event.preeditString().isEmpty())
    kept.clear();
  if (kept.isEmpty() || event.commitString() != kept)
    return false;
  kept.clear();
  return true;
}

/// An input method may hand over what it composed only when the caret is elsewhere, or the focus.
void CanvasTextEditor::keepComposition() {
  if (!isComposing())
    return;
  const QString composition = textCursor().block().layout()->preeditAreaText();
  QInputMethodEvent event;
  event.setCommitString(composition);
  inputMethodEvent(&event);
  kept = composition;
}

/// Nothing that is typed is for the canvas.
void CanvasTextEditor::keyPressEvent(QKeyEvent* event) {
  const bool isPlain = !(event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier));
  if (event->key() == Qt::Key_Escape)
    onCommit();
  else if (isPlain && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
    textCursor().insertBlock();
  else
    QTextEdit::keyPressEvent(event);
  event->accept();
}

void CanvasTextEditor::insertFromMimeData(const QMimeData* source) {
  if (source->hasText())
    textCursor().insertText(platform::TextLines::withPlainBreaks(source->text()));
}

void CanvasTextEditor::focusInEvent(QFocusEvent* event) {
  QTextEdit::focusInEvent(event);
  blink(true);
}

void CanvasTextEditor::focusOutEvent(QFocusEvent* event) {
  QTextEdit::focusOutEvent(event);
  keepComposition();
  blinking.cancel();
  canvas.updateOver(shown);
  if (!isPassing(event->reason()))
    onCommit();
}

/// As the toolkit's control takes it, to which the layout's unit is a point.
QMouseEvent CanvasTextEditor::inLayout(const QMouseEvent& event) const {
  const QPointF place = (canvas.fit().toDisplay(event.position() + pos()) - topLeft) / unit();
  return {event.type(),           place,          event.scenePosition(),
          event.globalPosition(), event.button(), event.buttons(),
          event.modifiers(),      event.source(), event.pointingDevice()};
}

void CanvasTextEditor::mousePressEvent(QMouseEvent* event) {
  if (isComposing()) {
    keepComposition();
    QGuiApplication::inputMethod()->reset();
  }
  QMouseEvent scaled = inLayout(*event);
  QTextEdit::mousePressEvent(&scaled);
}

void CanvasTextEditor::mouseMoveEvent(QMouseEvent* event) {
  QMouseEvent scaled = inLayout(*event);
  QTextEdit::mouseMoveEvent(&scaled);
}

void CanvasTextEditor::mouseReleaseEvent(QMouseEvent* event) {
  QMouseEvent scaled = inLayout(*event);
  QTextEdit::mouseReleaseEvent(&scaled);
}

void CanvasTextEditor::mouseDoubleClickEvent(QMouseEvent* event) {
  QMouseEvent scaled = inLayout(*event);
  QTextEdit::mouseDoubleClickEvent(&scaled);
}

/// It scrolls and zooms the canvas.
void CanvasTextEditor::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace sorrel
