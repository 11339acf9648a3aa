#include "app/look/Form.h"

#include "app/look/LookColors.h"
#include "app/look/SlimScrollBar.h"
#include "platform/desktop/Symbols.h"

#include <QApplication>
#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>
#include <QWheelEvent>

namespace sorrel {
namespace {

constexpr TextStyle titleText{12, QFont::Bold, LookColors::secondaryLabel};
constexpr TextStyle noteText{11, QFont::Normal, LookColors::secondaryLabel};
constexpr TextStyle warningText{11, QFont::Normal, LookColors::warning};

constexpr int formSide = 20, formBottom = 14;
constexpr int groupGap = 13;
constexpr int titleGap = 5;
constexpr int rowSide = 12, rowEdge = 5, rowGap = 12;
// At least. A least height of the row itself would be instead of its contents' own.
constexpr int contentHeight = 26;
constexpr int captionEdge = 6;
constexpr qreal sheetRadius = 9;
constexpr int signSide = 13, signGap = 5;

}  // namespace

FormText::FormText(const TextStyle& textStyle, QWidget* parent) : QLabel(parent), style(textStyle) {
  setTextFormat(Qt::PlainText);
  applyStyle(*this, style);
}

void FormText::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange)  // what it lies on has changed before it
    applyStyle(*this, style);
}

FormCaption::FormCaption(Kind shownKind, QWidget* parent)
    : QWidget(parent),
      kind(shownKind),
      label(new FormText(kind == Kind::Warning ? warningText : noteText, this)) {
  auto* const row = new QHBoxLayout(this);
  const int sign = kind == Kind::Warning ? signSide + signGap : 0;
  row->setContentsMargins(rowSide + sign, captionEdge, rowSide, 0);
  row->addWidget(label);
  label->setWordWrap(true);
  setVisible(false);
}

void FormCaption::setText(const QString& text) {
  label->setText(text);
  setVisible(!text.isEmpty());
}

void FormCaption::paintEvent(QPaintEvent*) {
  if (kind == Kind::Note)
    return;
  QPainter painter(this);
  const QRectF sign(rowSide, captionEdge + (label->fontMetrics().height() - signSide) / 2.0, signSide,
                    signSide);
  platform::drawSymbol(painter, sign, QStringLiteral("exclamationmark.triangle.fill"),
                       {LookColors::warning.resolved(), LookColors::ground.resolved()});
}

const TextStyle FormRow::text{13, QFont::Normal, LookColors::label};

FormRow::FormRow(QWidget* rowControl, QWidget* parent)
    : QWidget(parent), label(new FormText(text, this)), control(rowControl) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(rowSide, rowEdge, rowSide, rowEdge);
  row->setSpacing(rowGap);
  row->addWidget(label, 1);
  row->addWidget(control);
  row->addStrut(contentHeight);
  label->setBuddy(control);
}

void FormRow::setLabel(const QString& title) {
  label->setText(title);
  control->setAccessibleName(title);
}

/// The rounded sheet that the rows of a group lie on, with a hairline between each two that can be seen.
class FormGroup::Sheet : public QWidget {
 public:
  explicit Sheet(QWidget* parent) : QWidget(parent), column(new QVBoxLayout(this)) {
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
  }

  void add(QWidget* row) { column->addWidget(row); }

 private:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(LookColors::groupBorder.resolved());
    painter.setBrush(LookColors::group.resolved());
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), sheetRadius, sheetRadius);
    bool isFirst = true;
    for (int i = 0; i < column->count(); ++i) {
      const QWidget* const row = column->itemAt(i)->widget();
      if (row->isHidden())
        continue;
      if (!std::exchange(isFirst, false))
        painter.fillRect(QRectF(rowSide, row->y(), width() - 2 * rowSide, 1),
                         AppColors::separator.resolved());
    }
  }

  QVBoxLayout* const column;
};

FormGroup::FormGroup(QWidget* parent)
    : QWidget(parent),
      title(new FormText(titleText, this)),
      sheet(new Sheet(this)),
      captions(new QVBoxLayout) {
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  title->setContentsMargins(rowSide, 0, rowSide, titleGap);
  title->setVisible(false);
  captions->setSpacing(0);
  column->addWidget(title);
  column->addWidget(sheet);
  column->addLayout(captions);
}

void FormGroup::setTitle(const QString& text) {
  title->setText(text);
  title->setVisible(!text.isEmpty());
  sheet->setAccessibleName(text);
}

FormRow* FormGroup::addRow(QWidget* control) {
  auto* const row = new FormRow(control, sheet);
  sheet->add(row);
  return row;
}

QWidget* FormGroup::addWide(QWidget* contents) {
  auto* const row = new QWidget(sheet);
  auto* const layout = new QHBoxLayout(row);
  layout->setContentsMargins(rowSide, rowEdge, rowSide, rowEdge);
  layout->addWidget(contents);
  layout->addStrut(contentHeight);
  sheet->add(row);
  return row;
}

QWidget* FormGroup::addButtons(const std::vector<QWidget*>& buttons) {
  auto* const row = new QWidget;
  auto* const layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(rowGap - 4);
  for (QWidget* const button : buttons)
    layout->addWidget(button);
  layout->addStretch();
  return addWide(row);
}

FormCaption* FormGroup::addCaption(FormCaption::Kind kind) {
  auto* const caption = new FormCaption(kind, this);
  captions->addWidget(caption);
  return caption;
}

Form::Form(QWidget* parent) : QScrollArea(parent) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setWidgetResizable(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  auto* const contents = new QWidget;
  column = new QVBoxLayout(contents);
  column->setContentsMargins(formSide, 0, formSide, formBottom);
  column->setSpacing(0);
  column->addStretch();
  setWidget(contents);
  contents->setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
  new SlimScrollBar(*this);
  // The toolkit scrolls only where the keyboard was in the form before.
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
    if (now && widget()->isAncestorOf(now))
      ensureWidgetVisible(now);
  });
}

void Form::addHeader(QWidget* header) {
  column->insertWidget(0, header);
  nextGap = 0;
}

FormGroup* Form::addGroup() {
  auto* const group = new FormGroup(widget());
  const int end = column->count() - 1;
  column->insertSpacing(end, std::exchange(nextGap, groupGap));
  column->insertWidget(end + 1, group);
  return group;
}

FormPath::FormPath(const TextStyle& style, QWidget* parent)
    : QPlainTextEdit(parent), appearance(platform::observeAppearance([this, style] { setColor(style); })) {
  setFont(fontOf(style));
  setColor(style);
  setFrameShape(QFrame::NoFrame);
  setReadOnly(true);
  setTabChangesFocus(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  document()->setDocumentMargin(0);
  viewport()->setAutoFillBackground(false);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void FormPath::setColor(const TextStyle& style) {
  QPalette colors = palette();
  colors.setColor(QPalette::Text, style.color.resolved());
  setPalette(colors);
}

void FormPath::setText(const QString& path) {
  if (path != toPlainText())
    setPlainText(path);
  fit();
}

void FormPath::fit() {
  // The document's height is its number of lines.
  setFixedHeight(static_cast<int>(document()->size().height()) * fontMetrics().lineSpacing());
}

void FormPath::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  fit();
}

FormPicker::FormPicker(QWidget* parent) : QComboBox(parent) {
  setFocusPolicy(Qt::StrongFocus);
}

void FormPicker::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace sorrel
