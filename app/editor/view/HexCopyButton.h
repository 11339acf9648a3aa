#pragma once

#include "platform/base/MainQueue.h"
#include "platform/desktop/Motion.h"

#include <QAbstractButton>

namespace sorrel {

/// A colour as text, which for a moment says that it has been copied.
class HexCopyButton : public QAbstractButton {
 public:
  explicit HexCopyButton(QWidget* parent);

  void setHex(const QString& hex);
  /// `help`: the tooltip. `copied`: what it says for the moment.
  void setTexts(const QString& help, const QString& copied);
  void showCopied();

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void paintFace(QPainter& painter, const QString& symbol, const QString& text, const QColor& color,
                 double opacity) const;

  QString copiedText;
  platform::Motion copied;  // 1 while it says so
  platform::WorkItem revert;
};

}  // namespace sorrel
