#include "platform/desktop/Alert.h"

#include "platform/desktop/Symbols.h"

#include <QDialog>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace platform {
namespace {

constexpr int iconSide = 56;
constexpr int markSide = 24;
constexpr QRgb markColor = 0xffe9a53a, signColor = 0xff2a2112;
constexpr int edge = 20;
constexpr int textWidth = 320;
constexpr int textGap = 8;
constexpr int buttonGap = 8;
constexpr int buttonWidth = 84;  // at least

class AlertIcon : public QWidget {
 public:
  AlertIcon(const QIcon& picture, Alert::Style alertStyle) : icon(picture), style(alertStyle) {
    setFixedSize(iconSide, iconSide);
  }

 private:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    icon.paint(&painter, rect());
    const QRect corner(iconSide - markSide, iconSide - markSide, markSide, markSide);
    if (style == Alert::Style::Warning)
      drawSymbol(painter, corner, QStringLiteral("exclamationmark.triangle.fill"),
                 {QColor(markColor), QColor(signColor)});
  }

  const QIcon icon;
  const Alert::Style style;
};

/// The text with places where a line may end put into what is too long for one.
QString breakable(const QString& text, const QFontMetrics& metrics) {
  constexpr QChar mayEndHere(0x200b);
  QString broken;
  qsizetype start = 0;  // of what can't be parted yet
  for (const QChar character : text) {
    if (character.isSpace())
      start = broken.size() + 1;
    else if (!character.isLowSurrogate() && !character.isMark() &&
             metrics.horizontalAdvance(broken.sliced(start) + character) > textWidth) {
      broken += mayEndHere;
      start = broken.size();
    }
    broken += character;
  }
  return broken;
}

QLabel* addText(QVBoxLayout& column, const QString& text, int pixelSize, QFont::Weight weight) {
  auto* const label = new QLabel;
  QFont font = label->font();
  font.setPixelSize(pixelSize);
  font.setWeight(weight);
  label->setFont(font);
  label->setTextFormat(Qt::PlainText);
  label->setText(breakable(text, QFontMetrics(font)));
  label->setAccessibleName(text);
  label->setWordWrap(true);
  label->setFixedWidth(textWidth);
  column.addWidget(label);
  return label;
}

/// The suggested answer stands at the end of the row, or where the desktop's users expect it first.
void addButtons(QHBoxLayout& row, const QStringList& titles, QDialog& dialog) {
  const int layout = dialog.style()->styleHint(QStyle::SH_DialogButtonLayout, nullptr, &dialog);
  const bool isSuggestedFirst = layout == 0 || layout == 2;  // as Windows and KDE have it
  row.addStretch();
  row.setSpacing(buttonGap);
  const qsizetype first = row.count();
  for (int index = 0; index < titles.size(); ++index) {
    auto* const button = new QPushButton(QString(titles[index]).replace(u'&', QStringLiteral("&&")), &dialog);
    button->setMinimumWidth(buttonWidth);
    QObject::connect(button, &QPushButton::clicked, &dialog, [&dialog, index] { dialog.done(index + 1); });
    row.insertWidget(static_cast<int>(isSuggestedFirst ? first + index : first), button);
    if (index == 0) {
      button->setDefault(true);
      button->setFocus();
    }
  }
}

}  // namespace

QWidget* Alert::present(Alert alert, QWidget* window, Answered answered) {
  auto* const dialog = new QDialog(window, Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                               Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowTitle(QGuiApplication::applicationDisplayName());
  dialog->setWindowIcon(alert.icon);
  dialog->setAccessibleName(alert.messageText);
  dialog->setAccessibleDescription(alert.informativeText);
  if (alert.isUnasked)
    dialog->setAttribute(Qt::WA_ShowWithoutActivating);
  else
    dialog->setWindowModality(window ? Qt::WindowModal : Qt::ApplicationModal);

  auto* const columns = new QHBoxLayout;
  columns->setSpacing(edge - 4);
  if (!alert.icon.isNull())
    columns->addWidget(new AlertIcon(alert.icon, alert.style), 0, Qt::AlignTop);
  auto* const texts = new QVBoxLayout;
  texts->setSpacing(textGap);
  addText(*texts, alert.messageText, 14, QFont::Bold);
  if (!alert.informativeText.isEmpty())
    addText(*texts, alert.informativeText, 12, QFont::Normal);
  if (alert.accessoryView)
    texts->addWidget(alert.accessoryView.release());
  texts->addStretch();
  columns->addLayout(texts);

  auto* const rows = new QVBoxLayout(dialog);
  rows->setContentsMargins(edge, edge, edge, edge - 4);
  rows->setSpacing(edge);
  rows->setSizeConstraint(QLayout::SetFixedSize);
  rows->addLayout(columns);
  auto* const buttons = new QHBoxLayout;
  rows->addLayout(buttons);
  addButtons(*buttons, alert.buttons, *dialog);

  QObject::connect(dialog, &QDialog::finished, dialog, [answered = std::move(answered)](int result) {
    answered(result == QDialog::Rejected ? std::nullopt : std::optional(result - 1));
  });
  dialog->show();
  return dialog;
}

}  // namespace platform
