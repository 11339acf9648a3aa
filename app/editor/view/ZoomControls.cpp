#include "app/editor/view/ZoomControls.h"

#include "app/editor/view/Canvas.h"
#include "app/editor/view/EditorPalette.h"
#include "app/look/SoftShadow.h"
#include "app/look/SymbolButton.h"
#include "app/look/TextButton.h"
#include "app/settings/LocalizationManager.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QShortcut>

#include <cmath>

namespace sorrel {
namespace {

constexpr int distance = 16;  // from the canvas's edges
constexpr int buttonHeight = 28;
constexpr int symbolWidth = 34;
constexpr int factorWidth = 48;
constexpr SoftShadow shadow{.reach = 8, .drop = 2, .opacity = 0.35};
constexpr int room = int(shadow.room());

SymbolButton* symbolButton(const QString& symbol, QWidget* parent) {
  auto* const button = new SymbolButton({symbol, 13, EditorPalette::icon}, buttonHeight, parent);
  button->setFixedSize(symbolWidth, buttonHeight);
  return button;
}

}  // namespace

ZoomControls::ZoomControls(Canvas& zoomed)
    : QWidget(&zoomed),
      canvas(zoomed),
      out(symbolButton(QStringLiteral("minus"), this)),
      factor(new TextButton({11, QFont::DemiBold, EditorPalette::icon}, {}, this)),
      in(symbolButton(QStringLiteral("plus"), this)),
      zoomChanges(zoomed.observeZoom([this] { showFactor(); })),
      languageChanges(LocalizationManager::shared().observe([this] { showTexts(); })) {
  factor->setFixedSize(factorWidth, buttonHeight);
  factor->setCursor(Qt::ArrowCursor);
  setCursor(Qt::ArrowCursor);
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(room, room, room, room);
  row->setSpacing(0);
  for (QWidget* const button :
       {static_cast<QWidget*>(out), static_cast<QWidget*>(factor), static_cast<QWidget*>(in)})
    row->addWidget(button);

  // The plus is the equals sign's key on most keyboards, and needs no Shift here.
  const struct {
    QAbstractButton* button;
    void (Canvas::*command)();
    std::vector<Qt::Key> keys;
  } commands[] = {{out, &Canvas::zoomOut, {Qt::Key_Minus}},
                  {factor, &Canvas::zoomToFit, {Qt::Key_0}},
                  {in, &Canvas::zoomIn, {Qt::Key_Plus, Qt::Key_Equal}}};
  for (const auto& [button, command, keys] : commands) {
    connect(button, &QAbstractButton::clicked, &canvas, command);
    for (const Qt::Key key : keys)
      for (const Qt::Modifier modifier : {Qt::CTRL, Qt::META})
        connect(new QShortcut(QKeySequence(modifier | key), this), &QShortcut::activated, &canvas, command);
  }
  showTexts();
  showFactor();
  adjustSize();
  canvas.installEventFilter(this);
  place();
}

void ZoomControls::showTexts() {
  out->setHelp(localized(QStringLiteral("editor.zoom.out")));
  in->setHelp(localized(QStringLiteral("editor.zoom.in")));
  factor->setToolTip(localized(QStringLiteral("editor.zoom.fit")));
}

void ZoomControls::showFactor() {
  factor->setText(QStringLiteral("%1%").arg(std::lround(canvas.zoomFactor() * 100)));
}

void ZoomControls::place() {
  move(canvas.width() - distance - width() + room, canvas.height() - distance - height() + room);
}

bool ZoomControls::eventFilter(QObject*, QEvent* event) {
  if (event->type() == QEvent::Resize)
    place();
  return false;
}

void ZoomControls::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF capsule = QRectF(rect()).adjusted(room, room, -room, -room);
  const double radius = capsule.height() / 2;
  paintSoftShadow(painter, capsule, radius, shadow);
  QColor ground = EditorPalette::popoverBG.resolved();
  ground.setAlphaF(0.92F);
  painter.setPen(QPen(QColor::fromRgbF(1, 1, 1, 0.08F), 1));
  painter.setBrush(ground);
  painter.drawRoundedRect(capsule.adjusted(0.5, 0.5, -0.5, -0.5), radius - 0.5, radius - 0.5);
}

}  // namespace sorrel
