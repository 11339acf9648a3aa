#pragma once

#include "platform/desktop/Motion.h"

#include <QWidget>

#include <optional>

namespace sorrel {

/// A short message on a capsule that rises from the lower edge of its parent, over everything else there, and
/// sinks back. The pointer passes through it.
class ToastView : public QWidget {
 public:
  explicit ToastView(QWidget* parent);

  /// The text to show, or none.
  void show(const std::optional<QString>& text);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void place();

  std::optional<QString> shown;
  QString text;  // what is drawn, also while it leaves
  platform::Motion presence;
};

}  // namespace sorrel
