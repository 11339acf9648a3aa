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

  /// Shows the model's present state and the present texts.
  void refresh();

 private:
  HistoryViewModel& viewModel;
  QLabel* const icon;
  QLabel* const title;
  QLabel* const count;
  SymbolButton* const lock;
  SymbolButton* const close;
};

}  // namespace sorrel
