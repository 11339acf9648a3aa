#include "app/shell/ReleaseNotes.h"

#include "app/look/ControlPainting.h"
#include "app/look/LookColors.h"
#include "app/look/SlimScrollBar.h"
#include "app/look/TextStyle.h"
#include "app/settings/LocalizationManager.h"

#include <QPainter>
#include <QTextEdit>
#include <QVBoxLayout>
#include <QtMath>

namespace sorrel {
namespace {

constexpr int tallest = 132, inset = 4, textMargin = 5, scrollBarWidth = 8, textSize = 12;

}  // namespace

ReleaseNotes::ReleaseNotes(const QString& notes, int width) {
  auto* const view = new QTextEdit(this);
  view->setReadOnly(true);
  view->setTabChangesFocus(true);
  view->setFrameShape(QFrame::NoFrame);
  view->viewport()->setAutoFillBackground(false);
  view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  new SlimScrollBar(*view);
  view->setAccessibleName(localized(QStringLiteral("updates.notes")));
  view->setFont(fontOf({textSize, QFont::Normal, LookColors::label}));
  view->document()->setDocumentMargin(textMargin);
  view->setPlainText(notes);
  view->setFixedWidth(width - 2 * inset);
  view->setLineWrapMode(QTextEdit::FixedPixelWidth);
  view->setLineWrapColumnOrWidth(view->width() - scrollBarWidth);
  view->setFixedHeight(std::min(qCeil(view->document()->size().height()), tallest));
  view->move(inset, inset);
  setFixedSize(width, view->height() + 2 * inset);
}

void ReleaseNotes::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(LookColors::groupBorder.resolved());
  painter.setBrush(LookColors::group.resolved());
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), controlRadius, controlRadius);
}

}  // namespace sorrel
