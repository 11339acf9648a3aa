#include "app/editor/view/OptionsPopover.h"

#include "app/editor/view/EditorPalette.h"
#include "app/editor/view/EditorTools.h"
#include "app/editor/view/OptionsSection.h"
#include "app/editor/view/PopoverGeometry.h"
#include "app/look/ControlPainting.h"
#include "app/look/Fading.h"
#include "app/look/LookColors.h"
#include "app/look/SlimScrollBar.h"
#include "app/look/SoftShadow.h"
#include "app/look/TextStyle.h"
#include "app/settings/LocalizationManager.h"

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QScrollArea>
#include <QVBoxLayout>

namespace sorrel {
namespace {

using namespace std::chrono_literals;
using namespace PopoverGeometry;
using platform::Easing;

constexpr auto showing = 150ms, hidingNow = 200ms, hidingByItself = 400ms, changingTool = 120ms;
constexpr int cornerRadius = 12;
constexpr int titleSpacing = 12;
constexpr SoftShadow shadowLook{16, 6, 0.45};
constexpr int shadowRoom = static_cast<int>(shadowLook.room());
constexpr platform::Color border = EditorPalette::always(0x14ffffff);

/// Of the panel and its arrow as one shape, smaller by `inset`.
QPainterPath outline(const QRectF& panel, double inset) {
  const QRectF area = panel.adjusted(inset, inset, -inset, -inset);
  QPainterPath path;
  path.addRoundedRect(area, cornerRadius - inset, cornerRadius - inset);
  // It reaches into the panel, so that no line parts the two.
  const double base = area.left(), inside = base + 1, end = arrowTop + arrowSize.height();
  QPainterPath arrow;
  arrow.addPolygon(QPolygonF({{inside, double(arrowTop)},
                              {base, double(arrowTop)},
                              {base - arrowSize.width(), (arrowTop + end) / 2},
                              {base, end},
                              {inside, end}}));
  arrow.closeSubpath();
  return path.united(arrow);
}

}  // namespace

/// Below the popover, and apart from it: the pointer goes through.
class PopoverShadow : public QWidget {
 public:
  explicit PopoverShadow(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
  }

  void setPresence(double next) {
    presence = next;
    setVisible(presence > 0);
    update();
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    painter.setOpacity(presence);
    paintSoftShadow(painter, rect().adjusted(shadowRoom, shadowRoom, -shadowRoom, -shadowRoom), cornerRadius,
                    shadowLook);
  }

 private:
  double presence = 1;
};

OptionsPopover::OptionsPopover(EditorModel& shown, QWidget* parent)
    : QWidget(parent),
      model(shown),
      times([this](PopoverTiming::Change change) { changeVisibility(change); }),
      shadow(new PopoverShadow(parent)),
      scroll(new QScrollArea(this)),
      content(new QWidget),
      column(new QVBoxLayout(content)),
      title(new QLabel(content)),
      presence(showing, Easing::Out, [this](double) { fade(); }),
      way(changingTool, Easing::Out, [this](double) { fit(); }),
      watch(shown, {&shown.tool}, [this] { showTool(); }),
      languageChanges(LocalizationManager::shared().observe([this] { showTitle(); })) {
  scroll->setFrameShape(QFrame::NoFrame);
  scroll->setFocusPolicy(Qt::NoFocus);
  scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  scroll->setWidgetResizable(true);
  scroll->setWidget(content);
  new SlimScrollBar(*scroll, Qt::Vertical, cornerRadius / 2);
  scroll->viewport()->setAutoFillBackground(false);
  content->setAutoFillBackground(false);
  constexpr int side = padding - OptionsSection::overhang;
  column->setContentsMargins(side, padding, side, padding);
  column->setSpacing(titleSpacing);
  title->setContentsMargins(OptionsSection::overhang, 0, OptionsSection::overhang, 0);
  applyStyle(*title, {10, QFont::Bold, LookColors::secondaryLabel});
  column->addWidget(title);
  column->addStretch();
  content->installEventFilter(this);
  parent->installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, this, &OptionsPopover::focusMoves);
  presence.jumpTo(1);
  showTool();
}

