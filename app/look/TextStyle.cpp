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
  QPalette palette = label.palette();
  palette.setColor(QPalette::WindowText, style.color.resolved());
  label.setPalette(palette);
}

}  // namespace sorrel
