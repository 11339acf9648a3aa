#include "app/history/ThumbnailButtons.h"

#include "app/history/HistoryColors.h"
#include "app/look/SymbolButton.h"
#include "app/settings/LocalizationManager.h"

namespace sorrel {
namespace {

constexpr int inset = 4;
constexpr int side = 20;  // of the disc that the cross of 24 has around it

SymbolButton::Look removeLook() {
  return {QStringLiteral("xmark.circle.fill"), 24, HistoryColors::veil, HistoryColors::onTitleBar};
}

SymbolButton::Look copyLook() {
  return {QStringLiteral("dagger"), 13, HistoryColors::onTitleBar, {0, 0}, HistoryColors::veil};
}

}  // namespace

ThumbnailButtons::ThumbnailButtons(QWidget* viewport, const std::function<void()>& onDelete,
                                   const std::function<void()>& onCopy)
    : remove(new SymbolButton(removeLook(), side, viewport)),
      copy(new SymbolButton(copyLook(), side, viewport)) {
  for (SymbolButton* const button : {remove, copy})
    button->setFocusPolicy(Qt::NoFocus);
  QObject::connect(remove, &QAbstractButton::clicked, viewport, onDelete);
  QObject::connect(copy, &QAbstractButton::clicked, viewport, onCopy);
  hide();
  retranslate();
}

void ThumbnailButtons::showOn(const QRect& square) {
  const QRect inside = square.adjusted(inset, inset, -inset, -inset);
  const int left = inside.right() + 1 - side;
  remove->move(left, inside.top());
  copy->move(left, inside.bottom() + 1 - side);
  remove->show();
  copy->show();
}

void ThumbnailButtons::hide() {
  remove->hide();
  copy->hide();
}

void ThumbnailButtons::retranslate() {
  remove->setHelp(localized(QStringLiteral("history.thumb.delete")));
  copy->setHelp(localized(QStringLiteral("history.thumb.copy")));
}

}  // namespace sorrel
