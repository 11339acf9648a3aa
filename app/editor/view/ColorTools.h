#pragma once

#include "app/editor/view/EditorTools.h"
#include "app/editor/view/ModelWatch.h"
#include "platform/desktop/ColorSampler.h"

#include <QWidget>

class QAbstractButton;

namespace sorrel {

class HexCopyButton;
class PaletteToggle;
class SymbolButton;

/// What can be done with the pen's colour: choose another freely, take one from the screen, copy its code.
class ColorTools : public QWidget {
 public:
  ColorTools(const SectionContext& context, QWidget* parent);

  /// The wheel that unfolds the picker.
  [[nodiscard]] QAbstractButton* paletteToggle() const;

 private:
  void pickFromScreen();
  void copyHex();
  void refresh();
  void showTexts();

  EditorModel& model;
  PopoverTiming& timing;
  PaletteToggle* const toggle;
  SymbolButton* const eyedropper;
  HexCopyButton* const hexCopy;
  platform::ColorSampler sampler;
  const ModelWatch watch;
  const platform::Subscription languageChanges;
};

}  // namespace sorrel
