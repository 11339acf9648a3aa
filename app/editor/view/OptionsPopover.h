#pragma once

#include "app/editor/view/ModelWatch.h"
#include "app/editor/view/PopoverTiming.h"
#include "platform/desktop/Motion.h"

#include <QWidget>

#include <map>

class QLabel;
class QScrollArea;
class QVBoxLayout;

namespace sorrel {

class PopoverShadow;

/// The options of the chosen tool, on a panel that floats over its parent beside the tool rail and points at
/// the tool. It hides itself as PopoverTiming says, and while it is hidden the pointer reaches what lies
/// below it.
class OptionsPopover : public QWidget {
 public:
  OptionsPopover(EditorModel& model, QWidget* parent);
  ~OptionsPopover() override;

  [[nodiscard]] PopoverTiming& timing() { return times; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void changeVisibility(PopoverTiming::Change change);
  void fade();
  void showTool();
  void showTitle();
  void fit();
  void place(const QRect& area);
  void focusMoves(const QWidget* from, const QWidget* to);
  [[nodiscard]] QRect panel() const;

  EditorModel& model;
  PopoverTiming times;
  PopoverShadow* const shadow;
  QScrollArea* const scroll;
  QWidget* const content;
  QVBoxLayout* const column;
  QLabel* const title;
  std::map<EditorModel::Tool, QWidget*> sections;  // those that were shown
  QWidget* section = nullptr;
  platform::Motion presence;  // 0 hidden, 1 there
  platform::Motion way;       // from the last tool's place to this one's
  QRect start;
  QRect end;
  const ModelWatch watch;
  const platform::Subscription languageChanges;
};

}  // namespace sorrel
