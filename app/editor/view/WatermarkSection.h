#pragma once

#include "app/editor/view/EditorTools.h"
#include "app/editor/view/ModelWatch.h"
#include "app/editor/view/OptionsSection.h"

#include <vector>

class QPushButton;

namespace sorrel {

class LogoMenuButton;
class SegmentedPicker;
class SliderRow;
class SymbolButton;

/// The watermarks' options. Those of the text show while there is one, those of the logo too.
class WatermarkSection : public OptionsSection {
 public:
  WatermarkSection(const SectionContext& context, QWidget* parent);

 private:
  /// A number of a watermark that a slider changes.
  template <typename Watermark>
  struct Setting {
    double Watermark::*field;
    SliderRow* slider;
    const char* helpKey;
    QWidget* row;
  };

  void addTextSetting(const char* symbol, double TextWatermark::*field, double least, double greatest,
                      const char* helpKey);
  void addLogoSetting(const char* symbol, double LogoWatermark::*field, double least, double greatest,
                      const char* helpKey);
  void addAlignment();
  void addLogoMenu();
  void clearText();
  void pickLogoFromFile();
  void setLogoFrom(const QUrl& file);
  void refresh();
  void showTexts();

  EditorModel& model;
  PopoverTiming& timing;
  QPushButton* const edit;
  std::vector<Setting<TextWatermark>> textSettings;
  SegmentedPicker* const alignment;
  SymbolButton* const textClear;
  QWidget* alignmentRow = nullptr;
  std::vector<Setting<LogoWatermark>> logoSettings;
  LogoMenuButton* logoMenu = nullptr;
  SymbolButton* const logoClear;
  const ModelWatch watch;
  const platform::Subscription languageChanges;
  const platform::Lifetime lifetime;
};

}  // namespace sorrel
