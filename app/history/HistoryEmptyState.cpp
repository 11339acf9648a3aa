#include "app/history/HistoryEmptyState.h"

#include "app/history/HistoryColors.h"
#include "app/look/LookColors.h"
#include "app/look/TextStyle.h"
#include "app/settings/LocalizationManager.h"
#include "platform/desktop/Image.h"

#include <QLabel>
#include <QVBoxLayout>

namespace sorrel {
namespace {

constexpr int artSide = 150;

}  // namespace

HistoryEmptyState::HistoryEmptyState(QWidget* parent)
    : QWidget(parent), art(new QLabel(this)), title(new QLabel(this)), hint(new QLabel(this)) {
  art->setMinimumHeight(artSide);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(24, 0, 24, 0);
  column->setSpacing(12);
  column->addStretch();
  for (QLabel* const label : {art, title, hint}) {
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(label != art);
    column->addWidget(label);
  }
  column->addStretch();
  refresh();
}

void HistoryEmptyState::showEvent(QShowEvent*) {
  // Most panels never show it, and a drawing of this size takes a while to make.
  if (const auto image = platform::Image::named(QStringLiteral("HistoryEmptyArt")))
    art->setPixmap(image->icon.pixmap(QSize(artSide, artSide), devicePixelRatioF()));
}

void HistoryEmptyState::refresh() {
  applyStyle(*title, {13, QFont::Medium, LookColors::secondaryLabel});
  applyStyle(*hint, {11, QFont::Normal, AppColors::tertiaryLabel});
  title->setText(localized(QStringLiteral("history.empty.title")));
  hint->setText(localized(QStringLiteral("history.empty.hint")));
}

}  // namespace sorrel
