#include "app/settings/view/FontPicker.h"

#include "app/look/LookColors.h"

#include <QFontDatabase>
#include <QListView>
#include <QPainter>
#include <QStringListModel>

#include <algorithm>

namespace sorrel {
namespace {

constexpr int systemRow = 0;
constexpr int previewSize = 24;
constexpr double leastScale = 0.4;

/// The families' names, each to be drawn in itself.
class FamilyRows : public QStringListModel {
 public:
  using QStringListModel::QStringListModel;

  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
    if (role != Qt::FontRole || index.row() == systemRow)
      return QStringListModel::data(index, role);
    QFont font = fontOf(FormRow::text);
    font.setFamily(stringList().at(index.row()));
    return font;
  }
};

}  // namespace

FontPicker::FontPicker(QWidget* parent) : FormPicker(parent) {
  QStringList rows = QFontDatabase::families();
  std::sort(rows.begin(), rows.end());
  rows.prepend(QString());
  setModel(new FamilyRows(rows, this));
  // All rows are as high as the first, so that no font is loaded to measure its own.
  static_cast<QListView*>(view())->setUniformItemSizes(true);
  setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
  setMinimumContentsLength(20);
}

void FontPicker::setSystemFontTitle(const QString& title) {
  setItemText(systemRow, title);
}

void FontPicker::setFamily(const QString& family) {
  const auto& rows = static_cast<const QStringListModel*>(model())->stringList();
  setCurrentIndex(family.isEmpty() ? systemRow : static_cast<int>(rows.indexOf(family, systemRow + 1)));
  setPlaceholderText(family);
}

QString FontPicker::family() const {
  return currentIndex() == systemRow ? QString() : currentText();
}

FontPreview::FontPreview(QWidget* parent) : QWidget(parent) {
  setMinimumHeight(previewSize * 3 / 2);
}

void FontPreview::show(const QString& shownText, const QString& shownFamily) {
  text = shownText;
  family = shownFamily;
  setAccessibleDescription(text);
  update();
}

void FontPreview::paintEvent(QPaintEvent*) {
  QFont font = fontOf({previewSize, family.isEmpty() ? QFont::Bold : QFont::Normal, LookColors::label});
  if (!family.isEmpty())
    font.setFamily(family);
  const double wanted = QFontMetricsF(font).horizontalAdvance(text);
  const double scale = std::clamp(width() / std::max(wanted, 1.0), leastScale, 1.0);
  font.setPixelSize(static_cast<int>(previewSize * scale));
  QPainter painter(this);
  painter.setFont(font);
  painter.setPen(LookColors::label.resolved());
  const QString shown = QFontMetrics(font).elidedText(text, Qt::ElideRight, width());
  painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, shown);
}

}  // namespace sorrel
