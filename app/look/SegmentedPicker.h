#pragma once

#include <QWidget>

#include <functional>
#include <vector>

namespace sorrel {

/// A few choices beside each other, of which one holds. Tab reaches the row, the arrow keys go along it.
class SegmentedPicker : public QWidget {
 public:
  /// A choice that has a symbol shows that alone, and its text as a tooltip.
  struct Choice {
    QString text;
    QString symbol = {};
  };

  /// `onChoose` hears what the user chose, by its index.
  SegmentedPicker(std::function<void(int)> onChoose, QWidget* parent);

  /// As many as the first time; later calls change the texts.
  void setChoices(const std::vector<Choice>& choices);
  /// -1 if none holds.
  void setChosen(int index);
  [[nodiscard]] int chosen() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  class Segment;

  const std::function<void(int)> onChoose;
  std::vector<Segment*> segments;
  bool isSetting = false;
};

}  // namespace sorrel
