#pragma once

#include "KeyboardShortcuts/recorder/RecorderCocoa.h"

class QLabel;

namespace KeyboardShortcuts {

/// A row of a form in which the user chooses a name's shortcut: a caption at the start, if there is one, and
/// the field at the end.
class Recorder : public QWidget {
 public:
  Recorder(const QString& title, const Name& name, RecorderCocoa::OnChange onChange = {},
           QWidget* parent = nullptr);
  explicit Recorder(const Name& name, RecorderCocoa::OnChange onChange = {}, QWidget* parent = nullptr);

  /// Also what a screen reader calls the field.
  void setTitle(const QString& title);
  void setName(const Name& name) { control->setShortcutName(name); }
  [[nodiscard]] RecorderCocoa& field() const { return *control; }

 private:
  QLabel* const label;
  RecorderCocoa* const control;
};

}  // namespace KeyboardShortcuts
