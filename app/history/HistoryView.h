#pragma once

#include "app/history/HistoryViewModel.h"
#include "platform/base/MainQueue.h"
#include "platform/desktop/Appearance.h"

#include <QWidget>

#include <memory>
#include <vector>

namespace sorrel {

class HistoryEmptyState;
class HistoryFooter;
class HistoryTitleBar;
class ThumbnailGrid;
class ThumbnailLoader;
class ToastView;

/// What the history panel holds. It shows the model's fields, the interface language and the desktop's
/// appearance, each as soon as it changes and without touching what shows the others; several changes at once
/// cost one redrawing.
class HistoryView : public QWidget {
 public:
  HistoryView(std::shared_ptr<HistoryViewModel> viewModel, ThumbnailLoader& loader,
              QWidget* parent = nullptr);
  ~HistoryView() override;

  [[nodiscard]] ThumbnailGrid& thumbnails() { return *grid; }

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  enum class Shown { List = 1, Lock = 2, Toast = 4, Looks = 8 };  // the latter: texts and colors
  Q_DECLARE_FLAGS(Stale, Shown)

  void refreshLater(Shown changing);
  void refresh();
  void showList();

  const std::shared_ptr<HistoryViewModel> vm;
  HistoryTitleBar* titleBar;
  ThumbnailGrid* grid;
  HistoryEmptyState* emptyState;
  HistoryFooter* footer;
  ToastView* toast;
  Stale stale;
  platform::WorkItem pendingRefresh;
  std::vector<platform::Subscription> subscriptions;
};

}  // namespace sorrel
