#pragma once

#include "app/settings/view/SettingsTab.h"
#include "platform/input/HotKeyState.h"

#include <vector>

class QCheckBox;
class QPushButton;

namespace KeyboardShortcuts {
class Recorder;
}

namespace sorrel {

class CommandRow;

/// The shortcuts that work everywhere, in the way in which the desktop lets a program have them. Recorders
/// store what is chosen and act by themselves; where the desktop keeps the keys it shows those, and where it
/// gives none, the commands that the user can bind himself.
class ShortcutsSettingsTab : public SettingsTab {
 public:
  explicit ShortcutsSettingsTab(QWidget* parent);

  void refresh() override;

 private:
  struct Row {
    QWidget* recorderRow;
    KeyboardShortcuts::Recorder* recorder;
    FormRow* givenRow;
    FormText* given;  // the keys, in the desktop's words
    QWidget* commandRow;
    CommandRow* command;
  };

  void addRows();
  void addWay();
  void colorTitles();
  void refreshRows(const platform::HotKeyState& state);
  void refreshWay(const platform::HotKeyState& state);
  void refreshLayoutNote();

  FormGroup* const group;
  std::vector<Row> rows;
  FormCaption* const layoutNote;
  FormCaption* const takenNote;
  FormCaption* const note;
  FormGroup* const wayGroup;  // what the user can do about the way
  FormRow* consentRow = nullptr;
  QCheckBox* consent = nullptr;
  QWidget* openRow = nullptr;
  QPushButton* open = nullptr;
  FormCaption* wayNote = nullptr;
  const platform::Subscription appearance;
  const platform::Subscription layoutChange;
  const platform::Subscription stateChange;
};

}  // namespace sorrel
