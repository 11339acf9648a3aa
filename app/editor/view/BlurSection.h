#pragma once

#include "app/editor/view/EditorTools.h"
#include "app/editor/view/ModelWatch.h"
#include "app/editor/view/OptionsSection.h"

namespace sorrel {

class SegmentedPicker;
class SliderRow;

/// The blur's options: its style, by what gesture it is laid, how wide the brush is and how strong the blur.
class BlurSection : public OptionsSection {
 public:
  BlurSection(const SectionContext& context, QWidget* parent);

 private:
  void refresh();
  void showTexts();

  EditorModel& model;
  SegmentedPicker* const style;
  SegmentedPicker* const apply;
  SliderRow* const brushSize;
  QWidget* brushRow = nullptr;
  SliderRow* const intensity;
  const ModelWatch watch;
  const platform::Subscription languageChanges;
};

}  // namespace sorrel
