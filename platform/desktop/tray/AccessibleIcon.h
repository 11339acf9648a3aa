#pragma once

#include <QAccessible>
#include <QWindow>

#include <functional>

namespace platform {

/// What assistive technology finds of an icon that isn't one of the toolkit's: a button with a name. It is a
/// window only since the toolkit begins its tree with windows; it is never shown.
class AccessibleIcon : public QWindow {
 public:
  struct Icon {
    std::function<QRect()> frame;
    std::function<void()> press;
  };
  explicit AccessibleIcon(Icon icon);
  ~AccessibleIcon() override;

  void setName(const QString& name);
  [[nodiscard]] QAccessibleInterface* accessibleRoot() const override;

 private:
  class Button;
  QAccessible::Id button;
};

}  // namespace platform
