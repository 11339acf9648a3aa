#include "app/look/TextStyle.h"

#include <QApplication>
#include <QLabel>

namespace sorrel {

QFont fontOf(const TextStyle& style) {
  QFont font = QApplication::font();
  font.setPixelSize(style.size);
  font.setWeight(style.weight);
  return font;
}

void applyStyle(QLabel& label, const TextStyle& style) {
  label.setFont(fontOf(style));
  const QWidget* const parent = label.parentWidget();
  const auto appearance = parent ? platform::appearanceOf(parent->palette()) : platform::currentAppearance();
  QPalette palette = label.palette();
  palette.setColor(QPalette::WindowText, style.color.resolved(appearance));
  label.setPalette(palette);
}

}  // namespace sorrel
