#pragma once

#include "app/history/ThumbnailLoader.h"

#include <QWidget>

#include <functional>

namespace sorrel {

class LogoCell;

/// The stored logos, each with its name and a button that removes it, in as many columns as fit.
class LogoGrid : public QWidget {
 public:
  /// `onRemove` hears which one the user wants gone.
  LogoGrid(std::function<void(const QUrl&)> onRemove, QWidget* parent);

  void setLogos(const QList<QUrl>& logos);
  /// What the buttons say that they do.
  void setRemoveHelp(const QString& text);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void place();

  const std::function<void(const QUrl&)> onRemove;
  QString removeHelp;
  std::vector<LogoCell*> cells;
};

}  // namespace sorrel
