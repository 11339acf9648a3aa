#pragma once

#include "app/history/HistoryViewModel.h"
#include "platform/base/MainQueue.h"
#include "platform/desktop/Appearance.h"

#include <QWidget>

#include <memory>

namespace sorrel {

class HistoryEmptyState;
class HistoryFooter;
class HistoryTitleBar;
class ThumbnailGrid;
class ThumbnailLoader;
class ToastView;

/// What the history panel holds. It shows the model's state, the interface language and the desktop's
/// appearance, each as soon as it changes; several changes at once cost one redrawing. Its corners are left
/// unpainted.
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
  void setNeedsRefresh();
  void refresh();

  const std::shared_ptr<HistoryViewModel> vm;
  HistoryTitleBar* titleBar;
  ThumbnailGrid* grid;
  HistoryEmptyState* emptyState;
  HistoryFooter* footer;
  ToastView* toast;
  platform::WorkItem pendingRefresh;
  platform::Subscription modelToken;
  platform::Subscription languageToken;
  platform::Subscription appearanceToken;
};

}  // namespace sorrel