OptionsPopover::~OptionsPopover() {
  disconnect(qApp, nullptr, this, nullptr);  // its parts lose the keyboard as they go
}

bool OptionsPopover::eventFilter(QObject* watched, QEvent* event) {
  const bool isContent = watched == content && event->type() == QEvent::LayoutRequest;
  if (isContent || (watched == parent() && event->type() == QEvent::Resize))
    fit();
  return QWidget::eventFilter(watched, event);
}

void OptionsPopover::showTool() {
  const EditorTool& tool = editorTools()[size_t(indexOf(model.tool))];
  QWidget* next = nullptr;
  if (tool.makeSection) {
    QWidget*& made = sections[tool.tool];
    if (!made) {
      made = tool.makeSection({model, times}, content);
      column->insertWidget(1, made);
    }
    next = made;
  }
  if (next == section)
    return;
  if (section)
    section->hide();
  const bool isAppearing = !section;
  section = next;
  if (!section) {
    fade();
    return;
  }
  section->show();
  showTitle();
  start = geometry();
  if (isAppearing || presence.value() == 0) {
    way.jumpTo(1);
  } else {
    way.jumpTo(0);
    way.moveTo(1);
  }
  if (isAppearing)
    times.scheduleHide();
  fade();
}

void OptionsPopover::showTitle() {
  title->setText(
      localized(QString::fromLatin1(editorTools()[size_t(indexOf(model.tool))].helpKey)).toUpper());
}

void OptionsPopover::changeVisibility(PopoverTiming::Change change) {
  switch (change) {
    case PopoverTiming::Change::shown:
      presence.moveTo(1, showing, Easing::Out);
      break;
    case PopoverTiming::Change::hiddenNow:
      presence.moveTo(0, hidingNow, Easing::Out);
      break;
    case PopoverTiming::Change::hiddenByItself:
      presence.moveTo(0, hidingByItself, Easing::InOut);
      break;
  }
  fade();
}

/// It takes the pointer as soon as it begins to show, and leaves it as soon as it begins to go.
void OptionsPopover::fade() {
  const double shown = section ? presence.value() : 0;
  setAttribute(Qt::WA_TransparentForMouseEvents, !times.isVisible());
  setOpacity(*this, shown);
  setVisible(section && (shown > 0 || times.isVisible()));
  shadow->setPresence(shown);
  if (isVisible())
    raise();
}

void OptionsPopover::fit() {
  const int contentHeight = column->totalSizeHint().height();
  end = popover(indexOf(model.tool), parentWidget()->height(), contentHeight);
  const double done = way.value();
  const auto between = [done](int from, int to) { return qRound(from + (to - from) * done); };
  place({end.left(), between(start.top(), end.top()), end.width(), between(start.height(), end.height())});
}

void OptionsPopover::place(const QRect& area) {
  setGeometry(area);
  scroll->setGeometry(panel());
  shadow->setGeometry(
      panel().translated(area.topLeft()).adjusted(-shadowRoom, -shadowRoom, shadowRoom, shadowRoom));
  shadow->stackUnder(this);
}

QRect OptionsPopover::panel() const {
  return rect().adjusted(arrowSize.width(), 0, 0, 0);
}

void OptionsPopover::enterEvent(QEnterEvent*) {
  times.keep();
}

void OptionsPopover::leaveEvent(QEvent*) {
  if (times.isVisible())
    times.scheduleHide();
}

/// Whoever works with the keyboard holds it open too. A click gives none of its controls the keyboard.
void OptionsPopover::focusMoves(const QWidget* from, const QWidget* to) {
  const bool wasInside = from && isAncestorOf(from), isInside = to && isAncestorOf(to);
  if (isInside)
    times.keep();
  else if (wasInside && times.isVisible())
    times.scheduleHide();
}

void OptionsPopover::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const QRectF area = onWholePixels(painter, panel());
  const double line = hairline(painter);
  painter.fillPath(outline(area, 0), EditorPalette::popoverBG.resolved());
  painter.strokePath(outline(area, line / 2), QPen(border.resolved(), line));
}

}  // namespace sorrel
