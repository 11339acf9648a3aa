#pragma once

#include <QWidget>

namespace sorrel {

class TextButton;

/// The panel's lower strip: where the pictures are, and the way to the settings.
class HistoryFooter : public QWidget {
 public:
  explicit HistoryFooter(QWidget* parent);

  /// Shows the present folder and the present texts.
  void refresh();

 private:
  TextButton* const folder;
  TextButton* const settings;
};

}  // namespace sorrel
