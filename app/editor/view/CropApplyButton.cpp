#include "app/editor/view/CropApplyButton.h"

#include "app/look/ButtonControls.h"
#include "app/look/SoftShadow.h"
#include "app/look/TextStyle.h"
#include "app/settings/LocalizationManager.h"

#include <QBoxLayout>
#include <QEvent>
#include <QPainter>
#include <QPushButton>
#include <QShortcut>

namespace sorrel {
namespace {

constexpr SoftShadow shadow{.reach = 12, .drop = 4, .opacity = 0.45};
constexpr QSize padding(18, 11);
constexpr int symbolRoom = 20;
constexpr int radius = 8;

}  // namespace

CropApplyButton::CropApplyButton(std::function<void()> apply, QWidget* parent)
    : QWidget(parent), button(new QPushButton(this)) {
  auto* const layout = new QHBoxLayout(this);
  const int room = qCeil(shadow.room());
  layout->setContentsMargins(room, room, room, room);
  layout->addWidget(button);
  button->setDefault(true);
  button->setFont(fontOf({.size = 13, .weight = QFont::DemiBold, .color = {}}));
  setSymbol(*button, QStringLiteral("crop"));
  for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
    connect(new QShortcut(key, this), &QShortcut::activated, button, &QPushButton::click);
  connect(button, &QPushButton::clicked, this, [apply = std::move(apply)] { apply(); });
  languageChange = LocalizationManager::shared().observe([this] { retranslate(); });
  parent->installEventFilter(this);
  hide();
  retranslate();
}

void CropApplyButton::retranslate() {
  button->setText(localized(QStringLiteral("editor.crop.apply")));
  const QSize text = button->fontMetrics().size(Qt::TextSingleLine, button->text());
  button->setFixedSize(text + 2 * padding + QSize(symbolRoom, 0));
  center();
}

void CropApplyButton::center() {
  resize(sizeHint());
  QRect place = rect();
  place.moveCenter(parentWidget()->rect().center());
  move(place.topLeft());
}

bool CropApplyButton::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget() && event->type() == QEvent::Resize)
    center();
  return QWidget::eventFilter(watched, event);
}

void CropApplyButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintSoftShadow(painter, button->geometry(), radius, shadow);
}

}  // namespace sorrel
