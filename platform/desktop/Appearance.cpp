#include "platform/desktop/Appearance.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

namespace platform {
namespace {

/// What is drawn on what, in greys with a little warmth. The shades of bevels follow from `window`.
struct Greys {
  QRgb window;
  QRgb field;
  QRgb stripe;
  QRgb button;
  QRgb tip;
  QRgb text;
  QRgb onAccent;
};

constexpr Greys lightGreys{0xf4f2ee, 0xffffff, 0xf8f7f4, 0xebe8e3, 0xfdfbf6, 0x24221e, 0xffffff};
constexpr Greys darkGreys{0x282623, 0x1e1d1b, 0x242220, 0x35332f, 0x3a3834, 0xece9e3, 0x14170f};

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

Appearance appearanceOf(const QPalette& palette) {
  const bool isDark =
      palette.color(QPalette::WindowText).lightness() > palette.color(QPalette::Window).lightness();
  return isDark ? Appearance::Dark : Appearance::Light;
}

Appearance currentAppearance() {
  return appearanceOf(QGuiApplication::palette());
}

QPalette paletteOf(Appearance appearance, const Color& accent) {
  constexpr float placeholderOpacity = 0.5F;
  constexpr float disabledOpacity = 0.4F;
  const Greys& greys = appearance == Appearance::Dark ? darkGreys : lightGreys;
  const auto text = QColor(greys.text);
  const QColor mark = accent.resolved(appearance);
  const auto faint = [&](float opacity) {
    QColor color = text;
    color.setAlphaF(opacity);
    return color;
  };
  QPalette palette(QColor(greys.button), QColor(greys.window));
  palette.setColor(QPalette::Base, QColor(greys.field));
  palette.setColor(QPalette::AlternateBase, QColor(greys.stripe));
  palette.setColor(QPalette::ToolTipBase, QColor(greys.tip));
  for (const auto role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    palette.setColor(role, text);
    palette.setColor(QPalette::Disabled, role, faint(disabledOpacity));
  }
  // Disabled words of a menu are drawn twice, the second time in this; it should not show.
  palette.setColor(QPalette::Disabled, QPalette::Light, Qt::transparent);
  palette.setColor(QPalette::PlaceholderText, faint(placeholderOpacity));
  palette.setColor(QPalette::Link, mark);
  palette.setColor(QPalette::LinkVisited, mark);
  palette.setColor(QPalette::Highlight, mark);
  palette.setColor(QPalette::HighlightedText, QColor(greys.onAccent));
  palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(greys.button));
  palette.setColor(QPalette::Disabled, QPalette::HighlightedText, faint(disabledOpacity));
  return palette;
}

Subscription observeAppearance(std::function<void()> handler) {
  static PaletteWatch watch;
  return watch.observers.add(std::move(handler));
}

}  // namespace platform
