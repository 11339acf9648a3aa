#pragma once

#include "KeyboardShortcuts/Name.h"
#include "KeyboardShortcuts/recorder/LocalEventMonitor.h"
#include "platform/base/MainQueue.h"
#include "platform/base/Subscription.h"
#include "platform/desktop/panel/PointerButtons.h"
#include "platform/input/KeyboardGrab.h"

#include <QLineEdit>

#include <functional>
#include <optional>

namespace platform {
struct Alert;
}

namespace KeyboardShortcuts {

class ClearButton;

/// The field that shows a name's shortcut, and in which the user presses another.
///
/// It records while it has the keyboard's focus. Then it takes every key that is pressed, also those that the
/// desktop waits for, and all shortcuts of the program are paused; that ends with the focus, whatever takes
/// it away. A shortcut that something else uses is refused, or taken after a question. As its window opens or
/// comes to the front it doesn't take the focus by itself.
class RecorderCocoa : public QLineEdit {
 public:
  static constexpr int minimumWidth = 130;  // points

  using OnChange = std::function<void(const std::optional<Shortcut>&)>;

  /// `onChange` is called after the user has chosen another shortcut, or emptied the field.
  explicit RecorderCocoa(const Name& name, OnChange onChange = {}, QWidget* parent = nullptr);
  ~RecorderCocoa() override;
  RecorderCocoa(const RecorderCocoa&) = delete;
  RecorderCocoa& operator=(const RecorderCocoa&) = delete;

  [[nodiscard]] const Name& shortcutName() const { return name; }
  void setShortcutName(const Name& newName);
  [[nodiscard]] bool isRecording() const { return recording.has_value(); }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 private:
  struct Recording {
    explicit Recording(RecorderCocoa& field);

    platform::KeyboardGrab keyboard;
    LocalEventMonitor monitor;
    platform::PointerButtons pointer;
  };

  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  // The pointer neither places a caret nor selects.
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent*) override {}
  void mouseReleaseEvent(QMouseEvent*) override {}
  void mouseDoubleClickEvent(QMouseEvent*) override {}

  void showShortcut();
  void applyClearButtonRule();
  void preventBecomingKey();

  void beginRecording();
  void endRecording();
  /// Ends recording by giving the focus up. It goes to what the field stands in, so that the tab key goes on
  /// from there.
  void blur();

  LocalEventMonitor::Outcome handle(const RecorderEvent& event);
  void clearShortcut();
  void save(const Shortcut& shortcut);
  void refuse(const QString& message);
  void askWhetherToForce(const Shortcut& shortcut);
  /// Ends recording while the alert is up. The focus is back before `then` is called.
  void present(platform::Alert alert, std::function<void(std::optional<int> button)> then);

  Name name;
  const OnChange onChange;
  ClearButton* const clearButton;
  std::optional<Recording> recording;
  platform::Subscription shortcutsNameChange;
  platform::WorkItem becomingKey;
  platform::Lifetime lifetime;
};

}  // namespace KeyboardShortcuts
