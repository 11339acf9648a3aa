#pragma once

#include "app/editor/view/EditorTools.h"
#include "app/editor/view/ModelWatch.h"
#include "app/editor/view/OptionsSection.h"

#include <vector>

namespace sorrel {

class ChoiceButton;
class ColorSwatches;
class ColorTools;
class InlineColorPicker;

/// The pen's options: its colour, by swatches, a picker that unfolds, an eyedropper; and its width.
class PenSection : public OptionsSection {
 public:
  PenSection(const SectionContext& context, QWidget* parent);

 private:
  [[nodiscard]] QWidget* widthRow();
  void refresh();
  void showTexts();

  EditorModel& model;
  ColorSwatches* const swatches;
  ColorTools* const tools;
  InlineColorPicker* const picker;
  std::vector<ChoiceButton*> widths;
  const ModelWatch watch;
  const platform::Subscription languageChanges;
};

}  // namespace sorrel
