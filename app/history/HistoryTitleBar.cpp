#include "app/history/HistoryTitleBar.h"

#include "app/capture/Notifications.h"
#include "app/history/HistoryColors.h"
#include "app/history/HistoryViewModel.h"
#include "app/look/SymbolButton.h"
#include "app/look/TextStyle.h"
#include "app/settings/LocalizationManager.h"
#include "platform/base/NotificationCenter.h"
#include "platform/desktop/Image.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

namespace sorrel {
namespace {

constexpr int iconSide = 18;
constexpr int buttonSide = 18;
constexpr platform::Color dimmed{0x66ffffff, 0x66ffffff};

/// A number on a capsule.
class Badge : public QLabel {
 public:
  explicit Badge(QWidget* parent) : QLabel(parent) { setContentsMargins(7, 2, 7, 2); }

 protected:
  void paintEvent(QPaintEvent* event) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(AppColors::amberFill.resolved());
    painter.drawRoundedRect(rect(), height() / 2.0, height() / 2.0);
    painter.end();
    QLabel::paintEvent(event);
  }
};

}  // namespace

HistoryTitleBar::HistoryTitleBar(HistoryViewModel& model, QWidget* parent)
    : QWidget(parent),
      viewModel(model),
      icon(new QLabel(this)),
      title(new QLabel(this)),
      count(new Badge(this)),
      lock(new SymbolButton({}, buttonSide, this)),
      close(new SymbolButton({.symbol = QStringLiteral("xmark"),
                              .ink = HistoryColors::onTitleBarSecondary,
                              .ring = AppColors::amberFill},
                             buttonSide, this)) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(14, 10, 14, 10);
  row->setSpacing(8);
  row->addWidget(icon);
  row->addWidget(title);
  row->addStretch();
  for (QWidget* const widget :
       {static_cast<QWidget*>(count), static_cast<QWidget*>(lock), static_cast<QWidget*>(close)})
    row->addWidget(widget);
  if (const auto image = platform::Image::named(QStringLiteral("MenuBarIcon")))
    icon->setPixmap(image->icon.pixmap(QSize(iconSide, iconSide), devicePixelRatioF()));
  connect(lock, &QAbstractButton::clicked, this, [this] { viewModel.isLocked = !viewModel.isLocked; });
  connect(close, &QAbstractButton::clicked, this, [] {
    platform::NotificationCenter::defaultCenter().post(QString::fromLatin1(Notifications::closeHistoryPanel));
  });
  refresh();
}

void HistoryTitleBar::refresh() {
  applyStyle(*title, {13, QFont::DemiBold, HistoryColors::onTitleBar});
  title->setText(localized(QStringLiteral("history.title")));
  applyStyle(*count, {11, QFont::Bold, AppColors::inkOnAmber});
  close->setHelp(localized(QStringLiteral("history.close")));
  showCount();
  showLock();
}

void HistoryTitleBar::showCount() {
  const auto pictures = viewModel.screenshots->size();
  count->setText(QString::number(pictures));
  count->setAccessibleName(pictures == 1 ? localized(QStringLiteral("history.count.one"))
                                         : localized(QStringLiteral("history.count")).arg(pictures));
  count->setVisible(pictures > 0);
}

void HistoryTitleBar::showLock() {
  const bool isLocked = viewModel.isLocked;
  lock->setLook({.symbol = isLocked ? QStringLiteral("lock.fill") : QStringLiteral("lock.open"),
                 .side = 14,
                 .ink = isLocked ? HistoryColors::onTitleBar : dimmed,
                 .ring = AppColors::amberFill});
  lock->setHelp(localized(isLocked ? QStringLiteral("history.lock.lockedHelp")
                                   : QStringLiteral("history.lock.unlockedHelp")));
}

}  // namespace sorrel
