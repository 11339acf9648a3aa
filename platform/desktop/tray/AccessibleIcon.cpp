#include "platform/desktop/tray/AccessibleIcon.h"

#include <QAccessibleObject>
#include <QGuiApplication>

namespace platform {

class AccessibleIcon::Button : public QAccessibleObject, public QAccessibleActionInterface {
 public:
  Button(AccessibleIcon& owner, Icon shown) : QAccessibleObject(&owner), icon(std::move(shown)) {}

  [[nodiscard]] QAccessibleInterface* parent() const override {
    return QAccessible::queryAccessibleInterface(qGuiApp);
  }
  [[nodiscard]] QAccessibleInterface* child(int) const override { return nullptr; }
  [[nodiscard]] int childCount() const override { return 0; }
  [[nodiscard]] int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  [[nodiscard]] QAccessible::Role role() const override { return QAccessible::PushButton; }
  [[nodiscard]] QAccessible::State state() const override { return {}; }
  [[nodiscard]] QRect rect() const override { return icon.frame(); }
  [[nodiscard]] QString text(QAccessible::Text kind) const override {
    return kind == QAccessible::Name ? name : QString();
  }
  void* interface_cast(QAccessible::InterfaceType type) override {
    return type == QAccessible::ActionInterface ? static_cast<QAccessibleActionInterface*>(this) : nullptr;
  }

  [[nodiscard]] QStringList actionNames() const override { return {pressAction()}; }
  void doAction(const QString& action) override {
    if (action == pressAction())
      icon.press();
  }
  [[nodiscard]] QStringList keyBindingsForAction(const QString&) const override { return {}; }

  QString name;

 private:
  const Icon icon;
};

AccessibleIcon::AccessibleIcon(Icon icon)
    : button(QAccessible::registerAccessibleInterface(new Button(*this, std::move(icon)))) {
}

AccessibleIcon::~AccessibleIcon() {
  QAccessible::deleteAccessibleInterface(button);
}

void AccessibleIcon::setName(const QString& name) {
  static_cast<Button*>(accessibleRoot())->name = name;
  QAccessibleEvent change(this, QAccessible::NameChanged);
  QAccessible::updateAccessibility(&change);
}

QAccessibleInterface* AccessibleIcon::accessibleRoot() const {
  return QAccessible::accessibleInterface(button);
}

}  // namespace platform
