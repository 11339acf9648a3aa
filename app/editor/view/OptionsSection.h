#pragma once

#include <QWidget>

class QVBoxLayout;

namespace sorrel {

/// The options of one tool: a column of rows, with room on both sides for what reaches beyond a row, as the
/// handle of a slider at its end.
class OptionsSection : public QWidget {
 public:
  static constexpr int spacing = 12;
  static constexpr int overhang = 9;

  explicit OptionsSection(QWidget* parent);

 protected:
  /// Below the rows before. Answers what to hide to hide the row with the room above it.
  QWidget* addRow(QWidget* row);
  /// A row that keeps its overhang itself, and the room above it.
  void addWideRow(QWidget* row);
  /// The hairline between groups of rows.
  void addDivider();

 private:
  QVBoxLayout* const column;
};

}  // namespace sorrel
