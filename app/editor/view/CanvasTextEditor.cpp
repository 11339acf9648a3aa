#include "app/editor/view/CanvasTextEditor.h"

#include "app/editor/model/EditorModel.h"
#include "app/editor/view/Canvas.h"
#include "app/editor/view/WatermarkPlacement.h"
#include "app/settings/LocalizationManager.h"
#include "platform/imaging/drawing/TextLines.h"

#include <QGuiApplication>
#include <QInputMethod>
#include <QScrollBar>
#include <QStyleHints>
#include <QTextBlock>
#include <QTextLayout>

#include <algorithm>
#include <utility>

namespace sorrel {

namespace TextLines = platform::TextLines;

namespace {

constexpr QSizeF padding(8, 3);  // on each side

CanvasTextEditor::StyleKey styleOf(const EditorModel& model) {
  CanvasTextEditor::StyleKey style = model.textWM->style(1, model.fontFamily());
  style.colour = Qt::white;
  style.shadow.reset();
  return style;
}

}  // namespace

CanvasTextEditor::CanvasTextEditor(EditorModel& document, Canvas& shownOn, std::function<void()> commit)
    : QTextEdit(shownOn.viewport()),
      model(document),
      canvas(shownOn),
      onCommit(std::move(commit)),
      lastStyle(styleOf(model)),
      layout(new CanvasTextLayout(QTextEdit::document(), lastStyle)) {
  setFrameShape(NoFrame);
  viewport()->setAutoFillBackground(false);
  setAcceptRichText(false);
  setAcceptDrops(false);
  setTabChangesFocus(true);
  setLineWrapMode(FixedPixelWidth);
  for (QScrollBar* const bar : {horizontalScrollBar(), verticalScrollBar()})
    connect(bar, &QScrollBar::rangeChanged, bar, [bar] { bar->setRange(0, 0); });  // all of it is in view
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  QTextEdit::document()->setDocumentLayout(layout);
  setAccessibleName(localized(QStringLiteral("editor.tool.watermark")));
  connect(this, &QTextEdit::textChanged, this, [this] { changed(); });
  connect(this, &QTextEdit::cursorPositionChanged, this, [this] { showCaret(); });
  connect(this, &QTextEdit::selectionChanged, this, [this] { blink(true); });
  follow();
  show();
  setFocus();
}

CanvasTextEditor::~CanvasTextEditor() = default;

QSizeF CanvasTextEditor::measure(const QString& text, const StyleKey& style) {
  QStringList lines = TextLines::split(text);
  for (QString& line : lines)
    if (line.isEmpty())
      line = u' ';
  const QSizeF size = platform::TextBlock(lines.join(u'\n'), style).size();
  return textFieldSize(size);
}

QString CanvasTextEditor::text() const {
  QString all = document()->toRawText();
  all.replace(QChar::ParagraphSeparator, u'\n');
  const QTextBlock line = textCursor().block();
  const QTextLayout& composing = *line.layout();
  if (isComposing())
    all.insert(line.position() + composing.preeditAreaPosition(), composing.preeditAreaText());
  return all;
}

bool CanvasTextEditor::isComposing() const {
  return !textCursor().block().layout()->preeditAreaText().isEmpty();
}

void CanvasTextEditor::follow() {
  if (TextLines::withPlainBreaks(model.textWM->text) != text())
    setText(model.textWM->text);
  place();
}

void CanvasTextEditor::setText(const QString& next) {
  isSettingText = true;
  if (isComposing()) {
    keepComposition();
    QGuiApplication::inputMethod()->reset();
  }
  setPlainText(TextLines::withPlainBreaks(next));
  moveCursor(QTextCursor::End);
  isSettingText = false;
}

void CanvasTextEditor::changed() {
  if (isSettingText)
    return;
  const QString now = text();
  if (now != shownText)
    model.textWM.change([&](TextWatermark& watermark) { watermark.text = now; });
  place();
  showCaret();
}

/// While an input method composes, the field keeps its size and the style that it has.
void CanvasTextEditor::layOut() {
  const StyleKey style = styleOf(model);
  const bool isRestyled = !isComposing() && style != lastStyle;
  if (isRestyled)
    layout->setStyle(lastStyle = style);
  const QString now = text();
  if (isRestyled || !block || now != shownText)
    block.emplace(shownText = now, lastStyle);
  if (!isComposing()) {
    const QSizeF size = block->size();
    // Only beside less than that could an empty line count.
    const bool isNarrow = size.width() < lastStyle.fontSize + std::max(lastStyle.tracking, 0.0);
    lastSize = isNarrow ? measure(shownText, lastStyle) : textFieldSize(size);
    lastBlock.setSize(size);
  }
}

void CanvasTextEditor::place() {
  layOut();
  lastBlock.moveCenter(model.textWM->center);
  QRectF now({0, 0}, block->size());
  now.moveCenter(lastBlock.center());
  if (lastStyle.alignment == platform::TextAlignment::left)
    now.moveLeft(lastBlock.left());
  else if (lastStyle.alignment == platform::TextAlignment::right)
    now.moveRight(lastBlock.right());
  now.moveTop(lastBlock.top());
  topLeft = now.topLeft();

  const CanvasFit& fit = canvas.fit();
  setGeometry(QRectF(fit.toCanvas(box().topLeft()), fit.toCanvas(box().bottomRight())).toAlignedRect());
  const double margin = caret().height() / 4;  // for the caret, beyond the text's edge
  const QRectF next =
      (box() | now | block->inkRect().translated(topLeft)).adjusted(-margin, -margin, margin, margin);
  canvas.updateOver(std::exchange(shown, next));
  canvas.updateOver(shown);
  updateMicroFocus();
}

void CanvasTextEditor::showCaret() {
  blink(true);
  if (hasFocus() && !isSettingText)
    canvas.reveal(caret());
}

/// The caret shows for a moment whatever happens, and then blinks as the desktop's do.
void CanvasTextEditor::blink(bool isOn) {
  isCaretOn = isOn;
  canvas.updateOver(shown);
  const int flash = QGuiApplication::styleHints()->cursorFlashTime();
  if (flash > 1)
    blinking = platform::MainQueue::main().asyncAfter(std::chrono::milliseconds(flash / 2),
                                                      [this] { blink(!isCaretOn); });
}

double CanvasTextEditor::unit() const {
  return lastStyle.fontSize / TextLines::fontSize;
}

QRectF CanvasTextEditor::box() const {
  QRectF field({0, 0}, lastSize + 2 * padding);
  field.moveCenter(model.textWM->center);
  return field;
}

QRectF CanvasTextEditor::caret() const {
  const QTextCursor cursor = textCursor();
  const QTextLayout& line = *cursor.block().layout();
  const double x = line.lineAt(0).cursorToX(cursor.positionInBlock() + composingCaret.value_or(0));
  const QRectF place(x, line.position().y(), 0, line.lineAt(0).height());
  return {topLeft + place.topLeft() * unit(), place.size() * unit()};
}

}  // namespace sorrel
