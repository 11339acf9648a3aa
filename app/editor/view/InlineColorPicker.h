#pragma once

#include "app/editor/view/HSB.h"
#include "app/editor/view/ModelWatch.h"
#include "platform/desktop/Motion.h"

#include <QWidget>

namespace sorrel {

class PickerField;

/// Chooses any colour for the pen: a square of saturation and brightness over a bar of hues. Folded up it
/// takes no room. As wide as a section with its overhang, in which the handles end.
class InlineColorPicker : public QWidget {
 public:
  InlineColorPicker(EditorModel& model, QWidget* parent);

  /// Unfolds it, where the pen's colour is, or folds it up.
  void toggle();
  [[nodiscard]] bool isUnfolded() const { return unfolded; }

 private:
  void apply();
  void colorChanged();
  void showPosition();
  void place();
  void showTexts();

  EditorModel& model;
  PickerPosition position;
  bool unfolded = false;
  QWidget* const sheet;
  PickerField* const sbSquare;
  PickerField* const hueBar;
  platform::Motion unfolding;
  const ModelWatch watch;
  const platform::Subscription languageChanges;
};

}  // namespace sorrel
