#pragma once

#include "app/settings/view/SettingsTab.h"

#include <vector>

namespace KeyboardShortcuts {
class Recorder;
}

namespace sorrel {

/// The shortcuts that work everywhere. The recorders store what is chosen and act by themselves.
class ShortcutsSettingsTab : public SettingsTab {
 public:
  explicit ShortcutsSettingsTab(QWidget* parent);

  void refresh() override;

 private:
  void colorTitles();
  void refreshLayoutNote();

  FormGroup* const group;
  std::vector<KeyboardShortcuts::Recorder*> recorders;
  FormCaption* const layoutNote;
  FormCaption* const note;
  const platform::Subscription appearance;
  const platform::Subscription layoutChange;
};

}  // namespace sorrel
