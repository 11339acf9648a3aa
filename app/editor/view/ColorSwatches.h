#pragma once

#include "app/editor/view/ModelWatch.h"

#include <QWidget>

#include <vector>

namespace sorrel {

class ChoiceButton;

/// The pen's fixed colours, with a section's overhang for the ring around one.
class ColorSwatches : public QWidget {
 public:
  ColorSwatches(EditorModel& model, QWidget* parent);

  /// Whether a colour isn't one of these.
  [[nodiscard]] static bool isCustom(quint32 colorHex);

 private:
  void refresh();
  void showTexts();

  EditorModel& model;
  std::vector<ChoiceButton*> swatches;
  const ModelWatch watch;
  const platform::Subscription languageChanges;
};

}  // namespace sorrel
