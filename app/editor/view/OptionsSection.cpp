#include "app/editor/view/OptionsSection.h"

#include "app/editor/view/EditorPalette.h"
#include "app/look/TextStyle.h"

#include <QPainter>
#include <QVBoxLayout>

namespace sorrel {
namespace {

class Divider : public QWidget {
 public:
  explicit Divider(QWidget* parent) : QWidget(parent) { setFixedHeight(1); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter(this).fillRect(rect(), EditorPalette::divider.resolved());
  }
};

}  // namespace

OptionsSection::OptionsSection(QWidget* parent) : QWidget(parent), column(new QVBoxLayout(this)) {
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  setFont(fontOf({12, QFont::Normal, {}}));
}

QWidget* OptionsSection::addRow(QWidget* row) {
  auto* const line = new QWidget(this);
  auto* const layout = new QHBoxLayout(line);
  layout->setContentsMargins(overhang, column->isEmpty() ? 0 : spacing, overhang, 0);
  layout->addWidget(row);
  column->addWidget(line);
  return line;
}

void OptionsSection::addWideRow(QWidget* row) {
  column->addWidget(row);
}

void OptionsSection::addDivider() {
  addRow(new Divider(this));
}

}  // namespace sorrel
