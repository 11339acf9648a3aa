#pragma once

#include "app/look/Form.h"

namespace sorrel {

/// One page of the settings. It changes the stored values alone; what they lead to happens elsewhere.
class SettingsTab : public Form {
 public:
  using Form::Form;

  /// Shows the texts of the present language and the values that are stored now.
  virtual void refresh() = 0;
};

}  // namespace sorrel
