#pragma once

#include <QWidget>

class QLabel;

namespace sorrel {

/// What the panel shows while there are no pictures.
class HistoryEmptyState : public QWidget {
 public:
  explicit HistoryEmptyState(QWidget* parent);

  /// Shows the present texts in the present colours.
  void refresh();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QLabel* const art;
  QLabel* const title;
  QLabel* const hint;
};

}  // namespace sorrel
