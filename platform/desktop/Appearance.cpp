#include "platform/desktop/Appearance.h"

#include <QGuiApplication>
#include <QPalette>

namespace platform {

Appearance currentAppearance() {
  const QPalette palette = QGuiApplication::palette();
  const bool isDark =
      palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
  return isDark ? Appearance::Dark : Appearance::Light;
}

}  // namespace platform
