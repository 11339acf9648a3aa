#pragma once

#include "app/settings/view/SettingsTab.h"

namespace sorrel {

/// The shortcuts that work everywhere.
class ShortcutsSettingsTab : public SettingsTab {
 public:
  explicit ShortcutsSettingsTab(QWidget* parent);

  void refresh() override;

 private:
  FormGroup* const group;
  FormCaption* const layoutNote;
  FormCaption* const note;
  const platform::Subscription layoutChange;
};

}  // namespace sorrel
