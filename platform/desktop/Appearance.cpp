#include "platform/desktop/Appearance.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace platform {
namespace {

/// Hears of every change of the application's palette.
class PaletteWatch : public QObject {
 public:
  PaletteWatch() { qGuiApp->installEventFilter(this); }

  Observers observers;

 private:
  bool eventFilter(QObject*, QEvent* event) override {
    if (event->type() == QEvent::ApplicationPaletteChange && last != currentAppearance()) {
      last = currentAppearance();
      observers.tell();
    }
    return false;
  }

  Appearance last = currentAppearance();
};

}  // namespace

Appearance currentAppearance() {
  const QPalette palette = QGuiApplication::palette();
  const bool isDark =
      palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
  return isDark ? Appearance::Dark : Appearance::Light;
}

Subscription observeAppearance(std::function<void()> handler) {
  static PaletteWatch watch;
  return watch.observers.add(std::move(handler));
}

}  // namespace platform
