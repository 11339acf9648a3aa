#pragma once

#include <QWidget>

class QLabel;

namespace sorrel {

class HistoryViewModel;
class SymbolButton;

/// The panel's upper strip: the program's mark, what the panel is, how many pictures there are, the lock and
/// the button that closes. Paints no background of its own.
class HistoryTitleBar : public QWidget {
 public:
  HistoryTitleBar(HistoryViewModel& viewModel, QWidget* parent);

  /// Shows the present texts and colors.
  void refresh();
  /// Shows the model's present number of pictures.
  void showCount();
  /// Shows whether the model is locked.
  void showLock();

 private:
  HistoryViewModel& viewModel;
  QLabel* const icon;
  QLabel* const title;
  QLabel* const count;
  SymbolButton* const lock;
  SymbolButton* const close;
};

}  // namespace sorrel
