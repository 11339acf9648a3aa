#include "app/editor/view/ToolRail.h"

#include "app/editor/view/EditorPalette.h"
#include "app/editor/view/EditorTools.h"
#include "app/look/ChoiceButton.h"
#include "app/look/ControlPainting.h"
#include "app/look/FocusRing.h"
#include "app/look/SymbolButton.h"
#include "app/look/TextStyle.h"
#include "app/settings/LocalizationManager.h"
#include "app/shell/AppColors.h"
#include "platform/desktop/Symbols.h"

#include <QPainter>
#include <QShortcut>
#include <QVBoxLayout>

namespace sorrel {
namespace {

constexpr int buttonSide = 40;
constexpr int spacing = 8;
constexpr int padding = 12;
constexpr int symbolSide = 21;
constexpr int undoSymbolSide = 20;
constexpr platform::Color onSelected = EditorPalette::always(0xd9000000);
constexpr platform::Color hoveredGround = EditorPalette::always(0x14ffffff);
constexpr platform::Color pressedGround = EditorPalette::always(0x28ffffff);

class ToolButton : public ChoiceButton {
 public:
  ToolButton(const char* symbolName, QWidget* parent)
      : ChoiceButton({buttonSide, buttonSide}, parent), symbol(QString::fromLatin1(symbolName)) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    constexpr double radius = 9;
    const ControlColors colors(palette(), isEnabled());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF area = onWholePixels(painter, rect());
    if (isChecked())
      fillRounded(painter, area, radius, colors.accent(isHovered(), isDown()));
    else if (isHovered())
      fillRounded(painter, area, radius, colors(isDown() ? pressedGround : hoveredGround));
    const QColor ink = colors(isChecked() ? onSelected : EditorPalette::icon);
    if (symbol.isEmpty())
      drawWords(painter, ink);
    else
      platform::drawSymbol(painter, centered(symbolSide), symbol, {ink});
    if (hasFocus())
      drawFocusRing(painter, isChecked() ? area.adjusted(2, 2, -2, -2) : area,
                    colors(isChecked() ? onSelected : AppColors::accent), isChecked() ? radius - 2 : radius);
  }

 private:
  [[nodiscard]] QRectF centered(int side) const {
    QRectF place(0, 0, side, side);
    place.moveCenter(QRectF(rect()).center());
    return place;
  }

  void drawWords(QPainter& painter, const QColor& ink) const {
    constexpr int lineHeight = 10;
    painter.setFont(fontOf({9, QFont::Black, {}}));
    painter.setPen(ink);
    const QRect upper(0, height() / 2 - lineHeight, width(), lineHeight);
    painter.drawText(upper, Qt::AlignCenter | Qt::TextDontClip, QStringLiteral("water"));
    painter.drawText(upper.translated(0, lineHeight), Qt::AlignCenter | Qt::TextDontClip,
                     QStringLiteral("mark"));
  }

  const QString symbol;
};

}  // namespace

ToolRail::ToolRail(EditorModel& shown, const std::function<void(EditorModel::Tool)>& onSelect,
                   QWidget* parent)
    : QWidget(parent),
      model(shown),
      watch(shown, {&shown.tool, &shown.undoStack}, [this] { refresh(); }),
      languageChanges(LocalizationManager::shared().observe([this] { showTexts(); })) {
  setFixedWidth(width);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, padding, 0, padding);
  column->setSpacing(spacing);
  for (const EditorTool& tool : editorTools()) {
    auto* const button = new ToolButton(tool.symbol, this);
    connect(button, &QAbstractButton::clicked, this, [onSelect, which = tool.tool] { onSelect(which); });
    column->addWidget(button, 0, Qt::AlignHCenter);
    tools.push_back(button);
  }
  column->addStretch();
  addUndo();
  refresh();
  showTexts();
}

void ToolRail::addUndo() {
  undo = new SymbolButton({QStringLiteral("arrow.uturn.backward"), undoSymbolSide, EditorPalette::icon},
                          buttonSide, this);
  layout()->addWidget(undo);
  layout()->setAlignment(undo, Qt::AlignHCenter);
  undoKeys = new QShortcut(QKeySequence::Undo, this);
  connect(undo, &QAbstractButton::clicked, this, [this] { model.undoLast(); });
  connect(undoKeys, &QShortcut::activated, this, [this] { model.undoLast(); });
}

void ToolRail::refresh() {
  for (size_t i = 0; i < tools.size(); ++i)
    tools[i]->setChosen(editorTools()[i].tool == model.tool);
  const bool canUndo = !model.undoStack->isEmpty();
  undo->setEnabled(canUndo);
  undo->setLook({QStringLiteral("arrow.uturn.backward"), undoSymbolSide,
                 canUndo ? EditorPalette::icon : EditorPalette::iconDim});
  undoKeys->setEnabled(canUndo);
}

void ToolRail::showTexts() {
  for (size_t i = 0; i < tools.size(); ++i)
    tools[i]->setHelp(localized(QString::fromLatin1(editorTools()[i].helpKey)));
  undo->setHelp(localized(QStringLiteral("editor.undo.help")));
}

void ToolRail::paintEvent(QPaintEvent*) {
  QPainter(this).fillRect(rect(), EditorPalette::railBG.resolved());
}

}  // namespace sorrel
