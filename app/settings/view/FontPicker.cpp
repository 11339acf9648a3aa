#include "app/settings/view/FontPicker.h"

#include "app/look/LookColors.h"

#include <QAbstractItemView>
#include <QFontDatabase>
#include <QPainter>
#include <QStringListModel>
#include <QStyledItemDelegate>

#include <algorithm>

namespace sorrel {
namespace {

constexpr int rowTextSize = 13, rowHeight = 26;
constexpr int systemRow = 0;
constexpr int previewSize = 24;
constexpr double leastScale = 0.4;

class FamilyRows : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 private:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    if (index.row() != systemRow)
      option->font.setFamily(option->text);
    option->font.setPixelSize(rowTextSize);
    option->fontMetrics = QFontMetrics(option->font);
  }

  /// The same for all, so that no font is loaded to measure its row.
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override {
    return {0, rowHeight};
  }
};

}  // namespace

FontPicker::FontPicker(QWidget* parent) : FormPicker(parent) {
  QStringList rows = QFontDatabase::families();
  std::sort(rows.begin(), rows.end());
  rows.prepend(QString());
  setModel(new QStringListModel(rows, this));
  setItemDelegate(new FamilyRows(this));
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
