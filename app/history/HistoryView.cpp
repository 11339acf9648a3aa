#include "app/history/HistoryView.h"

#include "app/capture/Notifications.h"
#include "app/history/HistoryAccessibility.h"
#include "app/history/HistoryColors.h"
#include "app/history/HistoryEmptyState.h"
#include "app/history/HistoryFooter.h"
#include "app/history/HistoryTitleBar.h"
#include "app/history/PanelGeometry.h"
#include "app/history/ThumbnailGrid.h"
#include "app/history/ToastView.h"
#include "app/settings/LocalizationManager.h"
#include "platform/base/NotificationCenter.h"

#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

namespace sorrel {
namespace {

constexpr int dividerHeight = 1;

void post(const char* name, const QVariant& object = {}) {
  platform::NotificationCenter::defaultCenter().post(QString::fromLatin1(name), object);
}

}  // namespace

HistoryView::HistoryView(std::shared_ptr<HistoryViewModel> viewModel, ThumbnailLoader& loader,
                         QWidget* parent)
    : QWidget(parent), vm(std::move(viewModel)) {
  installHistoryAccessibility();
  resize(PanelGeometry::size);
  titleBar = new HistoryTitleBar(*vm, this);
  const ThumbnailGrid::Actions actions{
      [](const Screenshot& shot) { post(Notifications::editScreenshot, shot.url()); },
      [this](const Screenshot& shot) { vm->handleQuillonButton(shot); },
      [this](const Screenshot& shot) {
        ScreenshotStore::moveToTrash(shot);
        vm->screenshots = ScreenshotStore::all();
      }};
  grid = new ThumbnailGrid(loader, actions, this);
  emptyState = new HistoryEmptyState(this);
  footer = new HistoryFooter(this);
  toast = new ToastView(this);

  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(titleBar);
  column->addSpacing(dividerHeight);
  column->addWidget(grid, 1);
  column->addWidget(emptyState, 1);
  column->addSpacing(dividerHeight);
  column->addWidget(footer);

  subscriptions.push_back(vm->screenshots.observe([this] { refreshLater(Shown::List); }));
  subscriptions.push_back(vm->isLocked.observe([this] { refreshLater(Shown::Lock); }));
  subscriptions.push_back(vm->toast.observe([this] { refreshLater(Shown::Toast); }));
  subscriptions.push_back(LocalizationManager::shared().observe([this] { refreshLater(Shown::Looks); }));
  subscriptions.push_back(platform::observeAppearance([this] { refreshLater(Shown::Looks); }));
  showList();
  toast->show(vm->toast);
}

HistoryView::~HistoryView() = default;

void HistoryView::refreshLater(Shown changing) {
  stale |= changing;
  // Observers are told before the change; by the next turn it is in place.
  if (!pendingRefresh.isPending())
    pendingRefresh = platform::MainQueue::main().asyncAfter({}, [this] { refresh(); });
}

void HistoryView::refresh() {
  const Stale changed = std::exchange(stale, {});
  if (changed.testFlag(Shown::List))
    showList();
  if (changed.testFlag(Shown::Lock))
    titleBar->showLock();
  if (changed.testFlag(Shown::Toast))
    toast->show(vm->toast);
  if (changed.testFlag(Shown::Looks)) {
    titleBar->refresh();
    footer->refresh();
    emptyState->refresh();
    grid->retranslate();
    toast->update();
    update();
  }
}

void HistoryView::showList() {
  grid->setScreenshots(vm->screenshots);
  titleBar->showCount();
  footer->refresh();  // the list changes with the folder
  const bool isEmpty = vm->screenshots->empty();
  grid->setVisible(!isEmpty);
  if (!isEmpty && hasFocus())
    grid->setFocus();
  emptyState->setVisible(isEmpty);
}

void HistoryView::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  if (grid->isVisibleTo(this))
    grid->setFocus();
}

void HistoryView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), HistoryColors::backgroundOf(*this));
  painter.fillRect(0, 0, width(), titleBar->geometry().bottom() + 1, HistoryColors::titleBar.resolved());
  const auto divide = [&](int y) {
    painter.fillRect(QRectF(0, y, width(), dividerHeight), AppColors::separator.resolved());
  };
  divide(titleBar->geometry().bottom() + 1);
  divide(footer->geometry().top() - dividerHeight);
}

void HistoryView::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cancel))
    post(Notifications::closeHistoryPanel);
  else if (event->keyCombination() == (Qt::CTRL | Qt::Key_Comma))
    post(Notifications::openSettings);
  else
    QWidget::keyPressEvent(event);
}

}  // namespace sorrel
