#pragma once

#include "app/editor/view/ModelWatch.h"

#include <QWidget>

class QLabel;
class QPushButton;
class QShortcut;

namespace sorrel {

/// What the picture is, and the two ways to leave: Cancel, which is Escape too but while a text is written,
/// and Save.
class TopBar : public QWidget {
 public:
  static constexpr int height = 54;

  TopBar(EditorModel& model, const std::function<void()>& onCancel, const std::function<void()>& onSave,
         QWidget* parent);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void refresh();
  void showTexts();

  EditorModel& model;
  QLabel* const pixels;
  QLabel* const file;
  QPushButton* const cancelButton;
  QPushButton* const saveButton;
  QShortcut* const cancelKey;
  const ModelWatch watch;
  const platform::Subscription languageChanges;
};

}  // namespace sorrel
